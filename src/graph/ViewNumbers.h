// The figures of the samples in view: least, mean and greatest, and how much lies beyond a limit.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

namespace bexlow::graph {

struct ViewNumbers {
  std::size_t first = 0, last = 0;  ///< places of the samples counted
  double least = 0, mean = 0, greatest = 0;
  double above = 0, below = 0;  ///< shares of the samples, 0 to 1; those on the limit are neither
};

/// Of the samples with indices from `from` to `to`, ends included; nothing if there are none.
std::optional<ViewNumbers> NumbersInView(std::span<const double> samples, double from, double to,
                                         double limit);

/// "In view: least -62°, mean 1.3°, greatest 71°; above 45°: 12.3 %, below: 87.2 %".
std::string NumbersLine(const ViewNumbers& numbers, double limit);

/// The figures as a row for a spreadsheet, separated by tabs; and the row of their names.
std::string NumbersRow(const std::string& axis, const ViewNumbers& numbers, double limit);
std::string NumbersHead();

}  // namespace bexlow::graph
