// From start to the first painted window, as whole processes in turn: the program over an empty main window.
//
// bench_start PROGRAM EMPTY
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "Figure.h"

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
  if (argc != 3) return 2;
  char scratch[] = "/tmp/bexlow-bench-XXXXXX";
  if (mkdtemp(scratch) == nullptr) return 1;
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) setenv(name, scratch, 1);
  ::alarm(LimitSeconds);
  std::vector<double> program, empty, ratios;
  for (int round = -Warmups; round < Rounds; ++round) {
    const double ours = LifeMs(argv[1]), bare = LifeMs(argv[2]);
    if (ours < 0 || bare < 0) {
      std::fprintf(stderr, "bench_start: a program does not start\n");
      return 1;
    }
    if (round < 0) continue;
    program.push_back(ours);
    empty.push_back(bare);
    ratios.push_back(ours / bare);
  }
  std::filesystem::remove_all(scratch);
  const char* platform = getenv("QT_QPA_PLATFORM");
  PrintFigure("Start to first painted window, over an empty Qt main window", Median(ratios), 1.3, "",
              Fixed(Median(program), 1) + " ms over " + Fixed(Median(empty), 1) + " ms, " +
                  (platform != nullptr ? platform : "xcb"));
}
