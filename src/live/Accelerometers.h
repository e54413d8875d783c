// Shows the readings of the three accelerometers live; a hidden panel sets the logger's DAC values.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::live {

platform::Form* MakeAccelerometers();

}  // namespace bexlow::live
