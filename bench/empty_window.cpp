// An empty main window of the same size as the program's.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QMainWindow window;
  window.resize(1120, 760);
  window.show();
  return QApplication::exec();
}
