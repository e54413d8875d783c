#include "Target.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

void bexlow::fuzz::Require(bool holds, const char* promise) {
  if (holds) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  bexlow::fuzz::Try({reinterpret_cast<const char*>(bytes), size});
  return 0;
}
