#include "config/CalibrationMath.h"

#include <system_error>

#include "config/ParameterMap.h"

namespace bexlow::config {

std::uint8_t CalibrationByte(int cell, const CalibrationValues& values) {
  if (cell < FirstCalibrationCell || cell >= EndOfCalibrationCells) {
    throw std::system_error(std::make_error_code(std::errc::invalid_argument), "No calibration cell");
  }
  const auto offset = static_cast<std::size_t>(cell - FirstCalibrationCell);
  return Encode(Form::U16, values[offset / 2])[offset % 2];
}

}  // namespace bexlow::config
