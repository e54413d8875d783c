// The button pushes of a two-channel run: checking a file, and finding a push.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace bexlow::files {

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

/// The number of the push at a point, from 0.
std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point);

}  // namespace bexlow::files
