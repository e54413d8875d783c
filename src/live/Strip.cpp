#include "live/Strip.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace bexlow::live {

namespace {
constexpr double None = std::numeric_limits<double>::quiet_NaN();
}

void Strip::Part::Add(double value) {
  least = std::fmin(least, value);
  greatest = std::fmax(greatest, value);
  if (value < 0) below = std::fmax(below, value);
  if (value >= 0) above = std::fmin(above, value);
}

void Strip::Clear() {
  parts_.fill({None, None, None, None});
  newest_ = 0;
  last_ = None;
}

void Strip::Add(double seconds, double value) {
  const bool crosses = std::abs(value - last_) > crossing_;
  const auto number = std::max(newest_, static_cast<std::int64_t>(std::max(0.0, seconds) * PartsASecond));
  if (number > newest_) {
    Join(number, crosses ? None : value);
    At(number) = {None, None, None, None, false, crosses || At(newest_).crossed};
    newest_ = number;
  } else {
    At(number).crossed |= crosses;
  }
  At(number).Add(value);
  last_ = value;
}

// The parts between two samples lie on the line from one to the other. They stay empty, which breaks it, if
// there is no value to lead to or it comes too late.
void Strip::Join(std::int64_t number, double value) {
  const auto parts = number - newest_;
  const bool tooLate = static_cast<double>(parts) > GapSeconds * PartsASecond;
  for (auto i = std::max<std::int64_t>(1, parts - static_cast<std::int64_t>(Parts)); i < parts; ++i) {
    const double between = last_ + (value - last_) * static_cast<double>(i) / static_cast<double>(parts);
    const double shown = tooLate ? None : between;
    At(newest_ + i) = {shown, shown, None, None};
  }
}

// Where a part holds a crossing, its values on both sides of 0 stand apart.
std::vector<double> Strip::Points() const {
  std::vector<double> points;
  points.reserve(PointsAPart * Parts);
  for (std::size_t place = 1; place <= Parts; ++place) {
    const auto& part = parts_[(static_cast<std::size_t>(newest_) + place) % Parts];
    const auto [least, greatest] = std::pair(part.least, part.greatest);
    if (part.crossed) {
      points.insert(points.end(), {None, least, part.below, None, part.above, greatest});
    } else {
      points.insert(points.end(), {part.broken ? None : least, least, least, greatest, greatest, greatest});
    }
  }
  return points;
}

}  // namespace bexlow::live
