#include "platform/graph/CWGraphInteraction.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <qcustomplot.h>

#include <cmath>

#include "platform/graph/CWGraphLimit.h"
#include "platform/graph/CWGraphOverlay.h"
#include "platform/graph/CWGraphReadOut.h"
#include "platform/graph/CWGraphView.h"

namespace bexlow::platform {

namespace {

constexpr double KeyZoom = 0.7;
constexpr double NotchZoom = 0.8;
constexpr double Notch = 120;   // what a wheel reports for one, in eighths of a degree
constexpr double KeyPan = 0.1;  // of what is on show
constexpr double PagePan = 0.9;
constexpr int SmallestRectangle = 6;  // pixels; a smaller movement counts as a click

}  // namespace

CWGraphInteraction::CWGraphInteraction(QWidget& graph, QCustomPlot& plot, CWGraphView& view,
                                       CWGraphReadOut& readOut, CWGraphOverlay& overlay, CWGraphLimit& limit)
    : QObject(&graph),
      graph_(graph),
      plot_(plot),
      view_(view),
      readOut_(readOut),
      overlay_(overlay),
      limit_(limit) {
  graph.setMouseTracking(true);
  graph.installEventFilter(this);
}

bool CWGraphInteraction::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) overlay_.update();
  if (!isOn_) return WhenOff(*event);
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      return Press(static_cast<const QMouseEvent&>(*event));
    case QEvent::MouseMove:
      return Move(static_cast<const QMouseEvent&>(*event));
    case QEvent::MouseButtonRelease:
      return Release(static_cast<const QMouseEvent&>(*event));
    case QEvent::MouseButtonDblClick:
      if (static_cast<const QMouseEvent&>(*event).button() == Qt::LeftButton) ShowAll();
      return true;
    case QEvent::Wheel:
      event->accept();
      return Wheel(static_cast<const QWheelEvent&>(*event));
    case QEvent::KeyPress:
      return Key(static_cast<const QKeyEvent&>(*event));
    case QEvent::Leave:
      if (drag_ == Drag::None) readOut_.Forget();
      return false;
    default:
      return false;
  }
}

void CWGraphInteraction::SwitchOn(bool on) {
  isOn_ = on;
  if (!on) Cancel();
}

bool CWGraphInteraction::WhenOff(QEvent& event) {
  switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto& mouse = static_cast<const QMouseEvent&>(event);
      if (mouse.button() == Qt::LeftButton) Click(mouse.position().toPoint());
      return mouse.button() == Qt::LeftButton;
    }
    case QEvent::KeyPress: {
      const auto& key = static_cast<const QKeyEvent&>(event);
      const bool isSpace = key.key() == Qt::Key_Space;
      if (isSpace && !key.isAutoRepeat()) Click(graph_.rect().center());
      return isSpace;
    }
    default:
      return false;
  }
}

void CWGraphInteraction::Click(QPoint place) {
  if (Clicked) Clicked(place - plot_.pos());
}

bool CWGraphInteraction::Press(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton && event.button() != Qt::RightButton) return false;
  if (drag_ != Drag::None) {
    Cancel();
    return true;
  }
  from_ = last_ = event.position().toPoint();
  const bool isOnLimit = limit_.IsNear(from_.y() - plot_.pos().y());
  drag_ = event.button() == Qt::RightButton ? Drag::Rectangle : isOnLimit ? Drag::Limit : Drag::Pan;
  if (drag_ == Drag::Pan) graph_.setCursor(Qt::ClosedHandCursor);
  return true;
}

bool CWGraphInteraction::Move(const QMouseEvent& event) {
  const auto place = event.position().toPoint();
  switch (drag_) {
    case Drag::None:
      readOut_.PointAt(place - plot_.pos());
      if (limit_.IsNear(place.y() - plot_.pos().y())) {
        graph_.setCursor(Qt::SizeVerCursor);
      } else {
        graph_.unsetCursor();
      }
      break;
    case Drag::Limit:
      DragLimitTo(place);
      break;
    case Drag::Pan:
      PanTo(place);
      break;
    case Drag::Rectangle:
      last_ = place;
      overlay_.ShowRectangle(QRect(from_, place).normalized() &
                             plot_.axisRect()->rect().translated(plot_.pos()));
      break;
  }
  return true;
}

bool CWGraphInteraction::Release(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton && event.button() != Qt::RightButton) return false;
  const auto ended = drag_;
  const bool isClick = (event.position().toPoint() - from_).manhattanLength() < SmallestRectangle;
  if (ended == Drag::Rectangle && !isClick) ZoomIntoRectangle();
  Cancel();
  if (ended == Drag::Rectangle && isClick && MenuWanted) MenuWanted(event.globalPosition().toPoint());
  if (ended != Drag::Rectangle && ended != Drag::None && isClick) Click(from_);
  return true;
}

void CWGraphInteraction::PanTo(QPoint place) {
  const auto area = plot_.axisRect()->rect();
  const auto way = place - last_;
  last_ = place;
  view_.X.Pan(-way.x() * plot_.xAxis->range().size() / area.width() / view_.X.View().Size());
  view_.Y.Pan(way.y() * plot_.yAxis->range().size() / area.height() / view_.Y.View().Size());
  Tell();
}

// The limit moves only after the pointer has moved 6 pixels.
void CWGraphInteraction::DragLimitTo(QPoint place) {
  if (std::abs(place.y() - from_.y()) < SmallestRectangle && last_ == from_) return;
  last_ = place;
  limit_.DragTo(place.y() - plot_.pos().y());
  Tell();
}

void CWGraphInteraction::ZoomIntoRectangle() {
  const auto area = plot_.axisRect()->rect();
  const auto drawn = QRect(from_, last_).normalized().translated(-plot_.pos()) & area;
  const auto range = [](const QCPAxis& axis, double one, double other) {
    return CWGraphRange{axis.pixelToCoord(one), axis.pixelToCoord(other)};
  };
  const auto x = range(*plot_.xAxis, drawn.left(), drawn.right());
  const auto y = range(*plot_.yAxis, drawn.bottom(), drawn.top());
  if (drawn.width() >= SmallestRectangle) view_.X.Show(x);  // a flat rectangle keeps y, a slim one keeps x
  if (drawn.height() >= SmallestRectangle) view_.Y.Show(y);
  Tell();
}

bool CWGraphInteraction::Wheel(const QWheelEvent& event) {
  const auto turn = event.angleDelta();
  const auto place = event.position() - plot_.pos();
  const auto modifiers = event.modifiers();
  if (turn.x() != 0 || modifiers.testFlag(Qt::ShiftModifier)) {
    view_.X.Pan(-(turn.x() + turn.y()) / Notch * KeyPan);
  } else if (modifiers.testFlag(Qt::ControlModifier)) {
    view_.Y.Zoom(std::pow(NotchZoom, turn.y() / Notch), plot_.yAxis->pixelToCoord(place.y()));
  } else {
    view_.X.Zoom(std::pow(NotchZoom, turn.y() / Notch), plot_.xAxis->pixelToCoord(place.x()));
  }
  Tell();
  return true;
}

bool CWGraphInteraction::Key(const QKeyEvent& event) {
  const auto modifiers = event.modifiers();
  if (modifiers.testFlag(Qt::AltModifier)) return false;
  if (modifiers.testFlag(Qt::ShiftModifier) && event.key() == Qt::Key_F10) return OpenMenu();
  if (modifiers.testFlag(Qt::ShiftModifier) && ShiftKey(event.key())) return true;
  return ViewKey(event.key(), modifiers.testFlag(Qt::ControlModifier));
}

// Qt opens the menu for the Menu key, but not for Shift+F10.
bool CWGraphInteraction::OpenMenu() {
  if (MenuWanted) MenuWanted(graph_.mapToGlobal(graph_.rect().center()));
  return true;
}

bool CWGraphInteraction::ShiftKey(int key) {
  constexpr std::ptrdiff_t Page = 100;
  switch (key) {
    case Qt::Key_Left:
      return readOut_.Step(-1), true;
    case Qt::Key_Right:
      return readOut_.Step(1), true;
    case Qt::Key_PageUp:
      return readOut_.Step(-Page), true;
    case Qt::Key_PageDown:
      return readOut_.Step(Page), true;
    case Qt::Key_Home:
      return readOut_.StepToEnd(false), true;
    case Qt::Key_End:
      return readOut_.StepToEnd(true), true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (!limit_.Value()) return false;
      limit_.Step(key == Qt::Key_Up ? 1 : -1);
      return Tell(), true;
    default:
      return false;
  }
}

// Zooms about the point read out, else about the middle of the view.
double CWGraphInteraction::ZoomAnchor(bool ofY) const {
  const auto view = (ofY ? view_.Y : view_.X).View();
  const auto point = readOut_.Point().value_or(QPointF(view.Middle(), view.Middle()));
  const double place = ofY ? point.y() : point.x();
  return place >= view.lower && place <= view.upper ? place : view.Middle();
}

bool CWGraphInteraction::Page(bool forward, bool withControl) {
  if (!withControl && Paged && Paged(forward)) return true;
  view_.X.Pan(forward ? PagePan : -PagePan);
  return Tell(), true;
}

bool CWGraphInteraction::ViewKey(int key, bool withControl) {
  auto& zoomed = withControl ? view_.Y : view_.X;
  switch (key) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      zoomed.Zoom(KeyZoom, ZoomAnchor(withControl));
      break;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
      zoomed.Zoom(1 / KeyZoom, ZoomAnchor(withControl));
      break;
    case Qt::Key_Left:
      view_.X.Pan(-KeyPan);
      break;
    case Qt::Key_Right:
      view_.X.Pan(KeyPan);
      break;
    case Qt::Key_Up:
      view_.Y.Pan(KeyPan);
      break;
    case Qt::Key_Down:
      view_.Y.Pan(-KeyPan);
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return Page(key == Qt::Key_PageDown, withControl);
    case Qt::Key_Home:
      view_.X.ShowWhole();
      view_.Y.ShowWhole();
      break;
    case Qt::Key_Escape:
      Cancel();
      readOut_.Forget();
      return true;
    default:
      return false;
  }
  Tell();
  return true;
}

void CWGraphInteraction::Cancel() {
  drag_ = Drag::None;
  overlay_.ShowRectangle(std::nullopt);
  graph_.unsetCursor();
}

void CWGraphInteraction::ShowAll() {
  Cancel();
  view_.X.ShowWhole();
  view_.Y.ShowWhole();
  Tell();
}

void CWGraphInteraction::Tell() {
  if (view_.Changed) view_.Changed();
}

}  // namespace bexlow::platform
