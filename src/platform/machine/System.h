// What the operating system keeps for the program: its folders, the settings of a user, the names of the
// computer, and who else runs.
#pragma once

#include <QFile>

#include <filesystem>
#include <string>

namespace bexlow::platform {

/// The program's own version: major, minor and revision joined by points.
std::string ProgramVersion();

bool FolderExists(const std::filesystem::path& folder);
/// Throws std::system_error with the path and the system's words.
void CreateFolder(const std::filesystem::path& folder);
// Both lie beside the program.
std::filesystem::path DataFilesFolder();
std::filesystem::path LogsFolder();

/// A text of the user's settings store, which has sections of keys; `otherwise` where it has none.
std::string GetSetting(const std::string& section, const std::string& key, const std::string& otherwise);
/// Throws std::system_error if the store cannot be written.
void SaveSetting(const std::string& section, const std::string& key, const std::string& value);

/// The computer's name; empty if the system does not tell it.
std::string HostName();
/// The dotted address of a network interface that is up, of several the last one; the loopback address only
/// if there is no other, empty if there is none. Asks no name server.
std::string HostAddress();

/// Tells whether this user runs the program already. Holds a lock in the user's runtime folder for as long as
/// it lives. The lock ends with the program, also with one that crashed or was killed. If no lock file can be
/// made, the program starts all the same: better a second copy than none.
class RunningCopy {
 public:
  RunningCopy();
  /// True if another copy holds the lock.
  bool AnotherRuns() const { return another_; }

 private:
  QFile file_;
  bool another_;
};

}  // namespace bexlow::platform
