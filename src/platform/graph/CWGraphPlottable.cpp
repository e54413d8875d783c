#include "platform/graph/CWGraphPlottable.h"

#include <algorithm>

namespace bexlow::platform {

namespace {

constexpr double FarthestPixel = 1e5;  // beyond it the painter's numbers overflow

}  // namespace

double CWGraphPlottable::Scale::At(double coordinate) const {
  return std::clamp(origin + coordinate * perUnit, -FarthestPixel, FarthestPixel);
}

CWGraphPlottable::Scale CWGraphPlottable::ScaleOf(const QCPAxis& axis) {
  const auto range = axis.range();
  const double first = axis.coordToPixel(range.lower);
  const double perUnit = (axis.coordToPixel(range.upper) - first) / range.size();
  return {first - range.lower * perUnit, perUnit};
}

}  // namespace bexlow::platform
