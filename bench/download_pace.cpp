// How close a download comes to a bare loop that asks for pages on the same line: the real screen on the real
// clock against the stand-in logger, timed twice: by the program's own progress, and by the stand-in's log of
// what passed.
//
// bench_download_pace LOGGER
#include <QAction>
#include <QApplication>
#include <QProgressBar>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sstream>

#include "BareLine.h"
#include "Figure.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Records.h"
#include "shared/Screens.h"

namespace {

using namespace bexlow;
namespace fs = std::filesystem;

constexpr int Pages = 60;
constexpr int LimitMs = 60'000;

std::vector<double> Steps(const std::vector<double>& times) {
  std::vector<double> steps;
  for (std::size_t i = 1; i < times.size(); ++i) steps.push_back(times[i] - times[i - 1]);
  return steps;
}

/// Moments in ms at which the stand-in had sent a whole page.
std::vector<double> PagesInLog(const fs::path& log) {
  std::vector<double> times;
  std::istringstream lines(platform::ReadWhole(log));
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with("> 264 bytes")) times.push_back(std::stod(line) / 1000);
  }
  return times;
}

/// Moments in ms at which the screen went on to a next page; empty if the download did not end.
std::vector<double> Download(const fs::path& folder) {
  rig::AnsweredMachine machine(folder, folder / "run.qbx");
  rig::Program program;
  auto& screen = program.Show(download::MakeDownloadErase([] {}));
  bool completed = false;
  machine.onBox = [&](const std::string& text, platform::Buttons buttons) {
    completed = completed || text == "Download completed!";
    if (buttons != platform::Buttons::Ok) QTimer::singleShot(0, qApp, &QApplication::quit);
  };
  std::vector<double> times;
  QObject::connect(screen.findChild<QProgressBar*>("PBar"), &QProgressBar::valueChanged, &screen,
                   [&](int value) {
                     const std::chrono::duration<double, std::milli> now =
                         std::chrono::steady_clock::now().time_since_epoch();
                     if (value == shared::Shared.DownloadPageNumber && value > 0)
                       times.push_back(now.count());
                   });
  rig::Program::Run(screen.findChild<QAction*>("mnuDownload"), LimitMs);
  return completed ? times : std::vector<double>{};
}

bool Measure(const fs::path& folder, const char* logger) {
  const double bareMs = bench::BarePageMs(bench::BareLine(logger, folder), Pages);
  rig::StandIn standIn(
      logger, folder,
      {"--pages", QString::number(Pages), "--log", QString::fromStdString((folder / "log").string())});
  const auto seen = Download(folder);
  standIn.End();
  const auto logged = PagesInLog(folder / "log");
  if (seen.size() < Pages || logged.size() < Pages) return false;
  struct Row {
    const char* clock;
    double medianMs;
  };
  for (const auto& [clock, medianMs] : {Row{"the program's progress", bench::Median(Steps(seen))},
                                        Row{"the stand-in's log", bench::Median(Steps(logged))}})
    bench::PrintFigure(std::string("Download, median time a page by ") + clock + ", over a bare page",
                       medianMs / bareMs, 1.008, "",
                       bench::Fixed(medianMs, 2) + " ms over " + bench::Fixed(bareMs, 2) + " ms, " +
                           std::to_string(Pages) + " pages");
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  if (Measure(scratch.Path(), argv[1])) return 0;
  std::fprintf(stderr, "bench_download_pace: the download did not come to its end\n");
  return 1;
}
