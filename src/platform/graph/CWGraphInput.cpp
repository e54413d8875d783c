// Mouse, wheel and keys of a graph.
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QWheelEvent>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/graph/CWGraph.h"
#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {

constexpr double KeyZoom = 0.7;
constexpr double NotchZoom = 0.8;
constexpr double Notch = 120;   // what a wheel reports for one, in eighths of a degree
constexpr double KeyPan = 0.1;  // of what is on show
constexpr double PagePan = 0.9;
constexpr std::ptrdiff_t PageOfSamples = 100;
constexpr int SmallestRectangle = 6;  // pixels; a smaller movement counts as a click

}  // namespace

struct CWGraph::Key {
  QKeyCombination keys;
  void (*act)(CWGraph& graph);
};

// Where a combination is not in the table, it is looked for without Shift, then without Control.
const CWGraph::Key* CWGraph::Find(Qt::KeyboardModifiers modifiers, int key) {
  static constexpr Key Keys[] = {
      {Qt::Key_Plus, [](CWGraph& graph) { graph.ZoomByKey(graph.x_, KeyZoom); }},
      {Qt::Key_Minus, [](CWGraph& graph) { graph.ZoomByKey(graph.x_, 1 / KeyZoom); }},
      {Qt::CTRL | Qt::Key_Plus, [](CWGraph& graph) { graph.ZoomByKey(graph.y_, KeyZoom); }},
      {Qt::CTRL | Qt::Key_Minus, [](CWGraph& graph) { graph.ZoomByKey(graph.y_, 1 / KeyZoom); }},
      {Qt::Key_Left, [](CWGraph& graph) { graph.x_.Pan(-KeyPan); }},
      {Qt::Key_Right, [](CWGraph& graph) { graph.x_.Pan(KeyPan); }},
      {Qt::Key_Up, [](CWGraph& graph) { graph.y_.Pan(KeyPan); }},
      {Qt::Key_Down, [](CWGraph& graph) { graph.y_.Pan(-KeyPan); }},
      {Qt::Key_PageUp, [](CWGraph& graph) { graph.Page(false); }},
      {Qt::Key_PageDown, [](CWGraph& graph) { graph.Page(true); }},
      {Qt::CTRL | Qt::Key_PageUp, [](CWGraph& graph) { graph.x_.Pan(-PagePan); }},
      {Qt::CTRL | Qt::Key_PageDown, [](CWGraph& graph) { graph.x_.Pan(PagePan); }},
      {Qt::Key_Home, [](CWGraph& graph) { graph.ShowAll(); }},
      {Qt::Key_Escape, [](CWGraph& graph) { graph.CancelDrag(), graph.Read(std::nullopt); }},
      {Qt::SHIFT | Qt::Key_Left, [](CWGraph& graph) { graph.Step(-1); }},
      {Qt::SHIFT | Qt::Key_Right, [](CWGraph& graph) { graph.Step(1); }},
      {Qt::SHIFT | Qt::Key_PageUp, [](CWGraph& graph) { graph.Step(-PageOfSamples); }},
      {Qt::SHIFT | Qt::Key_PageDown, [](CWGraph& graph) { graph.Step(PageOfSamples); }},
      {Qt::SHIFT | Qt::Key_Home, [](CWGraph& graph) { graph.ReadInSight(0); }},
      {Qt::SHIFT | Qt::Key_End, [](CWGraph& graph) { graph.ReadInSight(graph.values_.size()); }},
      {Qt::SHIFT | Qt::Key_Up, [](CWGraph& graph) { graph.StepLimit(1); }},
      {Qt::SHIFT | Qt::Key_Down, [](CWGraph& graph) { graph.StepLimit(-1); }},
      {Qt::SHIFT | Qt::Key_F10,
       [](CWGraph& graph) { graph.AskMenu(graph.rect().center()); }},  // Qt knows the Menu key alone
  };
  if (key == Qt::Key_Equal) key = Qt::Key_Plus;  // the same keys, without Shift or with it
  if (key == Qt::Key_Underscore) key = Qt::Key_Minus;
  for (const Qt::KeyboardModifiers dropped : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier}) {
    const QKeyCombination wanted(modifiers & ~dropped & ~Qt::KeypadModifier, static_cast<Qt::Key>(key));
    const auto* found = std::ranges::find(Keys, wanted, &Key::keys);
    if (found != std::end(Keys)) return found;
  }
  return nullptr;
}

void CWGraph::keyPressEvent(QKeyEvent* event) {
  if (!interactive_) {
    if (event->key() != Qt::Key_Space) return event->ignore();
    if (!event->isAutoRepeat()) ClickAt(plot_->rect().center());
    return;
  }
  const auto* found = Find(event->modifiers(), event->key());
  found ? found->act(*this) : event->ignore();
}

// Zooms about the point read out, else about the middle of the view.
void CWGraph::ZoomByKey(CWGraphAxis& axis, double factor) {
  const auto view = axis.View();
  const auto point = PointRead().value_or(QPointF(view.Middle(), view.Middle()));
  const double place = &axis == &y_ ? point.y() : point.x();
  axis.Zoom(factor, view.Holds(place) ? place : view.Middle());
}

void CWGraph::Page(bool forward) {
  if (!Paged || !Paged(forward)) x_.Pan(forward ? PagePan : -PagePan);
}

void CWGraph::StepLimit(double degrees) { limit_ ? MoveLimit(*limit_ + degrees) : y_.Pan(degrees * KeyPan); }

void CWGraph::SetInteractive(bool interactive) {
  interactive_ = interactive;
  CancelDrag();
  setMouseTracking(interactive);
  Read(std::nullopt);
  words_->setVisible(interactive);
  for (auto* entry : actions()) entry->setEnabled(interactive);
}

QPoint CWGraph::PlotPlace(QPointF place) const { return place.toPoint() - plot_->pos(); }

void CWGraph::ClickAt(QPoint place) {
  const auto cursor = CursorNear(place.x());
  EventGate::Get().Click(this, [&] {
    if (cursor && CursorClicked) CursorClicked(*cursor);
    if (Clicked) Clicked();
  });
}

void CWGraph::mousePressEvent(QMouseEvent* event) {
  const bool isLeft = event->button() == Qt::LeftButton;
  const auto place = PlotPlace(event->position());
  if (!isLeft && (event->button() != Qt::RightButton || !interactive_)) return event->ignore();
  if (!interactive_) return ClickAt(place);
  if (drag_ != Drag::None) return CancelDrag();
  from_ = last_ = place;
  drag_ = !isLeft ? Drag::Rectangle : IsOnLimit(place) ? Drag::Limit : Drag::Pan;
  if (drag_ == Drag::Pan) setCursor(Qt::ClosedHandCursor);
}

void CWGraph::mouseMoveEvent(QMouseEvent* event) {
  if (!interactive_) return event->ignore();
  const auto place = PlotPlace(event->position());
  if (drag_ != Drag::None) return DragTo(place);
  PointAt(place);
  IsOnLimit(place) ? setCursor(Qt::SizeVerCursor) : unsetCursor();
}

void CWGraph::DragTo(QPoint place) {
  const auto area = plot_->axisRect()->rect();
  const auto way = place - std::exchange(last_, place);
  if (drag_ == Drag::Pan) {
    x_.Pan(-way.x() * plot_->xAxis->range().size() / area.width() / XView().Size());
    y_.Pan(way.y() * plot_->yAxis->range().size() / area.height() / YView().Size());
  } else if (drag_ == Drag::Rectangle) {
    const auto drawn = QRect(from_, place).normalized() & area;
    rectangle_->topLeft->setCoords(drawn.topLeft());
    rectangle_->bottomRight->setCoords(drawn.bottomRight());
    rectangle_->setVisible(true);
    rectangle_->layer()->replot();
  } else if (std::abs(place.y() - from_.y()) < SmallestRectangle) {
    last_ = from_;  // a click, as long as the limit has not moved
  } else {
    MoveLimit(plot_->yAxis->pixelToCoord(place.y()));
  }
}

void CWGraph::mouseReleaseEvent(QMouseEvent* event) {
  if (!interactive_ || (event->button() != Qt::LeftButton && event->button() != Qt::RightButton))
    return event->ignore();
  const auto ended = drag_;
  const bool isClick = (PlotPlace(event->position()) - from_).manhattanLength() < SmallestRectangle;
  if (ended == Drag::Rectangle && !isClick) ZoomIntoRectangle();
  CancelDrag();
  if (!isClick || ended == Drag::None) return;
  ended == Drag::Rectangle ? AskMenu(event->position().toPoint()) : ClickAt(from_);
}

// A flat rectangle keeps y, a slim one keeps x.
void CWGraph::ZoomIntoRectangle() {
  const auto drawn = QRect(from_, last_).normalized() & plot_->axisRect()->rect();
  const auto x = [&](int pixel) { return plot_->xAxis->pixelToCoord(pixel); };
  const auto y = [&](int pixel) { return plot_->yAxis->pixelToCoord(pixel); };
  const CWGraphRange wide{x(drawn.left()), x(drawn.right())}, high{y(drawn.bottom()), y(drawn.top())};
  if (drawn.width() >= SmallestRectangle) x_.Show(wide);
  if (drawn.height() >= SmallestRectangle) y_.Show(high);
}

void CWGraph::CancelDrag() {
  drag_ = Drag::None;
  unsetCursor();
  if (!rectangle_->visible()) return;
  rectangle_->setVisible(false);
  rectangle_->layer()->replot();
}

void CWGraph::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!interactive_) return mousePressEvent(event);
  if (event->button() != Qt::LeftButton) return;
  CancelDrag();
  ShowAll();
}

void CWGraph::wheelEvent(QWheelEvent* event) {
  if (!interactive_) return event->ignore();
  const auto turn = event->angleDelta();
  const auto place = event->position() - plot_->pos();
  const double zoom = std::pow(NotchZoom, turn.y() / Notch);
  if (turn.x() != 0 || event->modifiers().testFlag(Qt::ShiftModifier)) {
    x_.Pan(-(turn.x() + turn.y()) / Notch * KeyPan);
  } else if (event->modifiers().testFlag(Qt::ControlModifier)) {
    y_.Zoom(zoom, plot_->yAxis->pixelToCoord(place.y()));
  } else {
    x_.Zoom(zoom, plot_->xAxis->pixelToCoord(place.x()));
  }
}

void CWGraph::leaveEvent(QEvent*) {
  if (interactive_ && drag_ == Drag::None) Read(std::nullopt);
}

void CWGraph::AskMenu(QPoint place) const {
  if (MenuAsked) MenuAsked(mapToGlobal(place));
}

void CWGraph::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Mouse && interactive_) AskMenu(rect().center());
  event->accept();  // by mouse it opens on release, since the right button also draws the rectangle
}

}  // namespace bexlow::platform
