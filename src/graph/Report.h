// What is in view of a run, as a report and as tables.
#pragma once

#include <functional>

#include "files/Series.h"

namespace bexlow::graph {

/// A part of a run. What is not known about its times is empty.
struct View {
  const files::Run& run;
  std::size_t first = 0, last = 0;                          ///< indices, ends included
  double rate = 0;                                          ///< samples a second; 0 where it is not known
  std::function<double(double sample)> secondsAt{};         ///< since the launch
  std::function<std::string(double seconds)> lengthText{};  ///< "1:02:45"
  std::function<std::string(double seconds)> clockText{};  ///< date and time of day, so long after the launch

  std::span<const double> Pushes() const;
};

/// A line for each sample, with a head and CR LF: number, seconds to the millisecond, each axis that was
/// stored, and BP at a push, which has no angles. The unwritten end is left out.
std::string SamplesCsv(const View& view);

/// A line for each push, with a head, separated by tabs: number in the run, sample, time, and the angles of
/// the last sample before it, which are empty where a page is missing between them.
std::string PushTable(const View& view, char decimalPoint);

/// How the samples of an axis are spread over steps of 5, in its unit: step n holds what is from n * 5 on and
/// below (n + 1) * 5; the end of the scale belongs to the last step.
inline constexpr int HistogramStep = 5;
struct Histogram {
  std::int64_t first;          ///< number of the lowest step that holds any
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
