// What the tour, the campaign and the benches need around the real screens: a folder of their own, the
// stand-in logger on Comm 1, a machine whose boxes answer themselves, and the outer window.
#pragma once

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include "files/Pages.h"
#include "platform/machine/RealMachine.h"
#include "shared/Records.h"
#include "shell/MDIForm1.h"
#include "support/DataFiles.h"

namespace bexlow::rig {

inline void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

/// A folder of this run's own, which is also its home, settings and runtime folder. Gone with the object. To
/// be made before the QApplication; without a display at hand, windows are drawn offscreen.
class Scratch {
 public:
  Scratch() {
    for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) setenv(name, path_.c_str(), 1);
    if (getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
  }
  const std::filesystem::path& Path() const { return path_; }

 private:
  const QTemporaryDir folder_;
  const std::filesystem::path path_{folder_.path().toStdString()};
};

/// The stand-in logger at "Ports/COM1" of the folder, until the object goes.
class StandIn {
 public:
  using Path = std::filesystem::path;

  /// Requires that it says within 20 s that it is there.
  StandIn(const Path& logger, const Path& folder, const QStringList& options) {
    std::filesystem::create_directories(folder / "Ports");
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(logger.c_str(), QStringList{"--link", (folder / "Ports/COM1").c_str()} + options);
    Require(process_.waitForStarted(PatienceMs) && process_.waitForReadyRead(PatienceMs),
            "the stand-in logger does not start");
  }
  ~StandIn() { End(); }
  void End() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.terminate();
    process_.waitForFinished(PatienceMs);
  }

 private:
  static constexpr int PatienceMs = 20'000;  // even a machine that is building starts a process within this
  QProcess process_;
};

/// A stand-in logger that records what it holds and sends, in the folder's "stand-in".
class RecordedStandIn : public StandIn {
 public:
  RecordedStandIn(const Path& logger, const Path& folder, const QStringList& options)
      : StandIn(logger, folder, RecordsIn(folder / "stand-in") + options), records_(folder / "stand-in") {}

  std::vector<std::uint8_t> Eeprom() const { return Dump("eeprom.bin", 256); }
  std::vector<std::uint8_t> Pages() const { return Dump("pages.bin", 2048 * std::size_t{264}); }
  /// The words of each live sample sent.
  std::vector<std::vector<int>> Samples() const {
    std::vector<std::vector<int>> samples;
    for (const auto& line : test::LinesOf(test::FileText(records_ / "samples.txt"))) {
      std::istringstream words(line);
      auto& sample = samples.emplace_back();
      for (int word = 0; words >> word;) sample.push_back(word);
    }
    return samples;
  }

  /// The data file of a download of what it holds now: its pages in order, until the first blank one.
  std::string ExpectedDataFile() const {
    using namespace files;
    const auto cells = Eeprom(), pages = Pages();
    const int mode = cells[42], channels = cells[43];
    DownloadHeader header;
    header.FirmwareVersionText = "3.3";
    header.SamplingFrequencyText = "7.5";
    FillHeader1(std::span(cells).subspan(100, 10), header);
    FillHeader2(std::span(cells).subspan(2, 16), header);
    auto text = DataFileHeader(DataFileKind::DownloadPages, "3.2.3", header, mode, channels);
    for (int n = 1; n < 2048; ++n) {
      const Page page(&pages[static_cast<std::size_t>(n) * PageBytes], PageBytes);
      if (IsBlankPage(page)) break;
      text += PageRecord(n, DecodePage(page, mode, channels));
    }
    return text;
  }

 private:
  static QStringList RecordsIn(const Path& folder) {
    std::filesystem::create_directories(folder);
    const auto file = [&](const char* name) { return QString((folder / name).c_str()); };
    return {"--dump-pages", file("pages.bin"),   "--dump-eeprom", file("eeprom.bin"),
            "--samples",    file("samples.txt"), "--log",         file("line.log")};
  }
  std::vector<std::uint8_t> Dump(const char* name, std::size_t size) const {
    const std::string bytes = test::FileText(records_ / name);
    Require(bytes.size() == size, std::string("the stand-in has not written ") + name);
    return {bytes.begin(), bytes.end()};
  }

  Path records_;
};

/// The real machine, installed, with a user who closes each box, agrees to nothing, and chooses one file.
class AnsweredMachine : public platform::RealMachine {
 public:
  explicit AnsweredMachine(const std::filesystem::path& folder, std::filesystem::path file = {})
      : RealMachine(folder), file_(std::move(file)) {
    Install(*this);
  }
  platform::Answer Ask(const std::string& text, platform::Buttons buttons) override {
    if (onBox) onBox(text, buttons);
    if (buttons == platform::Buttons::RetryCancel) return platform::Answer::Retry;
    return buttons == platform::Buttons::YesNo ? platform::Answer::No : platform::Answer::Ok;
  }
  std::optional<std::string> AskFile(const platform::CommonDialog&) override { return file_.string(); }

  /// Sees each box before it is closed.
  std::function<void(const std::string& text, platform::Buttons buttons)> onBox;

 private:
  std::filesystem::path file_;
};

/// The program's outer window on the machine that is installed, with Comm 1 selected.
struct Program {
  Program() {
    shared::Shared = {};
    Require(outer.Load(), "the program does not start");
    shared::Shared.CurrentCommPort = 1;
  }
  platform::Form& Show(platform::Form* screen) {
    outer.ShowChild(screen);
    outer.show();
    return *screen;
  }
  /// Triggers a menu entry, and runs the event loop until something quits it, or for so long.
  static void Run(QAction* entry, int limitMs) {
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, qApp, &QApplication::quit);
    limit.start(limitMs);
    QTimer::singleShot(0, entry, &QAction::trigger);
    QApplication::exec();
  }

  shell::MDIForm1 outer;
};

}  // namespace bexlow::rig
