#include "platform/controls/FramePace.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include <utility>

namespace bexlow::platform {

constexpr int FrameMs = 16;
constexpr int LiveFrameMs = 30;

FramePace::FramePace(QWidget& window) : QObject(&window), window_(window) {
  painted_.start();
  frame_.setSingleShot(true);
  frame_.setTimerType(Qt::PreciseTimer);
  connect(&frame_, &QTimer::timeout, this, &FramePace::EndFrame);
  window.installEventFilter(this);
}

// A window posts one UpdateRequest per paint, so one flag is enough.
bool FramePace::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::UpdateRequest) return false;
  if (frame_.isActive()) return owed_ = true;
  painted_.start();
  frame_.start(FrameMs);
  return false;
}

// While a chain runs, it paints the frames itself, at times when a reply is on the line.
void FramePace::EndFrame() {
  if (asked_.isValid() && !asked_.hasExpired(LiveFrameMs)) return frame_.start(LiveFrameMs);
  PaintWhatIsOwed();
}

void FramePace::PaintWhatIsOwed() {
  if (std::exchange(owed_, false)) Paint();
}

void FramePace::Paint() {
  frame_.stop();
  QEvent request(QEvent::UpdateRequest);
  QCoreApplication::sendEvent(&window_, &request);
}

FramePace* FramePace::Of(const QWidget& inside) {
  return inside.window()->findChild<FramePace*>(QString(), Qt::FindDirectChildrenOnly);
}

void FramePace::PaintNow(const QWidget& window) {
  if (auto* pace = Of(window)) pace->PaintWhatIsOwed();
}

void FramePace::PaintWhileWaiting(const QWidget& inside, const std::function<void()>& show) {
  auto* pace = Of(inside);
  if (pace == nullptr) return show();
  pace->asked_.start();
  if (!pace->painted_.hasExpired(LiveFrameMs)) return;
  show();
  pace->Paint();
}

}  // namespace bexlow::platform
