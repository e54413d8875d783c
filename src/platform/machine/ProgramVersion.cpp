#include "platform/machine/ProgramVersion.h"

#include "platform/Version.h"

namespace bexlow::platform {

std::string ProgramVersion() {
  return std::to_string(BEXLOW_VERSION_MAJOR) + "." + std::to_string(BEXLOW_VERSION_MINOR) + "." +
         std::to_string(BEXLOW_VERSION_PATCH);
}

}  // namespace bexlow::platform
