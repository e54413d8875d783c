#include "live/Strip.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bexlow::live {

namespace {
constexpr double None = std::numeric_limits<double>::quiet_NaN();
}

void Strip::Clear() {
  parts_.fill({None, None});
  newest_ = 0;
}

void Strip::Add(double seconds, double value) {
  const auto number = std::max(newest_, static_cast<std::int64_t>(std::max(0.0, seconds) * PartsASecond));
  const auto passedOver = std::min(number - newest_, static_cast<std::int64_t>(Parts));
  for (std::int64_t empty = number - passedOver + 1; empty <= number; ++empty) Part(empty) = {None, None};
  newest_ = number;
  auto& [least, greatest] = Part(number);
  least = std::fmin(least, value);
  greatest = std::fmax(greatest, value);
}

std::vector<double> Strip::Values() const {
  std::vector<double> values;
  values.reserve(2 * Parts);
  for (std::size_t place = 1; place <= Parts; ++place) {
    const auto& [least, greatest] = parts_[(static_cast<std::size_t>(newest_) + place) % Parts];
    values.push_back(least);
    values.push_back(greatest);
  }
  return values;
}

}  // namespace bexlow::live
