#include "review/ButtonPushes.h"

#include <algorithm>
#include <utility>

#include "graph/Lines.h"

namespace bexlow::review {

namespace {

constexpr std::size_t UncheckedLines = 9;
constexpr std::string_view RequiredLines[] = {"Bin/Linear Mode = 1", "Linear Channel = 3",
                                              "Page,X Data-->,Y Data-->"};

}  // namespace

ReviewCheck CheckReviewFile(std::string_view text) {
  if (text.empty()) return ReviewCheck::Empty;
  graph::LineReader lines(text);
  if (!lines.Skip(UncheckedLines)) return ReviewCheck::TooShort;
  bool supported = true;
  for (const std::string_view required : RequiredLines) {
    const auto line = lines.Next();
    if (!line) return ReviewCheck::TooShort;
    supported = supported && *line == required;
  }
  return supported ? ReviewCheck::Ok : ReviewCheck::NotSupported;
}

bool HoldsPushes(std::string_view text) {
  return CheckReviewFile(text) == ReviewCheck::Ok && text.find(",BP,") != std::string_view::npos;
}

bool ReadReview(std::string_view text, ReviewSeries& review) {
  graph::DoubleSeries series;
  const auto keep = [&] {
    const auto count = series.pushes.size();
    if (count == 0) series.pushes.push_back(0);
    review = {std::move(series.x), std::move(series.y), std::move(series.pushes), count};
  };
  try {
    const bool whole = graph::ReadDouble(text, series);
    keep();
    return whole;
  } catch (...) {
    keep();
    throw;
  }
}

std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point) {
  const auto found = std::ranges::lower_bound(pushes, point);
  if (found == pushes.end() || *found != point) return std::nullopt;
  return static_cast<std::size_t>(found - pushes.begin());
}

std::optional<std::size_t> StepBack(std::size_t number) {
  return number == 0 ? std::nullopt : std::optional(number - 1);
}

std::optional<std::size_t> StepForward(std::size_t number, std::size_t count) {
  return number + 1 >= count ? std::nullopt : std::optional(number + 1);
}

}  // namespace bexlow::review
