#include "graph/ViewNumbers.h"

#include <algorithm>
#include <cmath>

#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::graph {

namespace {

std::string Rounded(double value, int decimals) {
  return values::PlainNumberText(values::RoundToDecimals(value, decimals));
}

std::string Degrees(double value) {
  return Rounded(value, 1) + "°";
}

std::string Percent(double share) {
  return Rounded(share * 100, 1) + " %";
}

}  // namespace

std::optional<ViewNumbers> NumbersInView(std::span<const double> samples, double from, double to,
                                         double limit) {
  if (samples.empty() || !(from <= to)) return std::nullopt;
  const double end = static_cast<double>(samples.size() - 1);
  if (to < 0 || from > end) return std::nullopt;
  const auto first = static_cast<std::size_t>(std::ceil(std::max(from, 0.0)));
  const auto last = static_cast<std::size_t>(std::floor(std::min(to, end)));
  if (first > last) return std::nullopt;
  ViewNumbers numbers{first, last, samples[first], 0, samples[first]};
  double sum = 0;
  std::size_t above = 0, below = 0;
  for (const double sample : samples.subspan(first, last - first + 1)) {
    numbers.least = std::min(numbers.least, sample);
    numbers.greatest = std::max(numbers.greatest, sample);
    sum += sample;
    above += sample > limit ? 1 : 0;
    below += sample < limit ? 1 : 0;
  }
  const auto count = static_cast<double>(last - first + 1);
  numbers.mean = sum / count;
  numbers.above = static_cast<double>(above) / count;
  numbers.below = static_cast<double>(below) / count;
  return numbers;
}

std::string NumbersLine(const ViewNumbers& numbers, double limit) {
  return "In view: least " + Degrees(numbers.least) + ", mean " + Degrees(numbers.mean) + ", greatest " +
         Degrees(numbers.greatest) + "; above " + Degrees(limit) + ": " + Percent(numbers.above) +
         ", below: " + Percent(numbers.below);
}

std::string NumbersHead() {
  return "Axis\tFirst sample\tLast sample\tLeast\tMean\tGreatest\tLimit\tAbove %\tBelow %\n";
}

std::string NumbersRow(const std::string& axis, const ViewNumbers& numbers, double limit) {
  std::string row = axis;
  for (const double value :
       {static_cast<double>(numbers.first), static_cast<double>(numbers.last), numbers.least, numbers.mean,
        numbers.greatest, limit, numbers.above * 100, numbers.below * 100})
    row += "\t" + Rounded(value, 2);
  return row + "\n";
}

}  // namespace bexlow::graph
