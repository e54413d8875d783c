// The per-user settings store: texts by section and key, under the application "Bexlow".
#pragma once

#include <string>

namespace bexlow::platform {

std::string GetSetting(const std::string& section, const std::string& key, const std::string& standard);
/// Throws std::system_error if the store cannot be written.
void SaveSetting(const std::string& section, const std::string& key, const std::string& value);

}  // namespace bexlow::platform
