// The button pushes of a two-channel run: checking a file, reading it, and stepping from push to push.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "graph/Series.h"

namespace bexlow::review {

enum class ReviewCheck {
  Empty,
  TooShort,      ///< fewer than 12 lines
  NotSupported,  ///< not a Linear download of both channels
  Ok
};

/// Looks at the header of a file that GraphBP is to open.
ReviewCheck CheckReviewFile(std::string_view text);

/// True for a file that GraphBP takes and that has a push in it.
bool HoldsPushes(std::string_view text);

/// What GraphBP shows. ButtonPushes is empty only before a file has been read.
struct ReviewSeries {
  graph::Samples XLinear, YLinear;
  std::vector<double>
      ButtonPushes;           ///< index in XLinear of each push, in file order; a single 0 without a push
  std::size_t PushCount = 0;  ///< how many of them are pushes
};

/// Reads a file into what the screen shows; false if the file ends within its 12 header lines. If it throws,
/// the series are empty and ButtonPushes holds the pushes found before the fault, or a single 0.
/// @throws std::system_error naming the record and its fault
bool ReadReview(std::string_view text, ReviewSeries& review);

/// The number of the push at a point, from 0.
std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point);

/// The push before one, nothing at the first.
std::optional<std::size_t> StepBack(std::size_t number);
/// The push after one of `count` pushes, nothing at the last.
std::optional<std::size_t> StepForward(std::size_t number, std::size_t count);

}  // namespace bexlow::review
