// The latest live sample and the readings of the high-resolution counter that time it.
#pragma once

#include <cstdint>
#include <string>

namespace bexlow::values {

/// The latest sample of a live screen; read by the file writers.
struct LiveSample {
  double AccX = 0, AccY = 0, AccZ = 0;  ///< accelerometer readings as received, 0 to 1024 on the screens
  double AngleX = 0;                    ///< degrees, one decimal place, nominally -180 to 180
  double AngleY = 0;                    ///< degrees, one decimal place, nominally -90 to 90
  double WordX = 0, WordY = 0;          ///< angle words; signed once decoded
  std::string SampleTime;               ///< seconds since sampling started, as NumberText
  bool SavingToFile = false;            ///< each sample is to be appended to the data file
};

/// Readings of the high-resolution counter.
struct SampleClock {
  std::int64_t CounterFrequency = 0;  ///< counts a second; 0 until it was read
  std::int64_t CounterNow = 0;
  std::int64_t CounterStart = 0;  ///< taken when sampling started
};

}  // namespace bexlow::values
