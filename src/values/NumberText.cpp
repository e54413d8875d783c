#include "values/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

#include "values/Conversions.h"

namespace bexlow::values {

namespace {

constexpr int SignificantDigits = 15;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view WithoutLeadingBlanks(std::string_view text) {
  const auto first = std::find_if_not(text.begin(), text.end(), IsBlank);
  return text.substr(static_cast<std::size_t>(first - text.begin()));
}

/// The digits of a value without trailing zeros, and how many of them stand before the point.
struct Digits {
  std::string digits;
  int pointAt = 0;
};

Digits DigitsOf(double size) {
  char buffer[32];
  const auto scientific = std::chars_format::scientific;
  const char* const end =
      std::to_chars(buffer, std::end(buffer), size, scientific, SignificantDigits - 1).ptr;
  const char* const mark = std::find(static_cast<const char*>(buffer), end, 'e');
  int exponent = 0;
  std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, end, exponent);
  std::string digits(1, buffer[0]);
  digits.append(buffer + 2, static_cast<std::size_t>(mark - buffer - 2));
  digits.erase(digits.find_last_not_of('0') + 1);
  return {digits, exponent + 1};
}

std::string TextOf(double value, std::string_view zeroBeforePoint) {
  if (!std::isfinite(value)) Throw(std::errc::argument_out_of_domain, "Not a finite number");
  if (value == 0) return "0";
  auto [digits, pointAt] = DigitsOf(std::fabs(value));
  std::string text = value < 0 ? "-" : "";
  if (pointAt <= 0) {
    return text.append(zeroBeforePoint).append(".").append(static_cast<std::size_t>(-pointAt), '0') + digits;
  }
  const auto whole = static_cast<std::size_t>(pointAt);
  if (digits.size() <= whole) return text + digits.append(whole - digits.size(), '0');
  return text + digits.insert(whole, ".");
}

/// A leading number and how much of the text it takes.
struct Scanned {
  double value = 0;
  std::size_t length = 0;  ///< with its sign; 0 for none
  bool tooLarge = false;
};

/// Whether a number that from_chars calls out of range is too large, not too close to 0.
bool IsAboveOne(std::string_view number) {
  const auto mantissa = number.substr(0, number.find_first_of("eE"));
  auto exponent = number.substr(mantissa.size());
  const auto point = static_cast<double>(std::min(mantissa.find('.'), mantissa.size()));
  const auto lead = static_cast<double>(mantissa.find_first_of("123456789"));
  if (exponent.empty()) return lead < point;
  exponent.remove_prefix(exponent.starts_with("e+") || exponent.starts_with("E+") ? 2 : 1);
  std::int64_t power = 0;
  const auto read = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
  if (read.ec != std::errc()) return exponent[0] != '-';
  return point - lead + static_cast<double>(power) > 0;
}

Scanned Scan(std::string_view text) {
  const bool negative = text.starts_with('-');
  const auto number = text.substr(negative || text.starts_with('+') ? 1 : 0);
  if (number.empty() || (!IsDigit(number[0]) && number[0] != '.'))
    return {};  // from_chars takes inf, nan, --1
  Scanned scanned;
  const auto read = std::from_chars(number.data(), number.data() + number.size(), scanned.value);
  if (read.ec == std::errc::invalid_argument) return {};
  scanned.length = static_cast<std::size_t>(read.ptr - text.data());
  if (read.ec == std::errc::result_out_of_range) {
    scanned.tooLarge = IsAboveOne({number.data(), read.ptr});
    scanned.value = scanned.tooLarge ? std::numeric_limits<double>::max() : 0;
  }
  if (negative) scanned.value = -scanned.value;
  return scanned;
}

/// Whether the digits after the point round the number before it up; nothing if they are not all digits.
std::optional<bool> RoundsUp(bool odd, std::string_view fraction) {
  bool more = false;
  for (std::size_t i = 0; i < fraction.size(); ++i) {
    if (!IsDigit(fraction[i])) return std::nullopt;
    more = more || (i > 0 && fraction[i] != '0');
  }
  if (fraction.empty() || fraction[0] != '5') return !fraction.empty() && fraction[0] > '5';
  return more || odd;
}

/// A field of the form [-]digits[.digits], as nearly all are; nothing for other fields. Its whole number may
/// be beyond 16 bits.
std::optional<std::pair<std::int64_t, std::int64_t>> WholeAndTenths(std::string_view field) {
  if (field.empty() || field.size() > SignificantDigits) return std::nullopt;
  const bool negative = field[0] == '-';
  const std::size_t begin = negative ? 1 : 0;
  std::size_t at = begin;
  std::int64_t whole = 0;
  for (; at < field.size() && IsDigit(field[at]); ++at) whole = whole * 10 + (field[at] - '0');
  std::int64_t tenths = whole * 10;
  if (at < field.size()) {
    if (field[at] != '.' || field.size() - begin < 2) return std::nullopt;
    const auto fraction = field.substr(at + 1);
    const auto up = RoundsUp(whole % 2 != 0, fraction);
    if (!up) return std::nullopt;
    whole += *up ? 1 : 0;
    if (!fraction.empty()) {
      const int tenth = fraction[0] - '0';
      tenths += tenth + (RoundsUp(tenth % 2 != 0, fraction.substr(1)).value_or(false) ? 1 : 0);
    }
  } else if (at == begin) {
    return std::nullopt;
  }
  return negative ? std::pair{-whole, -tenths} : std::pair{whole, tenths};
}

std::string MinutesText(std::int64_t seconds) {
  return std::to_string(seconds / 60) + " min " + std::to_string(seconds % 60) + " s";
}

}  // namespace

std::string NumberText(double value) { return TextOf(value, ""); }

std::string PlainNumberText(double value) { return TextOf(value, "0"); }

double LeadingNumber(std::string_view text) { return Scan(WithoutLeadingBlanks(text)).value; }

std::optional<double> WholeNumber(std::string_view text) {
  const std::string_view number = WithoutLeadingBlanks(text);
  const Scanned scanned = Scan(number);
  if (scanned.length == 0 || scanned.tooLarge) return std::nullopt;
  if (!WithoutLeadingBlanks(number.substr(scanned.length)).empty()) return std::nullopt;
  return scanned.value;
}

std::optional<Degrees> FieldToDegrees(std::string_view field) {
  const auto plain = WholeAndTenths(field);
  const double number = plain ? 0 : LeadingNumber(field);
  const double whole = plain ? static_cast<double>(plain->first) : RoundHalfEven(number);
  if (whole < -32768 || whole > 32767) return std::nullopt;
  const double tenths = plain ? static_cast<double>(plain->second) : RoundHalfEven(number * 10);
  return Degrees{static_cast<std::int16_t>(whole), static_cast<std::int32_t>(tenths)};
}

std::int64_t RoundedQuotient(std::int64_t dividend, std::int64_t divisor) {
  std::int64_t quotient = dividend / divisor, rest = dividend % divisor;
  if (rest < 0) {
    rest += divisor;
    --quotient;
  }
  const std::int64_t excess = 2 * rest - divisor;
  return quotient + (excess > 0 || (excess == 0 && quotient % 2 != 0) ? 1 : 0);
}

std::string TenthsText(std::int64_t tenths) {
  const std::int64_t size = tenths < 0 ? -tenths : tenths;
  return (tenths < 0 ? "-" : "") + std::to_string(size / 10) + "." + std::to_string(size % 10);
}

std::string CountText(std::int64_t count) {
  std::string text = std::to_string(count);
  for (auto at = static_cast<int>(text.size()) - 3; at > 0; at -= 3)
    text.insert(static_cast<std::size_t>(at), ",");
  return text;
}

std::string DurationText(double seconds) {
  const auto whole = static_cast<std::int64_t>(std::ceil(seconds));
  if (whole < 60) return std::to_string(whole) + " s";
  if (whole < 3600) return MinutesText(whole);
  return std::to_string(whole / 3600) + " h " + std::to_string(whole % 3600 / 60) + " min";
}

std::string DurationWords(double seconds) {
  const std::int64_t tenths = std::llrint(seconds * 10), whole = std::llrint(seconds);
  if (tenths < 600) return TenthsText(tenths) + " s";
  return (whole < 3600 ? "" : std::to_string(whole / 3600) + " h ") + MinutesText(whole % 3600);
}

std::string DurationClock(double seconds, int decimals) {
  const auto parts = std::llrint(std::pow(10, decimals));  // of a second
  const auto count = std::llrint(std::abs(seconds) * static_cast<double>(parts)), whole = count / parts;
  const auto twoDigits = [](std::int64_t number) { return std::to_string(100 + number % 60).substr(1); };
  const std::string text = (seconds < 0 && count > 0 ? "-" : "") + std::to_string(whole / 3600) + ":" +
                           twoDigits(whole / 60) + ":" + twoDigits(whole);
  return decimals > 0 ? text + "." + std::to_string(parts + count % parts).substr(1) : text;
}

}  // namespace bexlow::values
