#include "platform/graph/CWGraphOverlay.h"

#include <QPainter>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

CWGraphOverlay::CWGraphOverlay(QWidget& graph) : QWidget(&graph) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setFocusPolicy(Qt::NoFocus);
}

void CWGraphOverlay::ShowRectangle(std::optional<QRect> rectangle) {
  if (rectangle_ == rectangle) return;
  rectangle_ = rectangle;
  update();
}

void CWGraphOverlay::ShowPoint(std::optional<QPointF> point, QRect area) {
  if (point_ == point && area_ == area) return;
  point_ = point;
  area_ = area;
  update();
}

void CWGraphOverlay::ShowNotice(const QString& words, QRect area) {
  if (notice_ == words && area_ == area) return;
  notice_ = words;
  area_ = area;
  update();
}

void CWGraphOverlay::paintEvent(QPaintEvent*) {
  const auto colours = ColoursOf(palette());
  QPainter painter(this);
  if (!notice_.isEmpty()) {
    painter.setPen(Blend(colours.paper, colours.text, 0.75));
    painter.drawText(area_, Qt::AlignCenter, notice_);
  }
  if (point_) {
    painter.setPen(QPen(colours.hint, 1, Qt::DashLine));
    painter.drawLine(QPointF(point_->x(), area_.top()), QPointF(point_->x(), area_.bottom()));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colours.hint, 2));
    painter.drawEllipse(*point_, 5, 5);
    painter.setRenderHint(QPainter::Antialiasing, false);
  }
  if (rectangle_) {
    auto fill = colours.hint;
    fill.setAlphaF(0.15F);
    painter.setPen(QPen(colours.hint, 1));
    painter.setBrush(fill);
    painter.drawRect(*rectangle_);
  }
  if (parentWidget()->hasFocus()) {
    painter.setPen(QPen(colours.focus, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
  }
}

}  // namespace bexlow::platform
