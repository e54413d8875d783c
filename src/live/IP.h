// Module IP: who this computer is. The sockets of this system need no start-up step and no cleaning up.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace bexlow::platform {
class Form;
}

namespace bexlow::live {

/// This computer's name; empty if it has none.
std::string ComputerName();

/// The four numbers of this computer's address, the last one of its list; nothing after the user has been
/// told why.
std::optional<std::array<std::string, 4>> GetIP(const platform::Form& screen);

}  // namespace bexlow::live
