// The version of the running program.
#pragma once

#include <string>

namespace bexlow::platform {

/// Major, minor and revision joined by points.
std::string ProgramVersion();

}  // namespace bexlow::platform
