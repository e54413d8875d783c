// Shows the two inclination angles live, and zeroes either of them in the logger.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::live {

platform::Form* MakeAngles();

}  // namespace bexlow::live
