// How fast the live chains run against a bare loop on the same line, and whether the window keeps up
// meanwhile.
//
// bench_live_pace LOGGER [SECONDS]: the stand-in logger, and seconds a round, 2 unless given
#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "BareLine.h"
#include "Figure.h"
#include "LiveRig.h"

namespace {

using namespace bexlow::bench;

constexpr int Rounds = 5;  // of each case; rates are medians, since the machine has other work now and then

/// What all rounds saw.
struct Window {
  std::vector<double> repaints;  ///< a second, of each round
  double longestClickMs = 0, medianClickMs = 0;
};

std::string Percent(double share) { return Fixed(share * 100, 0) + " %"; }

struct Rates {
  double samplesASecond, cpuShare;
  double bare, overBare;  ///< exchanges a second of a bare loop, and the median ratio
};

// Saving without a pace has no limit: it opens, writes and closes a file for each sample.
void PrintPace(const LiveScreen& screen, bool paced, bool saving, const Rates& rates) {
  const Limit limit = paced ? AtLeast(0.975) : saving ? Limit(NoLimit) : AtLeast(0.15);
  PrintFigure(std::string(screen.name) + (saving ? ", saving" : "") + (paced ? "" : ", line without a pace") +
                  ", samples a second over a bare loop's",
              rates.overBare, limit, "",
              Fixed(rates.samplesASecond, 1) + " over " + Fixed(rates.bare, 1) +
                  (paced ? " of the line's " + Fixed(LineLimit(screen), 1) : "") + ", CPU share " +
                  Percent(rates.cpuShare));
}

void Add(Window& window, const Figures& figures) {
  window.repaints.push_back(figures.repaintsASecond);
  window.longestClickMs = std::max(window.longestClickMs, figures.clickMsMost);
  window.medianClickMs = std::max(window.medianClickMs, figures.clickMsMedian);
}

/// Runs a round of a bare loop before each round of the program, so that a busy machine slows both.
Rates Watch(LiveRig& rig, const BareLine& line, const LiveScreen& screen, double seconds, Window& window) {
  std::vector<double> samples, cpu, bare, ratios;
  for (int round = 0; round < Rounds; ++round) {
    bare.push_back(
        BareExchanges(line, screen.request, static_cast<std::size_t>(screen.bytesASample - 1), seconds));
    rig.Toggle();
    const auto figures = rig.Watch(seconds);
    rig.Toggle();
    samples.push_back(figures.samplesASecond);
    cpu.push_back(figures.cpuShare);
    ratios.push_back(samples.back() / bare.back());
    Add(window, figures);
  }
  return {Median(samples), Median(cpu), Median(bare), Median(ratios)};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return EXIT_FAILURE;
  const bexlow::rig::Scratch scratch;
  const QApplication application(argc, argv);
  const double seconds = argc > 2 ? std::atof(argv[2]) : 2;
  Window window;
  for (const bool paced : {true, false}) {
    const BareLine line(argv[1], scratch.Path() / "bare", paced);
    for (const auto& screen : LiveScreens) {
      for (const bool saving : {false, true}) {
        LiveRig rig(argv[1], scratch.Path(), screen, paced, saving);
        PrintPace(screen, paced, saving, Watch(rig, line, screen, seconds, window));
      }
    }
  }
  const std::string where = QApplication::platformName().toStdString();
  PrintFigure("Live, repaints a second, median of all rounds", Median(window.repaints), AtLeast(25), "",
              where);
  PrintFigure("Live, a click's answer, longest of these eight", window.longestClickMs, 100, " ms",
              "largest median " + Fixed(window.medianClickMs, 1) + " ms, " + where);
}
