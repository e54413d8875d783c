// Opens a data file in the graph screen and saves a picture of it: what bench/side-by-side sets beside other
// programs. Makes the full file, and its CSV for the others, where there is none yet.
//
// bench_open_picture FOLDER
#include <QApplication>

#include "FullFile.h"
#include "Rig.h"
#include "download/LinearCsv.h"
#include "graph/Graph.h"
#include "platform/machine/RealMachine.h"
#include "platform/machine/TextFile.h"
#include "shell/MDIForm1.h"
#include "shell/Records.h"

int main(int argc, char** argv) {
  using namespace bexlow;
  if (argc != 2) return 2;
  const bench::Scratch scratch;
  const QApplication application(argc, argv);
  const std::filesystem::path folder = argv[1];
  if (!exists(folder / "full.qbx")) {
    platform::WriteWhole(folder / "full.qbx", bench::FullDataFile());
    platform::WriteWhole(folder / "full.csv", download::LinearCsv(bench::FullDataFile()));
  }
  platform::RealMachine machine(scratch.Path());
  platform::Machine::Install(machine);
  shell::MDIForm1 outer;
  auto* screen = new graph::Graph;
  outer.ShowChild(screen);
  outer.show();
  shell::Shared.GraphFileName = (folder / "full.qbx").string();
  shell::Shared.GraphAfterDownload = true;
  screen->mnuOpen_Click();
  return outer.grab().save(QString::fromStdString((folder / "bexlow.png").string())) ? 0 : 1;
}
