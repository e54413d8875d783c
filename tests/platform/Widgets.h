// What the tests of widgets share.
#pragma once

#include <QTest>
#include <QtWidgets>

#include <cmath>
#include <gtest/gtest.h>

namespace bexlow::test {

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Inf = std::numeric_limits<double>::infinity();

/// Turns the wheel over a control by eighths of a degree; a notch is 120.
inline void Wheel(QWidget& control, int eighths, QPoint place = {5, 5}, Qt::KeyboardModifiers keys = {}) {
  QWheelEvent event(place, control.mapToGlobal(QPointF(place)), {}, {0, eighths}, Qt::NoButton, keys,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(&control, &event);
}

}  // namespace bexlow::test
