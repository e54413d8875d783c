#include "platform/FramePace.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace bexlow::platform {

namespace {
constexpr int FrameMs = 16;
}

FramePace::FramePace(QWidget& window) : QObject(&window), window_(window) {
  frame_.setSingleShot(true);
  frame_.setTimerType(Qt::PreciseTimer);
  frame_.setInterval(FrameMs);
  connect(&frame_, &QTimer::timeout, this, &FramePace::PaintWhatIsOwed);
  window.installEventFilter(this);
}

// The window asks once, and again only when it has been painted, so that one request is all there is to keep.
bool FramePace::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::UpdateRequest) return false;
  if (frame_.isActive()) return owed_ = true;
  frame_.start();
  return false;
}

void FramePace::PaintWhatIsOwed() {
  if (!std::exchange(owed_, false)) return;
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(&window_, &request);
}

}  // namespace bexlow::platform
