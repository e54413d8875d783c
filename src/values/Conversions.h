// Conversions between the logger's words and degrees. Full scale is 32767 counts, not 32768.
#pragma once

#include <cstddef>
#include <span>
#include <system_error>

#include "values/LoggerValues.h"

namespace bexlow::values {

/// Throws std::system_error.
[[noreturn]] void Throw(std::errc code, const std::string& words);

/// The unsigned word at an index, high byte first: 256 * bytes[index] + bytes[index + 1].
/// @throws std::system_error invalid_argument if the bytes end before it
double Word(std::span<const std::uint8_t> bytes, std::size_t index);

/// Nearest whole number, an exact half to the even neighbour; never -0.
double RoundHalfEven(double value);

/// Nearest number with `decimals` decimal places (0 to 15), an exact half to the even digit; never -0.
double RoundToDecimals(double value, int decimals);

/// A word 0 to 65535 as a signed number: 65536 is subtracted above 32767. For words of the EEPROM.
double UnsignedToSigned16(double value);

/// The signed word of a live sample: 65535 is subtracted above 32767, so 65535 gives 0 and 32768 -32767.
double SignedSampleWord(double word);

/// Degrees of a live angle word, to one decimal place.
/// @param word       0 to 65535 as received, high byte first
/// @param fullScale  degrees at 32767 counts: 180 for X, 90 for Y
double SampleWordToAngle(double word, double fullScale);

/// The word of a Y (90) or X (180) angle in degrees, not rounded. Within full scale it is two's complement,
/// 0 to below 65536.
/// @throws std::system_error argument_out_of_domain for an angle or a result that is not finite
double AngleToInteger90(double angle);
double AngleToInteger180(double angle);

/// Rounded half to even. @throws std::system_error result_out_of_range outside -32768 to 32767, also for NaN
std::int16_t ToInt16(double value);

/// Rounded half to even. @throws std::system_error result_out_of_range outside the 32-bit range, also for NaN
std::int32_t ToInt32(double value);

/// Rounded half to even. @throws std::system_error result_out_of_range outside 0 to 255, also for NaN
std::uint8_t ToByte(double value);

/// Seconds from CounterStart to CounterNow, two decimal places; 0 while the frequency is unknown.
double ElapsedSeconds(const SampleClock& clock);

}  // namespace bexlow::values
