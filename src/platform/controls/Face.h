// What does not move on a drawn control, with the ground it stands on: drawn once and kept, so that a new
// value repaints nothing else.
#pragma once

#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <tuple>
#include <utility>

namespace bexlow::platform {

class Face {
 public:
  /// Covers the control. `draw` is called when the control looks different from last time.
  void Draw(QPainter& painter, QWidget& control, const auto& draw) {
    const double ratio = control.devicePixelRatioF();
    const Look look{control.geometry(), ratio, control.palette().cacheKey(), control.font(),
                    control.isEnabled()};
    if (std::exchange(look_, look) != look) {
      face_ = QPixmap((QSizeF(control.size()) * ratio).toSize());
      face_.setDevicePixelRatio(ratio);
      face_.fill(control.palette().color(QPalette::Window));
      QPainter ground(&face_);
      if (!control.isWindow())
        control.parentWidget()->render(&ground, {}, control.geometry(), QWidget::DrawWindowBackground);
      ground.setFont(control.font());
      draw(ground);
      control.setAttribute(Qt::WA_OpaquePaintEvent);  // a style takes it from a slider
    }
    painter.drawPixmap(0, 0, face_);
  }

 private:
  using Look = std::tuple<QRect, double, qint64, QFont, bool>;
  Look look_;
  QPixmap face_;
};

}  // namespace bexlow::platform
