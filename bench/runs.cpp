// From the first frame of the Main page until its table shows a folder of 1,000 full runs.
#include <QApplication>
#include <QElapsedTimer>
#include <QTreeView>

#include "Figure.h"
#include "FullFile.h"
#include "rig/Rig.h"

namespace {

using namespace bexlow;

constexpr int Runs = 1000, Rounds = 5;
constexpr double LimitMs = 300;

/// Lets events run until a painting of the window that comes when the table has so many rows at least.
class Frame : public QObject {
 public:
  void Await(QWidget& window, int rows) {
    rows_ = rows;
    table_ = window.findChild<QTreeView*>("tblRuns");
    table_->viewport()->installEventFilter(this);
    while (rows_ >= 0) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    table_->viewport()->removeEventFilter(this);
  }

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && table_->model()->rowCount() >= rows_) rows_ = -1;
    return false;
  }
  QTreeView* table_ = nullptr;
  int rows_ = 0;
};

double FillMs() {
  rig::Program program;
  program.Show(shell::MakeMain(program.outer));
  Frame frame;
  frame.Await(program.outer, 0);
  QElapsedTimer time;
  time.start();
  frame.Await(program.outer, Runs);
  return 1e-6 * static_cast<double>(time.nsecsElapsed());
}

}  // namespace

int main(int argc, char** argv) {
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  bench::MakeRuns(scratch.Path() / "Data Files", Runs);
  rig::AnsweredMachine machine(scratch.Path());
  std::vector<double> times;
  for (int round = 0; round < Rounds; ++round) times.push_back(FillMs());
  bench::PrintFigure("Table of 1,000 runs, from the first frame", bench::Median(times), LimitMs, " ms",
                     QApplication::platformName().toStdString());
}
