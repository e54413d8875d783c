// A dial that shows an angle.
#pragma once

#include "platform/instruments/Instrument.h"

namespace bexlow::platform {

class CWKnob : public Instrument {
  Q_OBJECT

 public:
  explicit CWKnob(QWidget* parent = nullptr);

  /// The scale runs from -end to end. Degrees of its arc run clockwise from nine o'clock: an arc of 180 that
  /// begins at 0 has its middle at the top, and so has one of 359.9 that begins at 270 (six o'clock). A level
  /// sensor thus points up, a lean to the negative side to the left.
  void SetScale(double end, double startDegrees, double arcDegrees);

  QAccessible::Role Role() const override { return QAccessible::Dial; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

  /// The circle on which the scale lies; the number stands under it.
  QPointF Centre() const;
  double Radius() const;

 protected:
  void DrawFace(QPainter& painter) const override;
  void DrawPointer(QPainter& painter) const override;
  QRegion MovingArea() const override;

 private:
  double AngleAt(double value) const;
  QString NumberAt(double mark) const;
  QFont NumberFont() const;
  double NumberRoom() const;

  double startDegrees_ = 270;
  double arcDegrees_ = 359.9;
};

}  // namespace bexlow::platform
