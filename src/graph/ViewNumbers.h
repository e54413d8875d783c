// The figures of the samples in view: min, mean and max, and how many lie beyond a limit.
#pragma once

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

}  // namespace bexlow::graph
