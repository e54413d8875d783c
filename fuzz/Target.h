// What the fuzz targets share: a target is one function that takes bytes and checks promises of a reader.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <system_error>

namespace bexlow::fuzz {

/// Hands the bytes to a reader and checks what it promises besides not crashing. Each target has its own.
void Try(std::string_view bytes);

/// Ends the run as a finding unless a promise holds.
inline void Require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

/// Whether a reader takes its input; if not, it must throw a failure whose words fit a message box.
template <class Reader>
bool Takes(Reader reader) {
  try {
    reader();
    return true;
  } catch (const std::system_error& failure) {
    const std::size_t length = std::strlen(failure.what());
    Require(length > 0 && length <= 150, "a failure tells its fault in a line");
    return false;
  }
}

}  // namespace bexlow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  bexlow::fuzz::Try({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
