// A user on the Download screen, with the logger on a virtual line.
#pragma once

#include <filesystem>
#include <numeric>

#include "platform/graph/CWGraph.h"
#include "support/Story.h"

namespace bexlow::test {

using shell::Shared;
using namespace std::chrono_literals;

class DownloadStory : public Story {
 protected:
  void SetUp() override {
    StartConnected();
    Choose("Tools", "Download");
  }
  /// Begins a download into a file of this name and lets the retrievals run.
  void Begin(const std::string& name = "run.qbx") {
    path = DataFile(name);
    machine.WillChooseFile(path.string());
    Choose("Data", "Download");
  }
  /// Begins a download of a hundred pages that runs for a second.
  void BeginForASecond() {
    Store(100);
    Begin();
    machine.Pass(1s);
  }
  void Store(int pages) {
    for (int page = 0; page <= pages; ++page) logger.pages[page] = RampPage(page);
  }
  bool Running() const { return Checked("Data", "Download"); }
  void RunToTheEnd() {
    const auto until = machine.Time() + 600s;
    while (Running() && machine.Time() < until) machine.Pass(100ms);
    EXPECT_FALSE(Running());
  }
  /// Runs to the end, where no graph is wanted.
  void Finish() {
    machine.WillAnswer(Answer::No);
    RunToTheEnd();
    ReadsCompletion();
  }
  void ReadsCompletion() {
    Reads("Download completed!");
    Reads("Would you like to graph this download immediately?");
  }
  std::vector<int> PagesInFile() const {
    const std::string text = FileText(path);
    std::vector<int> pages;
    int line = 0;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1)
      if (++line > 12) pages.push_back(std::stoi(text.substr(at)));
    return pages;
  }
  /// What stands behind a page's number in the file.
  std::string Record(int page) const {
    const std::string text = FileText(path);
    const std::string head = "\n" + std::to_string(page) + ",";
    const auto begin = text.find(head);
    if (begin == std::string::npos) return "";
    const auto from = begin + head.size();
    return text.substr(from, text.find('\r', from) - from);
  }
  static std::vector<int> UpTo(int last) {
    std::vector<int> pages(static_cast<std::size_t>(last));
    std::iota(pages.begin(), pages.end(), 1);
    return pages;
  }

  std::filesystem::path path;
};

}  // namespace bexlow::test
