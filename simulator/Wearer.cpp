#include "Wearer.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace bexlow::simulator {
namespace {

constexpr double SamplesPerSecond = 7.5;

struct Posture {
  Pose pose;                      // degrees
  double sway;                    // degrees
  double minSeconds, maxSeconds;  // how long a person stays in it
};

constexpr Posture Postures[] = {
    {{4, 1}, 2.5, 20, 120},     // standing
    {{22, -2}, 1.5, 60, 300},   // sitting
    {{38, -6}, 1.2, 40, 200},   // slouching
    {{68, 5}, 6, 3, 12},        // bending down
    {{9, 24}, 3, 5, 25},        // leaning to a side
    {{-84, 3}, 0.6, 90, 400},   // lying on the back
    {{96, -11}, 0.6, 60, 240},  // lying on the front
};

double Wave(double seconds, double period) { return std::sin(2 * std::numbers::pi * seconds / period); }

}  // namespace

void Wearer::ChoosePosture() {
  const auto& [pose, sway, minSeconds, maxSeconds] = Postures[random_.Below(std::size(Postures))];
  target_ = {pose.x + random_.Between(-4, 4), pose.y + random_.Between(-3, 3)};
  sway_ = sway;
  samplesLeft_ = std::lround(random_.Between(minSeconds, maxSeconds) * SamplesPerSecond);
}

Pose Wearer::Next() {
  if (samplesLeft_-- <= 0) ChoosePosture();
  const double seconds = static_cast<double>(samplesTaken_++) / SamplesPerSecond;
  constexpr double approach = 0.2;  // share of the way to a new posture that one sample covers
  pose_.x += (target_.x - pose_.x) * approach;
  pose_.y += (target_.y - pose_.y) * approach;
  // One sample in 1500 is a jerk, a spike one sample wide.
  const double jerk = random_.Below(1500) == 0 ? random_.Between(-60, 60) : 0;
  const double x = pose_.x + sway_ * Wave(seconds, 5.3) + random_.Between(-0.8, 0.8) + jerk;
  const double y = pose_.y + sway_ * Wave(seconds, 4.1) + random_.Between(-0.5, 0.5) + jerk / 3;
  return {std::clamp(x, -175.0, 175.0), std::clamp(y, -85.0, 85.0)};
}

}  // namespace bexlow::simulator
