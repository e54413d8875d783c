#include "Live.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace bexlow::simulator {
namespace {

constexpr double FullScaleCounts = 32767;
constexpr double Radians = std::numbers::pi / 180;

double Wave(double seconds, double period) { return std::sin(2 * std::numbers::pi * seconds / period); }

int Counts(double degrees, double fullScale) {
  return static_cast<int>(std::lround(degrees / fullScale * FullScaleCounts));
}

int TareCounts(const Eeprom& cells, std::size_t address) {
  if (cells[TareEnableCell] != 1) return 0;
  return static_cast<std::int16_t>(WordAt(cells, address));
}

struct Sensor {
  double offset, gain;  // bits: reading at 0 g, and its change at 1 g
};

constexpr std::array<Sensor, 3> Sensors{{{331, 319}, {402, 327}, {318, 321}}};

}  // namespace

Pose LivePose(Motion motion, Time sinceStart) {
  const double seconds = std::chrono::duration<double>(sinceStart).count();
  switch (motion) {
    case Motion::Sway:
      return {12 + 25 * Wave(seconds, 11) + 3 * Wave(seconds, 2.3),
              -3 + 14 * Wave(seconds, 7.3) + 2 * Wave(seconds, 1.9)};
    case Motion::Turn:
      return {std::remainder(seconds * 60, 360), 89 * Wave(seconds, 4.4)};
    case Motion::Still:
      break;
  }
  return {12, -3};
}

std::array<std::uint16_t, 2> AngleWords(const Pose& pose, const Eeprom& cells) {
  const int x = Counts(pose.x, 180) - TareCounts(cells, XTareCell);
  const int y = Counts(pose.y, 90) - TareCounts(cells, YTareCell);
  constexpr int end = static_cast<int>(FullScaleCounts);
  return {static_cast<std::uint16_t>(x & 0xFFFF),
          static_cast<std::uint16_t>(std::clamp(y, -end, end) & 0xFFFF)};
}

std::array<std::uint16_t, 3> AccelerometerWords(const Pose& pose) {
  const double x = pose.x * Radians;
  const double y = pose.y * Radians;
  const std::array<double, 3> gravity{std::sin(x) * std::cos(y), std::sin(y), std::cos(x) * std::cos(y)};
  std::array<std::uint16_t, 3> words{};
  for (std::size_t axis = 0; axis < words.size(); ++axis) {
    const double bits = Sensors[axis].offset + Sensors[axis].gain * gravity[axis];
    words[axis] = static_cast<std::uint16_t>(std::clamp(std::lround(bits), 0L, 1023L));
  }
  return words;
}

}  // namespace bexlow::simulator
