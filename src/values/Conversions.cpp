#include "values/Conversions.h"

#include <cmath>
#include <limits>

namespace bexlow::values {

namespace {

constexpr double FullScaleCounts = 32767;
constexpr double WordCount = 65536;

template <class Whole>
Whole Rounded(double value, const char* range) {
  const double rounded = RoundHalfEven(value);
  using Limits = std::numeric_limits<Whole>;
  if (rounded >= Limits::min() && rounded <= Limits::max()) return static_cast<Whole>(rounded);
  Throw(std::errc::result_out_of_range, std::string("Number outside ") + range);  // also for NaN
}

double AngleToInteger(double angle, double divisor) {
  double count = angle * FullScaleCounts / divisor;
  if (!std::isfinite(count)) Throw(std::errc::argument_out_of_domain, "Angle without a word");
  if (count > FullScaleCounts) count -= WordCount;
  if (count < 0) count += WordCount;
  return count;
}

}  // namespace

void Throw(std::errc code, const std::string& words) {
  throw std::system_error(std::make_error_code(code), words);
}

double RoundHalfEven(double value) { return std::nearbyint(value) + 0.0; }  // -0 + 0 is 0

double RoundToDecimals(double value, int decimals) {
  const double scale = std::pow(10.0, decimals);
  const double scaled = value * scale;
  return std::isfinite(scaled) ? RoundHalfEven(scaled) / scale : value;
}

double Word(std::span<const std::uint8_t> bytes, std::size_t index) {
  if (bytes.size() < 2 || index > bytes.size() - 2)
    Throw(std::errc::invalid_argument, "Reply ends before a word");
  return 256.0 * bytes[index] + bytes[index + 1];
}

double UnsignedToSigned16(double value) { return value > FullScaleCounts ? value - WordCount : value; }

double SignedSampleWord(double word) { return word > FullScaleCounts ? word - (WordCount - 1) : word; }

double SampleWordToAngle(double word, double fullScale) {
  return RoundToDecimals(SignedSampleWord(word) / FullScaleCounts * fullScale, 1);
}

double AngleToInteger90(double angle) { return AngleToInteger(angle, 90); }

double AngleToInteger180(double angle) { return AngleToInteger(angle, 180); }

std::int16_t ToInt16(double value) { return Rounded<std::int16_t>(value, "-32768 to 32767"); }

std::int32_t ToInt32(double value) { return Rounded<std::int32_t>(value, "the 32-bit range"); }

std::uint8_t ToByte(double value) { return Rounded<std::uint8_t>(value, "0 to 255"); }

double ElapsedSeconds(const SampleClock& clock) {
  if (clock.CounterFrequency == 0) return 0;
  const auto counts =  // unsigned, so that a difference of any two readings is defined
      static_cast<std::int64_t>(static_cast<std::uint64_t>(clock.CounterNow) -
                                static_cast<std::uint64_t>(clock.CounterStart));
  return RoundToDecimals(static_cast<double>(counts) / static_cast<double>(clock.CounterFrequency), 2);
}

}  // namespace bexlow::values
