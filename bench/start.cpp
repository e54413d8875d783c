// From start to the first painted window, as whole processes in turn: the program over an empty main
// window, and over one without any text; and the program with a folder of 1,000 runs.
//
// bench_start PROGRAM EMPTY BARE
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "Figure.h"
#include "FullFile.h"
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
  auto many = (scratch.Path() / "bexlow").string();
  std::filesystem::copy_file(argv[1], many);
  MakeRuns(scratch.Path() / "Data Files", 1000);
  char* const programs[] = {argv[1], argv[2], argv[3], many.data()};
  std::array<std::vector<double>, 4> times;
  for (int round = -Warmups; round < Rounds; ++round) {
    for (std::size_t i = 0; i < times.size(); ++i) {
      const double ms = LifeMs(programs[i]);
      if (ms < 0) {
        std::fprintf(stderr, "bench_start: %s does not start\n", programs[i]);
        return 1;
      }
      if (round >= 0) times[i].push_back(ms);
    }
  }
  const char* platform = getenv("QT_QPA_PLATFORM");
  const auto print = [&](const std::string& name, double ours, double bare, Limit limit) {
    PrintFigure(
        "Start to first painted window" + name, ours / bare, limit, "",
        Fixed(ours, 1) + " ms over " + Fixed(bare, 1) + " ms, " + (platform != nullptr ? platform : "xcb"));
  };
  const double ours = Median(times[0]), empty = Median(times[1]);
  print(", over an empty Qt main window with a menu", ours, empty, 1.3);
  print(" of 1,000 runs, over an empty one", Median(times[3]), empty, 1.3);
  print(", over one without menu and so without fonts", ours, Median(times[2]), NoLimit);
}
