#include "files/ButtonPushes.h"

#include <algorithm>

#include "files/DataFile.h"
#include "files/Lines.h"

namespace bexlow::files {

namespace {

constexpr std::size_t UncheckedLines = 9;

}  // namespace

ReviewCheck CheckReviewFile(std::string_view text) {
  if (text.empty()) return ReviewCheck::Empty;
  LineReader lines(text);
  if (!lines.Skip(UncheckedLines)) return ReviewCheck::TooShort;
  std::optional<std::string_view> mode, channel, heads;
  for (auto* line : {&mode, &channel, &heads}) {
    *line = lines.Next();
    if (!*line) return ReviewCheck::TooShort;
  }
  const bool supported =
      After(ModeLabel, *mode) == "1" && After(ChannelLabel, *channel) == "3" && heads == ColumnHeads(1, 3);
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

}  // namespace bexlow::files
