#include "platform/machine/ProgramVersion.h"

namespace bexlow::platform {

std::string ProgramVersion() {
  return BEXLOW_VERSION;
}

}  // namespace bexlow::platform
