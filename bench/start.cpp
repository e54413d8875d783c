// From start to the first painted window, as whole processes in turn: the program over an empty main
// window, and over one without any text.
//
// bench_start PROGRAM EMPTY BARE
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "Figure.h"
#include "rig/Rig.h"

namespace {

constexpr int Warmups = 2;
constexpr int Rounds = 21;
constexpr unsigned LimitSeconds = 120;  // a program that paints nothing must not hang the bench

/// Milliseconds of life, negative if it failed.
double LifeMs(char* program) {
  const auto start = std::chrono::steady_clock::now();
  char* const arguments[] = {program, nullptr};
  pid_t child = 0;
  if (::posix_spawn(&child, program, nullptr, nullptr, arguments, environ) != 0) return -1;
  int status = -1;
  ::waitpid(child, &status, 0);
  const std::chrono::duration<double, std::milli> life = std::chrono::steady_clock::now() - start;
  return status == 0 ? life.count() : -1;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace bexlow::bench;
  if (argc != 4) return 2;
  const bexlow::rig::Scratch scratch;
  ::alarm(LimitSeconds);
  std::array<std::vector<double>, 3> times;
  for (int round = -Warmups; round < Rounds; ++round) {
    for (std::size_t i = 0; i < times.size(); ++i) {
      const double ms = LifeMs(argv[i + 1]);
      if (ms < 0) {
        std::fprintf(stderr, "bench_start: %s does not start\n", argv[i + 1]);
        return 1;
      }
      if (round >= 0) times[i].push_back(ms);
    }
  }
  const double ours = Median(times[0]);
  const char* platform = getenv("QT_QPA_PLATFORM");
  const auto print = [&](const std::string& name, double bare, Limit limit) {
    PrintFigure(
        "Start to first painted window, over " + name, ours / bare, limit, "",
        Fixed(ours, 1) + " ms over " + Fixed(bare, 1) + " ms, " + (platform != nullptr ? platform : "xcb"));
  };
  print("an empty Qt main window with a menu", Median(times[1]), 1.3);
  print("one without menu and so without fonts", Median(times[2]), NoLimit);
}
