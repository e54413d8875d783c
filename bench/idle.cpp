// What the program costs while a screen is open and nobody does anything: time and memory.
#include <QApplication>
#include <QTimer>

#include <filesystem>
#include <sys/resource.h>

#include "Figure.h"
#include "FullFile.h"
#include "LiveRig.h"
#include "graph/DataScreen.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Screens.h"

namespace {

using namespace bexlow;

constexpr int SettleMs = 1000;
constexpr int WatchedMs = 5000;
constexpr double LimitMs = 5;  // a thousandth of the time watched

double CpuMs() {
  rusage used{};
  getrusage(RUSAGE_SELF, &used);
  const auto milliseconds = [](const timeval& time) {
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
  };
  return milliseconds(used.ru_utime) + milliseconds(used.ru_stime);
}

void Run(int milliseconds) {
  QTimer::singleShot(milliseconds, qApp, &QApplication::quit);
  QApplication::exec();
}

void Watch(const std::string& screen) {
  Run(SettleMs);
  const double before = CpuMs();
  Run(WatchedMs);
  bench::PrintFigure("Idle with " + screen + " open, CPU in 5 s", CpuMs() - before, LimitMs, " ms",
                     QApplication::platformName().toStdString());
}

void WatchScreens(const std::filesystem::path& folder) {
  rig::AnsweredMachine machine(folder);
  rig::Program program;
  program.Show(shell::MakeMain(program.outer));
  auto* graph = graph::MakeGraph();
  program.Show(graph);
  platform::WriteWhole(folder / "full.qbx", bench::FullDataFile());
  graph->Open((folder / "full.qbx").string());
  Watch("Graph");
  // Of it 13 MiB are 270,204 samples twice on each axis: eight bytes here, sixteen in the plot library.
  bench::PrintFigure("Resident memory with a full run in Graph", bench::ResidentMiB(), 68, " MiB",
                     QApplication::platformName().toStdString());
  graph->Unload();
  program.Show(download::MakeDownloadErase([] {}));
  Watch("Download");
}

}  // namespace

int main(int argc, char** argv) {
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  WatchScreens(scratch.Path());
}
