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
  const long start = ResidentKiB();
  auto slowest = first;
  double gap = first.longestGapMs;
  std::int64_t samples = first.samples;
  for (double passed = RoundSeconds; passed < wanted; passed += RoundSeconds) {
    const auto round = rig.Watch(RoundSeconds);
    samples += round.samples;
    gap = std::max(gap, round.longestGapMs);
    if (round.samplesASecond < slowest.samplesASecond) slowest = round;
  }
  const long end = ResidentKiB();
  const std::string name = "Soak of " + Fixed(wanted, 0) + " s, ";
  const Limit growth = 2048;
  PrintFigure(name + "growth of memory", static_cast<double>(end - start), growth, " KiB",
              std::to_string(start) + " KiB at the start, " + std::to_string(end) + " KiB at the end");
  PrintFigure(
      name + "samples a second, slowest 5 s", slowest.samplesASecond, NoLimit, "",
      Fixed(first.samplesASecond, 0) + " in the first, " + std::to_string(samples) + " samples in all");
  PrintFigure(name + "longest time without an event served", gap, 100, " ms",
              QApplication::platformName().toStdString());
  return growth.Kept(static_cast<double>(end - start)) ? EXIT_SUCCESS : EXIT_FAILURE;
}
