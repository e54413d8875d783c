// Samples for a long time without a pace and tells whether the program falls behind, grows or freezes.
//
// bench_soak LOGGER [SECONDS]: the stand-in logger, and 600 unless given
#include <QApplication>

#include <algorithm>
#include <cstdlib>

#include "Figure.h"
#include "LiveRig.h"

namespace {

constexpr double RoundSeconds = 5;

}  // namespace

int main(int argc, char** argv) {
  using namespace bexlow::bench;
  if (argc < 2) return EXIT_FAILURE;
  const bexlow::rig::Scratch scratch;
  const QApplication application(argc, argv);
  const double wanted = argc > 2 ? std::atof(argv[2]) : 600;
  LiveRig rig(argv[1], scratch.Path(), LiveScreens[0], false, false);
  rig.Toggle();
  const auto first = rig.Watch(RoundSeconds);
  const double start = ResidentMiB();
  auto slowest = first;
  double gap = first.longestGapMs;
  std::int64_t samples = first.samples;
  for (double passed = RoundSeconds; passed < wanted; passed += RoundSeconds) {
    const auto round = rig.Watch(RoundSeconds);
    samples += round.samples;
    gap = std::max(gap, round.longestGapMs);
    if (round.samplesASecond < slowest.samplesASecond) slowest = round;
  }
  const double end = ResidentMiB();
  const std::string name = "Soak of " + Fixed(wanted, 0) + " s, ";
  const Limit growth = 2;
  PrintFigure(name + "resident memory at the start", start, 44, " MiB", "Angles, connected and sampling");
  PrintFigure(name + "growth of memory", end - start, growth, " MiB", Fixed(end, 2) + " MiB at the end");
  PrintFigure(
      name + "samples a second, slowest 5 s", slowest.samplesASecond, NoLimit, "",
      Fixed(first.samplesASecond, 0) + " in the first, " + std::to_string(samples) + " samples in all");
  PrintFigure(name + "longest time without an event served", gap, 100, " ms",
              QApplication::platformName().toStdString());
  return growth.Kept(end - start) ? EXIT_SUCCESS : EXIT_FAILURE;
}
