#include <cstddef>
#include <cstdio>
#include <exception>
#include <span>
#include <stdexcept>

#include "Options.h"
#include "Station.h"

int main(int count, char** arguments) {
  using namespace bexlow::simulator;
  try {
    const Options options =
        ParseOptions(std::span<const char* const>(arguments, static_cast<std::size_t>(count)).subspan(1));
    if (options.help) {
      std::fputs(HelpText().c_str(), stdout);
      return 0;
    }
    Station(options).Run();
    return 0;
  } catch (const std::invalid_argument& wrong) {
    std::fprintf(stderr, "bexlow-logger: %s\nTry --help.\n", wrong.what());
    return 2;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bexlow-logger: %s\n", failure.what());
    return 1;
  }
}
