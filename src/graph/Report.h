// What is in view of a run: its figures, and all of it as a report and as tables.
#pragma once

#include <functional>

#include "files/Series.h"

namespace bexlow::graph {

/// Counts and tenths, so that all of it is exact. Pushes and the unwritten end of the last page
/// are no samples; they are left out and counted.
struct ViewNumbers {
  std::size_t first = 0, last = 0;  ///< indices of what is in view, left out or not
  std::int64_t counted = 0, pushes = 0, unwritten = 0;
  std::int64_t min = 0, max = 0, sum = 0;
  double squares = 0;
  std::int64_t above = 0, below = 0;  ///< samples beyond the limit; those on it are neither
  bool crosses = false;               ///< two neighbours lie more than 180 degrees apart, across +-180
  std::string_view unit = "°";

  std::int64_t Mean() const;       ///< rounded, an exact half to the even tenth
  std::int64_t Deviation() const;  ///< likewise: the standard deviation of the samples counted
};

/// @param axis  of the run, from 0
/// @param first, last  indices, ends included
/// @param limit  in the unit of the axis
ViewNumbers NumbersInView(const files::Run& run, std::size_t axis, std::size_t first, std::size_t last,
                          double limit);

/// "In view: min -62.0°, mean 1.3°, max 71.0°; above 45°: 12.3 %, below: 87.2 %; left out: 2 pushes".
std::string NumbersLine(const ViewNumbers& numbers, double limit);

/// To one decimal; a share that would read as none or as all, and is not, says so: "less than 0.1 %".
std::string Percent(std::int64_t part, std::int64_t whole);

/// "5 pushes, 72 zeros at the end"; empty where nothing is left out.
std::string LeftOutText(std::int64_t pushes, std::int64_t unwritten);

/// The figures as a row for a spreadsheet, separated by tabs; and the row of their names.
std::string NumbersRow(const std::string& axis, const ViewNumbers& numbers, double limit, char decimalPoint);
std::string NumbersHead();

/// A part of a run. What is not known about its times is empty.
struct View {
  const files::Run& run;
  std::size_t first = 0, last = 0;                          ///< indices, ends included
  double rate = 0;                                          ///< samples a second; 0 where it is not known
  std::function<double(double sample)> secondsAt{};         ///< since the launch
  std::function<std::string(double seconds)> lengthText{};  ///< "1:02:45"
  std::function<std::string(double seconds)> clockText{};  ///< date and time of day, so long after the launch

  std::span<const double> Pushes() const;
  /// One past the last sample in view that was written.
  std::size_t End() const { return std::min(last + 1, run.Size() - run.UnwrittenEnd()); }
  /// The last sample in view, of those that were written if there is one.
  std::size_t LastWritten() const { return End() > first ? End() - 1 : last; }
};

/// A line for each sample, with a head and CR LF: number, seconds to the millisecond, each axis that was
/// stored, and BP at a push, which has no angles. The unwritten end is left out.
std::string SamplesCsv(const View& view);

/// A line for each push, with a head, separated by tabs: number in the run, sample, time, and the angles of
/// the last sample before it, which are empty where a page is missing between them.
std::string PushTable(const View& view, char decimalPoint);

/// How the samples of an axis are spread over steps, in its unit; the end of the scale belongs to the last
/// step.
struct Histogram {
  double step, first;          ///< width of a step, middle of the lowest one that holds any
  std::vector<double> shares;  ///< of each step from there to the highest, in percent
};
Histogram HistogramInView(const View& view, std::size_t axis);

// Parts of a report, in rich text.

/// What the file's header says, and what is drawn of the run. The texts must be safe in HTML.
/// @param view  nullptr for bins
std::string HeadText(const std::string& fileName, const files::RunFacts& facts, const std::string& words,
                     const View* view);
/// Figures of each axis that was stored, and what they leave out.
/// @param limits  of each axis, in its unit
std::string FiguresText(const View& view, std::span<const double> limits);
/// The pushes in view, as many as have room on a sheet; empty where there is none.
std::string PushesText(const View& view);

}  // namespace bexlow::graph
