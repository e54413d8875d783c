#include "Target.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace bexlow::fuzz {

void Require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

void RequireWords(const std::system_error& failure) {
  constexpr std::size_t most = 150;
  const std::size_t length = std::strlen(failure.what());
  Require(length > 0 && length <= most, "a failure tells its fault in a line");
}

std::size_t LinesOf(std::string_view text) {
  const auto ends = static_cast<std::size_t>(std::ranges::count(text, '\n'));
  return text.empty() || text.back() == '\n' ? ends : ends + 1;
}

}  // namespace bexlow::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  bexlow::fuzz::Try({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
