// A user on the Download screen, with the logger on a virtual line.
#pragma once

#include <numeric>

#include "support/Story.h"

namespace bexlow::test {

struct DownloadStory : Story {
  void SetUp() override { StartConnected("Download"); }
  /// Begins a download into a file of this name and lets the retrievals run.
  void Begin(const std::string& name = "run.qbx") { ChooseFile("Data", "Download", name); }
  /// Begins a download of a hundred pages that runs for a second.
  void BeginForASecond() {
    Store(100);
    Begin();
    machine.Pass(1s);
  }
  /// Stores pages, whose byte n is the page's number + n.
  void Store(int pages) {
    for (int page = 0; page <= pages; ++page) {
      auto& bytes = logger.pages[page] = Bytes(264);
      std::iota(bytes.begin(), bytes.end(), static_cast<std::uint8_t>(page));
    }
  }
  /// A reply of so many bytes; the repeat follows them, and the line stalls when both make 264 bytes.
  Spoil TornThenStalled(int torn) {
    return [this, torn](Bytes& reply, microseconds&) {
      reply.resize(static_cast<std::size_t>(torn));
      logger.SpoilOne(1, [this, torn](Bytes& repeat, microseconds& delay) {
        logger.Send({repeat.begin(), repeat.end() - torn});
        repeat.erase(repeat.begin(), repeat.end() - torn);
        delay = ByteTime * (264 - torn) + 25ms;
      });
    };
  }
  bool Running() const { return Checked("Data", "Download"); }
  /// Nothing runs any more, and live samples would go to no file of a download.
  void ExpectEnded() {
    EXPECT_FALSE(Running() || Shared.LiveSample.SavingToFile);
    const bool isInFront = ScreenInFront() == "DownloadErase";
    EXPECT_TRUE(!isInFront || The("lblWarning").isHidden());
    EXPECT_EQ(Offered("Data", "Download") && Offered("Data", "Erase"), isInFront);
    ExpectIdle();
  }
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
    Reads("Download completed!", "Would you like to graph this download immediately?");
  }
  std::vector<int> PagesInFile() const {
    std::vector<int> pages;
    for (const auto& line : LinesAfter(12)) pages.push_back(std::stoi(line));
    return pages;
  }
  static std::vector<int> UpTo(int last) {
    std::vector<int> pages(static_cast<std::size_t>(last));
    std::iota(pages.begin(), pages.end(), 1);
    return pages;
  }
};

}  // namespace bexlow::test
