// Module IP: the address of this computer.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace bexlow::platform {
class Form;
}

namespace bexlow::live {

/// The four numbers of the last address in this computer's list. If there is none, a box says so.
std::optional<std::array<std::string, 4>> GetIP(const platform::Form& screen);

}  // namespace bexlow::live
