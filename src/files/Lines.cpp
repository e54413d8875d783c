#include "files/Lines.h"

#include <algorithm>

namespace bexlow::files {

std::optional<std::string_view> LineReader::Next() {
  if (rest_.empty()) return std::nullopt;
  const std::size_t end = std::min(rest_.find('\n'), rest_.size());
  std::string_view line = rest_.substr(0, end);
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  ++linesRead_;
  return line;
}

bool LineReader::Skip(std::size_t count) {
  while (count > 0 && Next()) --count;
  return count == 0;
}

std::optional<std::string_view> After(std::string_view label, std::string_view line) {
  if (!line.starts_with(label)) return std::nullopt;
  return line.substr(label.size());
}

std::optional<std::string_view> BeforeFirstComma(std::string_view line) {
  const std::size_t comma = line.find(',');
  return comma == std::string_view::npos ? std::nullopt : std::optional(line.substr(0, comma));
}

std::optional<std::string_view> AfterFirstComma(std::string_view line) {
  const std::size_t comma = line.find(',');
  return comma == std::string_view::npos ? std::nullopt : std::optional(line.substr(comma + 1));
}

}  // namespace bexlow::files
