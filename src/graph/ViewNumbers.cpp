#include "graph/ViewNumbers.h"

#include <cmath>
#include <cstdlib>

#include "values/NumberText.h"

namespace bexlow::graph {

namespace {

constexpr std::int64_t HalfCircle = 1800;  // tenths

std::string Count(std::int64_t count, const std::string& one, const std::string& more) {
  return values::CountText(count) + " " + (count == 1 ? one : more);
}

}  // namespace

std::int64_t ViewNumbers::Mean() const { return counted == 0 ? 0 : values::RoundedQuotient(sum, counted); }

// The product of an hour's count and squares has more digits than 64 bits hold.
std::int64_t ViewNumbers::Deviation() const {
  const auto n = static_cast<long double>(counted), total = static_cast<long double>(sum);
  return counted == 0 ? 0 : std::llrint(std::sqrt(std::max(0.0L, n * squares - total * total)) / n);
}

std::string Percent(std::int64_t part, std::int64_t whole) {
  const auto tenths = values::RoundedQuotient(part * 1000, whole);
  if (tenths == 0 && part > 0) return "less than 0.1 %";
  if (tenths == 1000 && part < whole) return "more than 99.9 %";
  return values::TenthsText(tenths) + " %";
}

ViewNumbers NumbersInView(const files::Run& run, std::size_t axis, std::size_t first, std::size_t last,
                          double limit) {
  ViewNumbers numbers{first, last};
  numbers.unit = run.axes[axis].unit;
  const bool wraps = run.axes[axis].wraps;
  const auto& tenths = run.tenths[axis];
  const double limitTenths = limit * 10;
  const std::size_t unwrittenFrom = tenths.size() - run.UnwrittenEnd();
  auto push = std::ranges::lower_bound(run.pushes, static_cast<double>(first));
  std::optional<std::int64_t> before;
  for (std::size_t i = first; i <= last && i < tenths.size(); ++i) {
    if (push != run.pushes.end() && *push == static_cast<double>(i)) {
      ++push;
      ++numbers.pushes;
      continue;
    }
    if (i >= unwrittenFrom) {
      ++numbers.unwritten;
      continue;
    }
    const std::int64_t tenth = tenths[i];
    numbers.min = before ? std::min(numbers.min, tenth) : tenth;
    numbers.max = before ? std::max(numbers.max, tenth) : tenth;
    numbers.crosses = numbers.crosses || (wraps && before && std::abs(tenth - *before) > HalfCircle);
    numbers.sum += tenth;
    const auto size = static_cast<double>(tenth);
    numbers.squares += size * size;
    numbers.above += size > limitTenths ? 1 : 0;
    numbers.below += size < limitTenths ? 1 : 0;
    ++numbers.counted;
    before = tenth;
  }
  return numbers;
}

std::string NumbersLine(const ViewNumbers& numbers, double limit) {
  std::string line = "In view: ";
  const std::string unit(numbers.unit);
  const auto value = [&](std::int64_t tenths) { return values::TenthsText(tenths) + unit; };
  if (numbers.counted == 0) {
    line += "no sample";
  } else {
    line += numbers.crosses ? "it crosses ±180°, so there is no min, mean or max"
                            : "min " + value(numbers.min) + ", mean " + value(numbers.Mean()) + ", max " +
                                  value(numbers.max);
    line += "; above " + values::PlainNumberText(limit) + unit + ": " +
            Percent(numbers.above, numbers.counted) + ", below: " + Percent(numbers.below, numbers.counted);
  }
  const auto leftOut = LeftOutText(numbers.pushes, numbers.unwritten);
  return leftOut.empty() ? line : line + "; left out: " + leftOut;
}

std::string LeftOutText(std::int64_t pushes, std::int64_t unwritten) {
  std::string text;
  if (pushes > 0) text = Count(pushes, "push", "pushes");
  if (unwritten > 0)
    text += (text.empty() ? "" : ", ") + Count(unwritten, "zero at the end", "zeros at the end");
  return text;
}

std::string NumbersHead() {
  return "Axis\tFirst sample\tLast sample\tCounted\tPushes left out\tZeros at the end left "
         "out\tMin\tMean\tMax\t"
         "Limit\tSamples above\tSamples below\n";
}

std::string NumbersRow(const std::string& axis, const ViewNumbers& numbers, double limit, char decimalPoint) {
  std::string row = axis;
  for (const auto count : {static_cast<std::int64_t>(numbers.first), static_cast<std::int64_t>(numbers.last),
                           numbers.counted, numbers.pushes, numbers.unwritten})
    row += "\t" + std::to_string(count);
  const bool isKnown = numbers.counted > 0 && !numbers.crosses;
  for (const auto tenths : {numbers.min, numbers.Mean(), numbers.max})
    row += "\t" + (isKnown ? values::TenthsText(tenths) : std::string());
  row += "\t" + values::PlainNumberText(limit);
  std::ranges::replace(row, '.', decimalPoint);
  return row + "\t" + std::to_string(numbers.above) + "\t" + std::to_string(numbers.below) + "\n";
}

}  // namespace bexlow::graph
