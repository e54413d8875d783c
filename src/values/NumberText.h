// The one writer and the one reader of numbers as text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bexlow::values {

/// A number as data files and datagrams hold it: at most 15 significant digits, no exponent, no trailing
/// zeros, a point, and no zero before the point: 12.3, -.5, 0.
/// @throws std::system_error argument_out_of_domain for NaN and infinities
std::string NumberText(double value);

/// The same digits with the zero before the point, as text boxes show them: 0.5.
std::string PlainNumberText(double value);

/// A count with commas between thousands: 1,234.
std::string CountText(std::int64_t count);

/// A time in whole seconds, rounded up: 17 s, 5 min 12 s, 1 h 2 min.
std::string DurationText(double seconds);
/// To the nearest second, below a minute to a tenth: 1 h 2 min 45 s, 0.4 s.
std::string DurationWords(double seconds);
/// 1:02:45, with as many decimals as asked for.
std::string DurationClock(double seconds, int decimals = 0);

/// The longest leading number of a text, 0 where there is none. Blanks and tabs may lead; then a sign,
/// digits, one point, and an exponent where digits follow it. Never hexadecimal, inf or nan. Too large a
/// number gives the largest finite one of its sign.
double LeadingNumber(std::string_view text);

/// The number that the whole text is, blanks around it apart; nothing where the text is none or is too large.
std::optional<double> WholeNumber(std::string_view text);

/// The leading number of a field of angles, once as a signed 16-bit whole number and once in tenths; each is
/// rounded by itself, an exact half to the even one.
struct Degrees {
  std::int16_t whole = 0;
  std::int32_t tenths = 0;
};
/// Nothing where the whole number does not fit. Quick for plain fields.
std::optional<Degrees> FieldToDegrees(std::string_view field);

/// A quotient rounded to a whole number, an exact half to the even one. The divisor is above 0.
std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor);

/// Tenths with one decimal, always: -62.0.
std::string TenthsText(std::int64_t tenths);

}  // namespace bexlow::values
