// The one time scale of the stand-in: nanoseconds of the monotonic clock, injected wherever a rule depends on
// them.
#pragma once
#include <chrono>

namespace bexlow::simulator {

using Time = std::chrono::nanoseconds;

/// Line time of one byte: start bit, eight data bits and stop bit at 19200 baud.
inline constexpr Time ByteTime{10'000'000'000LL / 19200};

}  // namespace bexlow::simulator
