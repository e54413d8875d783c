// The tour: the real screens in a real window, on the real clock, against the stand-in logger. Compares every
// file with what the stand-in holds, and leaves a picture of each screen.
//
// bexlow-tour LOGGER FOLDER
#include <QApplication>

#include <functional>
#include <iostream>
#include <stdexcept>

#include "platform/machine/RealMachine.h"
#include "shell/Emblem.h"
#include "shell/Main.h"
#include "tour/stages.h"

namespace {

using namespace bexlow;

void TourWithLogger(tour::Robot& robot, const std::filesystem::path& logger,
                    const std::filesystem::path& output) {
  const auto visit = [&](const QStringList& options, const std::function<void(tour::Tour&)>& stages) {
    tour::RecordedStandIn standIn(logger, output, options);
    tour::Tour tour{robot, standIn, output / "Data Files"};
    stages(tour);
  };
  visit({"--motion", "turn", "--erase-seconds", "5", "--run-pages", "16"}, tour::Visit);
  visit({"--mode", "bin", "--pages", "16"}, tour::VisitBins);
}

int Run(const std::filesystem::path& logger, const std::filesystem::path& output) {
  std::filesystem::remove_all(output);
  std::filesystem::create_directories(output / "Ports");
  platform::RealMachine machine(output);
  platform::Machine::Install(machine);
  shell::MDIForm1 outer;
  if (!outer.Load()) return 1;
  outer.ShowChild(new shell::Main(outer));
  outer.show();
  tour::Robot robot(outer, output);
  robot.Rest(500);
  try {
    TourWithLogger(robot, logger, output);
  } catch (const std::runtime_error& failure) {
    robot.Picture("failure");
    std::cerr << "The tour failed: " << failure.what() << "\n";
    return 1;
  }
  std::cout << "The tour is complete: all files are what the stand-in holds.\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const rig::Scratch scratch;
  QApplication application(argc, argv);
  QApplication::setWindowIcon(shell::DrawEmblem(64, 1));
  return Run(std::filesystem::absolute(argv[1]), std::filesystem::absolute(argv[2]));
}
