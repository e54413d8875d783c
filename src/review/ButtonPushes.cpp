#include "review/ButtonPushes.h"

#include <algorithm>

#include "download/DataFile.h"
#include "download/Lines.h"

namespace bexlow::review {

namespace {

constexpr std::size_t UncheckedLines = 9;

}  // namespace

ReviewCheck CheckReviewFile(std::string_view text) {
  if (text.empty()) return ReviewCheck::Empty;
  download::LineReader lines(text);
  if (!lines.Skip(UncheckedLines)) return ReviewCheck::TooShort;
  std::optional<std::string_view> mode, channel, heads;
  for (auto* line : {&mode, &channel, &heads}) {
    *line = lines.Next();
    if (!*line) return ReviewCheck::TooShort;
  }
  const bool supported = download::Behind(download::ModeLabel, *mode) == "1" &&
                         download::Behind(download::ChannelLabel, *channel) == "3" &&
                         heads == download::ColumnHeads(1, 3);
  return supported ? ReviewCheck::Ok : ReviewCheck::NotSupported;
}

bool HoldsPushes(std::string_view text) {
  return CheckReviewFile(text) == ReviewCheck::Ok && text.find(",BP,") != std::string_view::npos;
}

std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point) {
  const auto found = std::ranges::lower_bound(pushes, point);
  if (found == pushes.end() || *found != point) return std::nullopt;
  return static_cast<std::size_t>(found - pushes.begin());
}

}  // namespace bexlow::review
