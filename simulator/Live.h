// The readings of a logger that somebody holds, as a function of time only.
#pragma once
#include <array>
#include <cstdint>

#include "Eeprom.h"
#include "Time.h"

namespace bexlow::simulator {

enum class Motion {
  Sway,   // a person who stands and leans about
  Turn,   // turned through all positions, as for a calibration
  Still,  // fixed to the bench
};

struct Pose {
  double x, y;  // degrees: x within 180, y within 90 of upright
};

/// The pose at a time since the start.
Pose LivePose(Motion motion, Time sinceStart);

/// The two angle words as the logger sends them: two's complement, minus the tare if the tare is on. The X
/// angle wraps round at 180 degrees, the Y angle stops at 90.
std::array<std::uint16_t, 2> AngleWords(const Pose& pose, const Eeprom& cells);

/// The three accelerometer readings, 0 to 1023. They follow gravity through this logger's own sensors, so
/// what a calibration writes to the cells doesn't move them.
std::array<std::uint16_t, 3> AccelerometerWords(const Pose& pose);

}  // namespace bexlow::simulator
