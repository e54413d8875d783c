// Folders beside the program.
#pragma once

#include <filesystem>

namespace bexlow::platform {

bool FolderExists(const std::filesystem::path& folder);
/// Throws std::system_error with the path and the system's words.
void CreateFolder(const std::filesystem::path& folder);

std::filesystem::path DataFilesFolder();
std::filesystem::path LogsFolder();

}  // namespace bexlow::platform
