// An empty main window of the same size as the program's: a menu bar with one menu, and nothing else.
// WITHOUT_TEXT leaves the menu out: such a window loads no font, which any window with a word in it must.
#include <QApplication>
#include <QMainWindow>
#include <QMenuBar>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1120, 760);
#ifndef WITHOUT_TEXT
  window.menuBar()->addMenu("&File")->addAction("E&xit");
#endif
  window.show();
  return QApplication::exec();
}
