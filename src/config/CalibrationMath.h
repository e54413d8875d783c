// Offset and gain of an accelerometer from the extremes of its samples, and the cells that keep them.
#pragma once

#include <array>
#include <cstdint>

namespace bexlow::config {

/// Offset X, Y, Z, then gain X, Y, Z, in bits.
using CalibrationValues = std::array<double, 6>;

inline constexpr int FirstCalibrationCell = 2;
inline constexpr int EndOfCalibrationCells = 14;  ///< one past the last

/// Zero point in bits, not rounded.
constexpr double Offset(double min, double max) {
  return (max + min) / 2;
}
/// Half-span in bits, not rounded.
constexpr double Gain(double min, double max) {
  return (max - min) / 2;
}

/// The byte of cell 2 to 13: the values as words, high byte in the even cell.
/// @throws std::system_error invalid_argument for another cell, result_out_of_range for a value
/// that fits no word
std::uint8_t CalibrationByte(int cell, const CalibrationValues& values);

}  // namespace bexlow::config
