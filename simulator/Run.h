// A logged run as the data memory holds it, from page 1 on.
#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "DataMemory.h"

namespace bexlow::simulator {

/// How often the wearer pushed the button: a number of pushes, or a share of all pairs (1 = a stuck button).
struct PushPlan {
  std::size_t count = 5;
  double share = 0;  // 0 to 1; above 0 it replaces the count
};

struct RunPlan {
  bool linear = true;
  int channels = 3;        // of a Linear run: 1 = X, 2 = Y, otherwise X and Y in pairs
  std::size_t pages = 24;  // 0 to 2047
  PushPlan pushes{};       // only pairs can hold a push
  std::uint64_t seed = 1;
};

/// Writes the run into pages 1 to plan.pages and leaves all others alone. A Linear run that doesn't fill the
/// memory ends two thirds into its last page; the rest of that page stays erased. Bin pages are histograms of
/// one period: odd pages X, even pages Y.
void StoreRun(DataMemory& memory, const RunPlan& plan);

/// One byte of a Linear page: 128 steps to full scale, the negative half counted down from 255. A small
/// negative angle is stored as 0, so that no sample looks like an erased byte.
std::uint8_t AngleByte(double degrees, double fullScale);

}  // namespace bexlow::simulator
