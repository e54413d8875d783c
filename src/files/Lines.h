// Lines and comma fields of a text in memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace bexlow::files {

/// Reads a text line by line, without copying. A line ends with CR LF or LF; a CR alone is no end, and a last
/// line needs none.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// The next line without its end; nothing after the last.
  std::optional<std::string_view> Next();

  /// Skips `count` lines; false if there are fewer.
  bool Skip(std::size_t count);

  std::size_t LinesRead() const { return linesRead_; }

 private:
  std::string_view rest_;
  std::size_t linesRead_ = 0;
};

/// The text after a label; nothing if the line does not begin with the label.
std::optional<std::string_view> After(std::string_view label, std::string_view line);
/// The text before the first comma; nothing without a comma.
std::optional<std::string_view> BeforeFirstComma(std::string_view line);
/// The text after the first comma; nothing without a comma.
std::optional<std::string_view> AfterFirstComma(std::string_view line);

}  // namespace bexlow::files
