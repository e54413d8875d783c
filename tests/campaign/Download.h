// One download of the real screen on the real machine, with a user who gives up at the first error.
#pragma once

#include <filesystem>
#include <string>

namespace bexlow::campaign {

/// The data file that a download in a program's folder writes.
std::filesystem::path DataFile(const std::filesystem::path& folder);

/// How a download ended.
struct Ending {
  bool completed = false;
  std::string message;  ///< the first that was not part of a good end; empty if the download just never ended
};

/// Downloads from the logger that the folder has as Comm 1.
Ending Download(const std::filesystem::path& folder);

}  // namespace bexlow::campaign
