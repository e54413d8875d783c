#pragma once

#include <QApplication>
#include <QWheelEvent>

namespace bexlow::test {

/// Turns the wheel over a control by eighths of a degree; a notch is 120.
inline void Wheel(QWidget& control, int eighths, QPoint place = {5, 5}, Qt::KeyboardModifiers keys = {}) {
  QWheelEvent event(place, control.mapToGlobal(QPointF(place)), {}, {0, eighths}, Qt::NoButton, keys,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&control, &event);
}

}  // namespace bexlow::test
