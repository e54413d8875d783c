// What the program last learned of the logger: its settings, the latest live sample, the times of samples.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace bexlow::values {

/// Cached on-board parameters: reads are cached, writes are not. Units are those of the parameter map.
struct OnBoardParameters {
  double XOffset = 0, YOffset = 0, ZOffset = 0;                         // bits
  double XGain = 0, YGain = 0, ZGain = 0;                               // bits
  double XTare = 0, YTare = 0;                                          // degrees
  double XLowAlarm = 0, XHighAlarm = 0, YLowAlarm = 0, YHighAlarm = 0;  // degrees
  double UpdateTimeIncrement = 0, Averages = 0, ShakerEnable = 0, FilterLevel = 0, TareEnable = 0;
  double BinLinearMode = 0, LinearChannels = 0;
  double DAC1 = 0, DAC2 = 0, DAC3 = 0, DAC4 = 0;
  double LinearUpdateRate = 0;  // the byte, 75 or 15, not a frequency
};

/// The bytes of a read, working field of its sequence: cell by cell from index 2 on.
using ReadArray = std::array<std::uint8_t, 53>;

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
