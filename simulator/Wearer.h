// A person who wears the logger through a day: stands, sits, bends and lies down, sways, and jerks now and
// then.
#pragma once
#include <cstdint>

#include "Live.h"
#include "Random.h"

namespace bexlow::simulator {

class Wearer {
 public:
  explicit Wearer(std::uint64_t seed) : random_(seed) {}

  /// The pose of the next sample, 7.5 of them a second; X within 175 degrees and Y within 85.
  Pose Next();

 private:
  void ChoosePosture();

  Random random_;
  Pose target_{0, 0};
  Pose pose_{0, 0};
  double sway_ = 0;       // degrees
  long samplesLeft_ = 0;  // of the posture
  long samplesTaken_ = 0;
};

}  // namespace bexlow::simulator
