// The modal screen that picks the serial port, finds the logger, and reads what the program needs at first.
#pragma once

#include <functional>

namespace bexlow::platform {
class Form;
}

namespace bexlow::link {

/// @param reached  told whether the on-board parameters were retrieved; not called for port 0
platform::Form* MakeConnect(std::function<void(bool)> reached);

}  // namespace bexlow::link
