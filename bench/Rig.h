// What a bench needs around it: a folder of its own, and the stand-in logger on Comm 1.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <filesystem>

namespace bexlow::bench {

/// A folder of this run's own, which is also its home, settings and runtime folder. Gone with the object. To
/// be made before the QApplication; without a display at hand, windows are drawn offscreen.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// The stand-in logger at "Ports/COM1" of the folder, until the object goes.
class StandIn {
 public:
  /// Throws std::runtime_error if it does not say within 5 s that it is there.
  StandIn(const char* logger, const std::filesystem::path& folder, const QStringList& options);
  ~StandIn();
  /// Ends it, so that its files are whole.
  void End();

 private:
  QProcess process_;
};

}  // namespace bexlow::bench
