#include "platform/machine/Folders.h"

#include <cerrno>
#include <sys/stat.h>
#include <system_error>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

bool FolderExists(const std::filesystem::path& folder) {
  std::error_code ignored;
  return std::filesystem::is_directory(folder, ignored);
}

void CreateFolder(const std::filesystem::path& folder) {
  if (::mkdir(folder.c_str(), 0777) != 0)
    throw std::system_error(errno, std::generic_category(), folder.string());
}

std::filesystem::path DataFilesFolder() {
  return Machine::Get().ProgramFolder() / "Data Files";
}

std::filesystem::path LogsFolder() {
  return Machine::Get().ProgramFolder() / "Logs";
}

}  // namespace bexlow::platform
