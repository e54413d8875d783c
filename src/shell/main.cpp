// Bexlow: the desktop companion of a wearable posture logger.

#include <QApplication>

#include "platform/machine/RealMachine.h"
#include "platform/machine/System.h"
#include "shell/MDIForm1.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("Bexlow");
  QGuiApplication::setDesktopFileName("bexlow");  // by which a Wayland desktop finds the icon
  QApplication::setApplicationVersion(QString::fromStdString(bexlow::platform::ProgramVersion()));
  QApplication::setWindowIcon(bexlow::platform::Drawing(bexlow::platform::Emblem, {64, 64}));

  bexlow::platform::RealMachine machine(std::filesystem::read_symlink("/proc/self/exe").parent_path());
  bexlow::platform::Machine::Install(machine);
  bexlow::shell::MDIForm1 outer;
  if (!outer.Load()) return 0;
  outer.ShowChild(bexlow::shell::MakeMain(outer));
  outer.show();
  QApplication::exec();
  machine.EndProgram();  // at once, also while the name of a peer is still looked up
}
