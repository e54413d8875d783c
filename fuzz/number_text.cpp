// Numbers in text from outside, against the C library's reader.
#include <algorithm>
#include <cmath>
#include <limits>

#include "Target.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::fuzz {

/// Without the letters of hexadecimal, infinities and NaN the C library reads by the same rule.
double PlainLeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  const std::string number(text.substr(0, text.find_first_not_of("0123456789+-.eE")));
  constexpr double largest = std::numeric_limits<double>::max();
  return std::clamp(std::strtod(number.c_str(), nullptr), -largest, largest);
}

bool Same(double one, double other) {
  const double tiny = std::numeric_limits<double>::min();  // below it either may read 0
  return one == other || (std::abs(one) < tiny && std::abs(other) < tiny);
}

void Try(std::string_view text) {
  const double value = values::LeadingNumber(text);
  Require(std::isfinite(value), "a number is finite");
  Require(Same(value, PlainLeadingNumber(text)), "the number is the C library's");
  if (const auto whole = values::WholeNumber(text)) Require(*whole == value, "a whole number leads its text");
  const double rounded = values::RoundHalfEven(value);
  const auto field = values::FieldToDegrees(text);
  Require(field.has_value() == (rounded >= -32768 && rounded <= 32767), "a field fits 16 bits or not");
  if (field) Require(field->whole == rounded, "the quick way gives the same number");
  for (const std::string& written : {values::NumberText(value), values::PlainNumberText(value)}) {
    Require(written.find_first_not_of("-.0123456789") == std::string::npos, "a number has no exponent");
    // Rounded to 15 digits the largest number is out of range, so WholeNumber would refuse its text.
    const double back = values::LeadingNumber(written);
    Require(std::abs(back - value) <= std::abs(value) * 1e-14, "what is written reads back");
  }
}

}  // namespace bexlow::fuzz
