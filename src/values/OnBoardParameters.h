// What the program last learned of the logger's settings.
#pragma once

#include <array>
#include <cstdint>

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

}  // namespace bexlow::values
