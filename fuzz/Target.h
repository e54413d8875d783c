// What the fuzz targets share: a target is one function that takes bytes and checks promises of a reader.
#pragma once

#include <cstddef>
#include <string_view>
#include <system_error>

namespace bexlow::fuzz {

/// Hands the bytes to a reader and checks what it promises besides not crashing. Each target has its own.
void Try(std::string_view bytes);

/// Ends the run as a finding unless a promise holds.
void Require(bool holds, const char* promise);

/// Requires of a failure what a message box needs: words, and not too many.
void RequireWords(const std::system_error& failure);

/// Whether a reader takes its input; if not, it must throw a failure with words.
template <class Reader>
bool Takes(Reader reader) {
  try {
    reader();
    return true;
  } catch (const std::system_error& failure) {
    RequireWords(failure);
    return false;
  }
}

/// The number of lines in a text; the last needs no end.
std::size_t LinesOf(std::string_view text);

}  // namespace bexlow::fuzz
