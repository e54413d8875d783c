// Reads or writes any one cell of the logger's EEPROM, without a warning. A modal screen.
#pragma once

namespace bexlow::platform {
class Form;
}

namespace bexlow::config {

platform::Form* MakeEEPROM();

}  // namespace bexlow::config
