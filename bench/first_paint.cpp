// Linked beside a program's main: ends the process when its first window has painted its first frame, so that
// the life of the process is the time from start to that frame.
#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QTimer>

#include <unistd.h>

namespace {

class EndAtFirstPaint : public QObject {
 public:
  using QObject::QObject;

 protected:
  // The zero timer runs when the frame that this event belongs to has gone to the window system.
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched) != nullptr)
      QTimer::singleShot(0, [] { ::_exit(0); });
    return false;
  }
};

void Watch() { qApp->installEventFilter(new EndAtFirstPaint(qApp)); }

}  // namespace

Q_COREAPP_STARTUP_FUNCTION(Watch)
