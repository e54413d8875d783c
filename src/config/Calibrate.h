// Finds offset and gain of the three accelerometers from the extremes of their samples, and writes them.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::config {

platform::Form* MakeCalibrate();

}  // namespace bexlow::config
