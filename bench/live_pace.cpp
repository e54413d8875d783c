// How fast the live chains run against a bare loop on the same line, and whether the window keeps up
// meanwhile.
//
// bench_live_pace LOGGER [SECONDS]: the stand-in logger, and seconds a round, 2 unless given
#include <QApplication>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <vector>

#include "BareLine.h"
#include "Figure.h"
#include "LiveRig.h"

namespace {

using namespace bexlow::bench;

constexpr int Rounds = 5;  // of each case; rates are medians, since the machine has other work now and then

/// The worst of all rounds.
struct Window {
  double fewestRepaints = 1e9, longestClickMs = 0, medianClickMs = 0;
};

std::string Percent(double share) {
  return Fixed(share * 100, 0) + " %";
}

// Saving without a pace is only told: it opens, writes and closes a file for each sample.
struct Rates {
  double samplesASecond = 0, cpuShare = 0;
};

/// @param bare  exchanges a second of a bare loop in this run
void PrintPace(const LiveScreen& screen, bool paced, bool saving, const Rates& rates, double bare) {
  const std::string name = std::string(screen.name) + (saving ? ", saving" : "");
  const std::string cpu = "CPU share " + Percent(rates.cpuShare);
  if (!paced)
    return PrintFigure(name + ", line without a pace, samples a second", rates.samplesASecond,
                       saving ? Limit(NoLimit) : AtLeast(5000), "", cpu);
  PrintFigure(name + ", samples a second over the bare loop's", rates.samplesASecond / bare, AtLeast(0.985),
              "", Fixed(rates.samplesASecond, 1) + " over " + Fixed(bare, 1) + ", " + cpu);
}

void Add(Window& window, const Figures& figures) {
  window.fewestRepaints = std::min(window.fewestRepaints, figures.repaintsASecond);
  window.longestClickMs = std::max(window.longestClickMs, figures.clickMsMost);
  window.medianClickMs = std::max(window.medianClickMs, figures.clickMsMedian);
}

Rates Watch(LiveRig& rig, double seconds, Window& window) {
  std::vector<double> samples, cpu;
  for (int round = 0; round < Rounds; ++round) {
    const auto figures = rig.Watch(seconds);
    samples.push_back(figures.samplesASecond);
    cpu.push_back(figures.cpuShare);
    Add(window, figures);
  }
  return {Median(samples), Median(cpu)};
}

double BareRate(const char* logger, const bexlow::rig::Scratch& scratch, const LiveScreen& screen,
                double seconds) {
  const BareLine line(logger, scratch.Path());
  std::vector<double> rates;
  for (int round = 0; round < Rounds; ++round)
    rates.push_back(
        BareExchanges(line, screen.request, static_cast<std::size_t>(screen.bytesASample - 1), seconds));
  const double rate = Median(rates);
  PrintFigure(std::string("A bare loop of the same exchange as ") + screen.name + ", over the line's limit",
              rate / LineLimit(screen), NoLimit, "", "what the machine itself leaves of the line");
  return rate;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return EXIT_FAILURE;
  const bexlow::rig::Scratch scratch;
  const QApplication application(argc, argv);
  const double seconds = argc > 2 ? std::atof(argv[2]) : 2;
  Window window;
  std::map<char, double> bare;
  for (const auto& screen : LiveScreens) bare[screen.request] = BareRate(argv[1], scratch, screen, seconds);
  for (const bool paced : {true, false}) {
    for (const auto& screen : LiveScreens) {
      for (const bool saving : {false, true}) {
        LiveRig rig(argv[1], scratch.Path(), screen, paced, saving);
        rig.Toggle();
        PrintPace(screen, paced, saving, Watch(rig, seconds, window), bare[screen.request]);
      }
    }
  }
  const std::string where = QApplication::platformName().toStdString();
  PrintFigure("Live, repaints a second, fewest of these eight", window.fewestRepaints, AtLeast(25), "",
              where);
  PrintFigure("Live, a click's answer, longest of these eight", window.longestClickMs, 100, " ms",
              "largest median " + Fixed(window.medianClickMs, 1) + " ms, " + where);
}
