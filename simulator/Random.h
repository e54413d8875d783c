// Repeatable chance: the same seed gives the same run and the same faults on every machine.
#pragma once
#include <cstddef>
#include <cstdint>
#include <random>

namespace bexlow::simulator {

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  /// 0 up to, not including, 1. Not std::uniform_real_distribution, whose results differ between libraries.
  double Share() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  double Between(double low, double high) { return low + (high - low) * Share(); }
  std::size_t Below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }

 private:
  std::mt19937_64 engine_;
};

}  // namespace bexlow::simulator
