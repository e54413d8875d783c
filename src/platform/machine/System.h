// What the operating system keeps for the program: its files and folders, the settings of a user, the names
// of the computer, and who else runs.
#pragma once

#include <QFile>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace bexlow::platform {

/// The program's own version: major, minor and revision joined by points.
std::string ProgramVersion();

// Both lie beside the program.
std::filesystem::path DataFilesFolder();
std::filesystem::path LogsFolder();

// Each of these opens a file, works, checks and closes. Failures throw std::system_error with the path and
// the system's own words; nothing fails in silence, a full disk included.

/// The whole file. A file above 1 GiB is refused: the longest that a logger can fill is some 3.5 MB.
std::string ReadWhole(const std::filesystem::path& path);
/// The first and the last bytes of a file; both overlap in a short one.
struct FileEnds {
  std::string head, tail;
  std::uintmax_t size;
};
FileEnds ReadEnds(const std::filesystem::path& path, std::size_t head, std::size_t tail);
/// Puts a file of these bytes in the place of the one that is there, whole or not at all.
/// @return  the system's words where it fails, else nothing
std::string Replace(const std::filesystem::path& path, std::string_view bytes);
/// Creates or empties the file and writes the text.
void WriteWhole(const std::filesystem::path& path, std::string_view text);
/// Opens for appending (creating a missing file), writes the text, closes. If not all of the text finds room
/// the file is cut back to what it held, so that it ends with its last whole record.
void Append(const std::filesystem::path& path, std::string_view text);

/// A text of the user's settings store, which has sections of keys; `otherwise` where it has none.
std::string GetSetting(const std::string& section, const std::string& key, const std::string& otherwise);
/// Throws std::system_error if the store cannot be written.
void SaveSetting(const std::string& section, const std::string& key, const std::string& value);

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
