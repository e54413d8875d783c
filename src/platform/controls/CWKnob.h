// A dial that shows an angle.
#pragma once

#include <QAccessible>

#include "platform/controls/Drawn.h"

namespace bexlow::platform {

class CWKnob : public QWidget {
  Q_OBJECT

 public:
  static constexpr auto Role = QAccessible::Dial;

  /// The scale runs clockwise from -end to end, on an arc of so many degrees with 0 at the top: a level
  /// sensor points up, a lean to the negative side to the left.
  explicit CWKnob(QWidget* parent = nullptr, double end = 179.99, double arcDegrees = 359.9);
  std::pair<double, double> Ends() const { return {-end_, end_}; }

  /// The value that was set last, even if it lies outside the scale.
  double Value() const { return value_; }
  /// Any double. Outside the scale the needle stands at the end stop, for nan at 0.
  void Value(double value);
  /// The same with a number in other digits, such as those that were received.
  void Value(double value, const QString& number);

  /// The value as it is shown and read aloud; empty while disabled, since the needle then tells the past.
  QString ValueText() const { return isEnabled() ? number_ + "°" : QString(); }

  // No height of its own: it takes what the window leaves.
  QSize sizeHint() const override { return {190, 0}; }
  QSize minimumSizeHint() const override { return {130, 0}; }

  /// The circle on which the scale lies; the number stands under it.
  QPointF Centre() const { return {width() / 2.0, (height() - NumberRoom()) / 2}; }
  double Radius() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void DrawFace(QPainter& painter) const;
  double AngleAt(double value) const;
  QFont NumberFont() const;
  double NumberRoom() const { return QFontMetrics(NumberFont()).height(); }

  const double end_, arcDegrees_;
  double value_ = 0;
  QString number_ = "0.0";
  Face face_;
};

}  // namespace bexlow::platform
