#include "Numbers.h"

#include <charconv>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace bexlow::simulator {
namespace {

template <typename Number>
Number Read(std::string_view text, std::string_view what, Number least, Number most) {
  Number value{};
  const auto* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  // Written so that "nan" fails, too.
  if (error == std::errc{} && stop == end && value >= least && value <= most) return value;
  std::ostringstream complaint;
  complaint << what << " is a number from " << least << " to " << most << ", not \"" << text << '"';
  throw std::invalid_argument(complaint.str());
}

}  // namespace

std::uint64_t WholeNumber(std::string_view text, std::string_view what, std::uint64_t least,
                          std::uint64_t most) {
  return Read(text, what, least, most);
}

double Decimal(std::string_view text, std::string_view what, double least, double most) {
  return Read(text, what, least, most);
}

}  // namespace bexlow::simulator
