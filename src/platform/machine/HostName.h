// What this computer is called, by name and by address.
#pragma once

#include <string>
#include <vector>

namespace bexlow::platform {

/// The computer's name; empty if the system does not tell it.
std::string HostName();

/// The dotted addresses of the network interfaces that are up, in the system's order; the loopback address
/// only if there is no other. Asks no name server.
std::vector<std::string> HostAddresses();

}  // namespace bexlow::platform
