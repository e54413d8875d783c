// What the fuzz targets share: a target is one function that takes bytes from outside and requires promises.
#pragma once

#include <cstddef>
#include <string_view>
#include <system_error>

namespace bexlow::fuzz {

/// Hands the bytes to a reader and requires what it promises beside not to crash. Each target has its own.
void Try(std::string_view bytes);

/// Ends the run as a finding unless a promise holds.
void Require(bool holds, const char* promise);

/// Requires of a failure what a message box needs: words, and not without end.
void RequireWords(const std::system_error& failure);

/// Whether a reader takes its input; the one other way out is a failure in words.
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

/// Lines of a text, the last of which needs no end.
std::size_t LinesOf(std::string_view text);

}  // namespace bexlow::fuzz
