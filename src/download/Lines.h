// Lines and comma fields of a text in memory.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace bexlow::download {

/// Reads a text line by line, without copying. A line ends with CR LF or LF; a CR alone is no end, and a last
/// line needs none.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : rest_(text) {}

  /// The next line without its end; nothing behind the last.
  std::optional<std::string_view> Next();

  /// Passes over so many lines; false where there are fewer.
  bool Skip(std::size_t count);

  /// How many lines were read.
  std::size_t LinesRead() const { return linesRead_; }

 private:
  std::string_view rest_;
  std::size_t linesRead_ = 0;
};

/// What stands behind a label; nothing in a line that does not begin with it.
std::optional<std::string_view> Behind(std::string_view label, std::string_view line);
/// What stands before the first comma; nothing without a comma.
std::optional<std::string_view> BeforeFirstComma(std::string_view line);
/// What stands behind the first comma; nothing without a comma.
std::optional<std::string_view> BehindFirstComma(std::string_view line);

}  // namespace bexlow::download
