// An upright scale with a pointer: shows a reading, or lets the user set a value.
#pragma once

#include "platform/instruments/Instrument.h"

namespace bexlow::platform {

class CWSlide : public Instrument {
  Q_OBJECT

 public:
  /// An upright scale of 0 to 1024 that only the program moves.
  explicit CWSlide(QWidget* parent = nullptr);

  /// false lets the user move the pointer: by mouse, keys, and by the wheel while it has the focus.
  void SetReadOnly(bool readOnly);
  bool IsReadOnly() const override { return readOnly_; }

  /// Called with the new value when the user has moved the pointer, not when the program has.
  std::function<void(double)> PointerValueChanged;

  void MoveByUser(double value) override;
  QAccessible::Role Role() const override { return QAccessible::Slider; }
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void DrawFace(QPainter& painter) const override;
  void DrawPointer(QPainter& painter) const override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  double Breadth() const;
  QRectF Groove() const;
  QPointF PlaceOf(double value) const;
  double ValueAt(QPointF place) const;

  bool readOnly_ = true;
  bool dragging_ = false;
  double wheelRest_ = 0;
};

}  // namespace bexlow::platform
