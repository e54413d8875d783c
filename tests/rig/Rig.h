// What the tour, the campaign and the benches need around the real screens: a folder of their own, the
// stand-in logger on Comm 1, a machine whose boxes answer themselves, and the outer window.
#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include "platform/machine/RealMachine.h"
#include "shell/MDIForm1.h"

namespace bexlow::rig {

/// Throws std::runtime_error unless it holds.
void Require(bool holds, const std::string& what);

/// A folder of this run's own, which is also its home, settings and runtime folder. Gone with the object. To
/// be made before the QApplication; without a display at hand, windows are drawn offscreen.
class Scratch {
 public:
  Scratch();

  const std::filesystem::path& Path() const { return path_; }

 private:
  const QTemporaryDir folder_;
  const std::filesystem::path path_{folder_.path().toStdString()};
};

/// The stand-in logger at "Ports/COM1" of the folder, until the object goes.
class StandIn {
 public:
  /// Requires that it says within 20 s that it is there.
  StandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
          const QStringList& options);
  ~StandIn();
  /// Ends it, so that its files are whole.
  void End();

 private:
  QProcess process_;
};

/// A stand-in logger that records what it holds and sends.
class RecordedStandIn : public StandIn {
 public:
  /// Records in the folder's "stand-in".
  RecordedStandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                  const QStringList& options);

  std::vector<std::uint8_t> Eeprom() const { return Dump("eeprom.bin", 256); }
  std::vector<std::uint8_t> Pages() const { return Dump("pages.bin", 2048 * std::size_t{264}); }
  std::vector<std::vector<int>> Samples() const;  ///< the words of each live sample sent

  /// The data file of a download of what it holds now: its pages in order, until the first blank one.
  std::string ExpectedDataFile() const;

 private:
  std::vector<std::uint8_t> Dump(const char* name, std::size_t size) const;

  std::filesystem::path records_;
};

/// The real machine with a user who closes each box, agrees to nothing, and chooses one file. It installs
/// itself.
class AnsweredMachine : public platform::RealMachine {
 public:
  explicit AnsweredMachine(const std::filesystem::path& folder, std::filesystem::path file = {})
      : RealMachine(folder), file_(std::move(file)) {
    Install(*this);
  }

  platform::Answer Ask(const std::string& text, platform::Buttons buttons) override;
  std::optional<std::string> AskFile(const platform::CommonDialog&) override { return file_.string(); }

  /// Sees each box before it is closed.
  std::function<void(const std::string& text, platform::Buttons buttons)> onBox;

 private:
  std::filesystem::path file_;
};

/// The program's outer window on the machine that is installed, with Comm 1 selected.
struct Program {
  /// Requires that the program loads.
  Program();

  platform::Form& Show(platform::Form* screen) {
    outer.ShowChild(screen);
    outer.show();
    return *screen;
  }
  /// Triggers a menu entry once the event loop runs, and lets it run until something quits it, or for so
  /// long.
  static void Run(QAction* entry, int limitMs);

  shell::MDIForm1 outer;
};

}  // namespace bexlow::rig
