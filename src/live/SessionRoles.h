// The two roles of a remote session and their default ports: each sends to the port that the other binds.
#pragma once

namespace bexlow::live {

struct SessionRole {
  const char *name, *caption;  ///< of the option
  bool sends;
  const char* port;  ///< of the peer
  const char* bind;  ///< of this computer
};

inline constexpr SessionRole SessionRoles[] = {
    {"optSession1", "I will send the data", true, "1002", "1001"},
    {"optSession2", "I will receive the data", false, "1001", "1002"},
};

}  // namespace bexlow::live
