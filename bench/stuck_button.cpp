// A wearer whose button was stuck: every one of 270,204 pairs is a push. Opening such a file, showing all
// pushes and hiding them, each until both graphs are painted, in the real screen.
#include <QAction>
#include <QApplication>
#include <QPushButton>

#include <chrono>
#include <cstdio>
#include <functional>

#include "Figure.h"
#include "FullFile.h"
#include "graph/DataScreen.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Screens.h"

namespace {

using namespace bexlow;
namespace fs = std::filesystem;

constexpr int Rounds = 11;
constexpr double LimitMs = 100;  // a person notices a longer wait

class Review {
 public:
  explicit Review(const fs::path& folder)
      : machine_(folder, folder / "stuck.qbx"), screen_(&program_.Show(review::MakeGraphBP())) {
    platform::WriteWhole(folder / "stuck.qbx", bench::StuckButtonFile());
    QApplication::processEvents();
  }

  double MsOf(const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    for (const char* name : {"CWGraph1", "CWGraph2"}) screen_->findChild<platform::CWGraph*>(name)->DrawNow();
    QApplication::processEvents();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  }

  void Open() { screen_->Menus().first()->findChild<QAction*>("mnuOpen")->trigger(); }
  void Toggle() { screen_->findChild<QPushButton*>("cmdShowAll")->click(); }
  std::size_t Cursors() { return screen_->findChild<platform::CWGraph*>("CWGraph1")->Cursors().size(); }

 private:
  rig::AnsweredMachine machine_;
  rig::Program program_;
  platform::Form* screen_;
};

bool Measure(Review& review) {
  std::vector<double> open, show, hide;
  std::size_t most = 0;
  for (int round = 0; round < Rounds; ++round) {
    open.push_back(review.MsOf([&] { review.Open(); }));
    show.push_back(review.MsOf([&] { review.Toggle(); }));
    most = review.Cursors();
    hide.push_back(review.MsOf([&] { review.Toggle(); }));
  }
  if (review.Cursors() != 1) return false;
  const struct {
    const char* name;
    const std::vector<double>& times;
  } rows[] = {{"Opening", open}, {"Show All of", show}, {"Hide All of", hide}};
  for (const auto& [name, times] : rows)
    bench::PrintFigure(
        std::string(name) + " a run that is all pushes, painted", bench::Median(times), LimitMs, " ms",
        "median of " + std::to_string(Rounds) + ", longest " + bench::Fixed(std::ranges::max(times), 1) +
            " ms, " + std::to_string(most) + " cursors, " + QApplication::platformName().toStdString());
  return most >= 270'204;
}

}  // namespace

int main(int argc, char** argv) {
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  Review review(scratch.Path());
  if (Measure(review)) return 0;
  std::fprintf(stderr, "bench_stuck_button: the pushes are not all there\n");
  return 1;
}
