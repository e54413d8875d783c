#include "graph/Report.h"

#include <cmath>
#include <cstdlib>

#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::graph {

namespace {

constexpr std::int64_t HalfCircle = 1800;  // tenths

std::string Count(std::int64_t count, const std::string& one, const std::string& more) {
  return values::CountText(count) + " " + (count == 1 ? one : more);
}

constexpr std::size_t PushesInRow = 2, MostPushes = 15 * PushesInRow;
const std::string TableStart = "<table width='100%' cellpadding='2' cellspacing='0'><tr>";
using Cells = std::vector<std::string>;

/// @param tag  th or td
std::string Row(const std::string& tag, const Cells& cells) {
  std::string row;
  for (const auto& cell : cells) {
    row.append("<").append(tag).append(" align='left' style='white-space: nowrap'>");
    row.append(cell).append("</").append(tag).append(">");
  }
  return row;
}

/// What is known of a push; the names of that for nullptr.
Cells PushCells(const View& view, const double* push) {
  Cells cells{push ? std::to_string(push - view.run.pushes.data() + 1) : "Push",
              push ? std::to_string(static_cast<std::size_t>(*push)) : "Sample"};
  if (view.secondsAt) cells.push_back(push ? view.lengthText(view.secondsAt(*push)) : "Time");
  if (view.clockText) cells.push_back(push ? view.clockText(view.secondsAt(*push)) : "Clock time");
  return cells;
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
  std::string row = axis + " (" + std::string(numbers.unit.empty() ? "bits" : numbers.unit) + ")";
  for (const auto count : {static_cast<std::int64_t>(numbers.first), static_cast<std::int64_t>(numbers.last),
                           numbers.counted, numbers.pushes, numbers.unwritten})
    row += "\t" + std::to_string(count);
  const std::string unknown = numbers.crosses ? "crosses ±180°" : "";
  for (const auto tenths : {numbers.min, numbers.Mean(), numbers.max})
    row += "\t" + (numbers.counted == 0 || numbers.crosses ? unknown : values::TenthsText(tenths));
  row += "\t" + values::PlainNumberText(limit);
  std::ranges::replace(row, '.', decimalPoint);
  return row + "\t" + std::to_string(numbers.above) + "\t" + std::to_string(numbers.below) + "\n";
}

std::span<const double> View::Pushes() const {
  return {std::ranges::lower_bound(run.pushes, static_cast<double>(first)),
          std::ranges::upper_bound(run.pushes, static_cast<double>(last))};
}

std::string SamplesCsv(const View& view) {
  const auto& run = view.run;
  const bool canHoldPushes = !run.XLinear.empty() && !run.YLinear.empty();
  std::string csv = view.secondsAt ? "Sample,Time(seconds)" : "Sample";
  for (std::size_t i = 0; i < run.axes.size(); ++i) {
    if (!run.tenths[i].empty())
      csv.append(",").append(run.axes[i].name).append(run.axes[i].unit.empty() ? "" : " angle");
  }
  csv += canHoldPushes ? ",Push\r\n" : "\r\n";
  for (auto i = view.first, end = view.End(); i < end; ++i) {
    const bool isPush = run.IsPush(i);
    csv += std::to_string(i);
    if (view.secondsAt)
      csv += "," + values::NumberText(values::RoundToDecimals(view.secondsAt(static_cast<double>(i)), 3));
    for (const auto& axis : run.tenths)
      if (!axis.empty()) csv += isPush ? "," : "," + values::NumberText(axis[i] / 10.0);
    if (canHoldPushes) csv += isPush ? ",BP" : ",";
    csv += "\r\n";
  }
  return csv;
}

std::string PushTable(const View& view, char decimalPoint) {
  const auto& run = view.run;
  std::string table;
  const auto add = [&](const Cells& cells, const std::string& x, const std::string& y) {
    std::string row;
    for (const auto& cell : cells) row += cell + "\t";
    std::ranges::replace(row += x + "\t" + y + "\n", '.', decimalPoint);
    table += row;
  };
  add(PushCells(view, nullptr), "X before", "Y before");
  for (const auto& push : view.Pushes()) {
    auto before = static_cast<std::size_t>(push);
    while (before > 0 && run.IsPush(before)) --before;
    const auto place = static_cast<double>(before);
    const bool isKnown =
        !run.IsPush(before) && files::PeriodsAt(run, push) - files::PeriodsAt(run, place) == push - place;
    const auto angle = [&](std::size_t axis) {
      return isKnown ? values::TenthsText(run.tenths[axis][before]) : "";
    };
    add(PushCells(view, &push), angle(0), angle(1));
  }
  return table;
}

// The bytes of a page are steps of a 128th of the full scale: 5.625 degrees hold four of X or eight of Y, and
// their edges lie between two of them. Other edges would give some steps more bytes than their neighbours.
Histogram HistogramInView(const View& view, std::size_t axis) {
  const auto numbers = NumbersInView(view.run, axis, view.first, view.last, 0);
  const double top = view.run.axes[axis].greatest;
  const bool ofBytes = view.run.hundredths.empty();
  const double step = ofBytes ? 5.625 : 5, below = ofBytes ? top / 256 : 0, unit = ofBytes ? top / 128 : 0.1;
  const auto stepOf = [&](auto tenths) {
    const double value = static_cast<double>(tenths) / 10;
    return static_cast<std::int64_t>(std::floor(((value == top ? top - unit : value) + below) / step));
  };
  const auto first = stepOf(numbers.min);
  Histogram histogram{step, (static_cast<double>(first) + 0.5) * step - below, {}};
  histogram.shares.resize(static_cast<std::size_t>(stepOf(numbers.max) - first) + 1);
  for (auto i = view.first, end = view.End(); i < end; ++i)
    if (!view.run.IsPush(i))
      ++histogram.shares[static_cast<std::size_t>(stepOf(view.run.tenths[axis][i]) - first)];
  for (auto& share : histogram.shares) share *= 100 / std::max(1.0, static_cast<double>(numbers.counted));
  return histogram;
}

std::string HeadText(const std::string& fileName, const files::RunFacts& facts, const std::string& words,
                     const View* view) {
  auto text = "<h2>" + fileName + "</h2>" + TableStart;
  const auto tell = [&](const std::string& name, const std::string& value) {
    if (!value.empty()) text += "<tr><td width='12%'><b>" + name + "</b></td><td>" + value + "</td></tr>";
  };
  tell("Logger", facts.serialNumber);
  tell("Launched", facts.launch);
  if (facts.frequency) tell("Rate", values::PlainNumberText(*facts.frequency) + " samples a second");
  tell("Run", words);
  if (view == nullptr) return text + "</table>";
  const auto last = view->LastWritten();
  auto range = "samples " + std::to_string(view->first) + " to " + std::to_string(last);
  const auto timeOf = [&](std::size_t sample) {
    return view->lengthText(view->secondsAt(static_cast<double>(sample)));
  };
  if (view->secondsAt)
    range += ", " + timeOf(view->first) + " to " + timeOf(last) + " since " +
             (view->rate > 0 ? "the launch" : "sampling was started");
  tell("In view", range);
  return text + "</table>";
}

std::string FiguresText(const View& view, std::span<const double> limits) {
  auto text = TableStart + Row("th", {"In view", "Min", "Mean", "Max", "Standard deviation", "Limit",
                                      "Above the limit", "Below the limit"});
  std::string notes;
  ViewNumbers numbers;
  for (std::size_t axis = 0; axis < view.run.axes.size(); ++axis) {
    if (view.run.tenths[axis].empty()) continue;
    const std::string name(view.run.axes[axis].name), unit(view.run.axes[axis].unit);
    numbers = NumbersInView(view.run, axis, view.first, view.last, limits[axis]);
    const auto value = [&](std::int64_t tenths) {
      return numbers.counted == 0 || numbers.crosses ? "-" : values::TenthsText(tenths) + unit;
    };
    const auto beyond = [&](std::int64_t count) {
      if (numbers.counted == 0) return std::string("-");
      const auto time = view.rate > 0 ? ", " + view.lengthText(static_cast<double>(count) / view.rate) : "";
      return Percent(count, numbers.counted) + time;
    };
    text += "<tr>" + Row("td", {name, value(numbers.min), value(numbers.Mean()), value(numbers.max),
                                value(numbers.Deviation()), values::PlainNumberText(limits[axis]) + unit,
                                beyond(numbers.above), beyond(numbers.below)});
    if (numbers.crosses)
      notes += name + " crosses ±180°, so it has no min, mean, max and standard deviation. ";
  }
  notes += Count(numbers.counted, "sample", "samples") + " counted";
  const auto leftOut = LeftOutText(numbers.pushes, numbers.unwritten);
  if (!leftOut.empty()) notes += ", left out: " + leftOut;
  if (numbers.pushes > 0) notes += "; a push has no angles";
  if (numbers.unwritten > 0) notes += "; where the zeros stand the logger had not filled its last page";
  return text + "</table><p>" + notes + ". Figures, shares and times are rounded to one decimal.</p>";
}

std::string PushesText(const View& view) {
  const auto pushes = view.Pushes();
  if (pushes.empty()) return {};
  auto text = TableStart;
  for (std::size_t i = 0; i < PushesInRow; ++i) text += Row("th", PushCells(view, nullptr));
  const auto told = std::min(pushes.size(), MostPushes);
  for (std::size_t i = 0; i < told; ++i)
    text += (i % PushesInRow == 0 ? "<tr>" : "") + Row("td", PushCells(view, &pushes[i]));
  const auto more = static_cast<std::int64_t>(pushes.size() - told);
  return text + "</table>" + (more == 0 ? "" : "<p>and " + values::CountText(more) + " more</p>");
}

}  // namespace bexlow::graph
