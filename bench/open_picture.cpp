// Opens a data file in the graph screen and saves a picture of it: what bench/side-by-side compares with
// other programs. Makes the full file, and its CSV for the others, where there is none yet.
//
// bench_open_picture FOLDER
#include <QApplication>

#include "FullFile.h"
#include "files/LinearCsv.h"
#include "graph/DataScreen.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Screens.h"

int main(int argc, char** argv) {
  using namespace bexlow;
  if (argc != 2) return 2;
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  const std::filesystem::path folder = argv[1];
  if (!exists(folder / "full.qbx")) {
    const auto text = bench::FullDataFile();
    std::string csv;
    files::AppendLinearCsv(text, csv);
    platform::WriteWhole(folder / "full.qbx", text);
    platform::WriteWhole(folder / "full.csv", csv);
  }
  rig::AnsweredMachine machine(scratch.Path());
  rig::Program program;
  auto* screen = graph::MakeGraph();
  program.Show(screen);
  screen->Open((folder / "full.qbx").string());
  return program.outer.grab().save(QString::fromStdString((folder / "bexlow.png").string())) ? 0 : 1;
}
