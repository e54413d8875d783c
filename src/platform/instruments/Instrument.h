// What dials and slides share: a value on a scale, a face drawn once and kept, a pointer, accessibility.
#pragma once

#include <QAccessible>
#include <QPixmap>
#include <QRegion>
#include <QWidget>

#include <vector>

namespace bexlow::platform {

class Instrument : public QWidget {
  Q_OBJECT

 public:
  /// @param unit  text after the displayed value, "°" for instance
  explicit Instrument(QWidget* parent, const QString& unit = {});

  /// The value that was set last, even if it lies outside the scale.
  double Value() const { return value_; }

  /// Any double. Outside the scale the pointer stands at the end stop; nan is shown as 0.
  void Value(double value) { Value(value, TextOf(value)); }
  /// The same with a number in other digits, such as those that were received.
  void Value(double value, const QString& number);

  double Minimum() const { return minimum_; }
  double Maximum() const { return maximum_; }

  const QString& Unit() const { return unit_; }

  /// The value as it is shown and read aloud; empty while the instrument is disabled, since the pointer then
  /// tells the past.
  QString ValueText() const { return isEnabled() ? number_ : QString(); }

  /// What a screen reader calls it.
  virtual QAccessible::Role Role() const = 0;

  /// Whether only the program moves the pointer.
  virtual bool IsReadOnly() const { return true; }

  /// The user, or an assistive tool, moves the pointer. Ignored if read-only.
  virtual void MoveByUser(double value) { static_cast<void>(value); }

 protected:
  /// Everything that does not move. The painter's units are those of the widget.
  virtual void DrawFace(QPainter& painter) const = 0;
  /// Pointer and value text.
  virtual void DrawPointer(QPainter& painter) const = 0;
  /// The area that a new value changes, in the widget's units.
  virtual QRegion MovingArea() const { return rect(); }

  void SetRange(double minimum, double maximum, int decimals);
  void DropFace();

  /// The place of the value on the scale: 0 at its beginning, 1 at its end, never beyond.
  double Fraction() const { return FractionOf(value_); }
  double FractionOf(double value) const;
  QString TextOf(double value) const;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void EnsureFace();
  void DrawGround(QPainter& painter);
  void Announce();

  double value_ = 0;
  double minimum_ = 0;
  double maximum_ = 1;
  int decimals_ = 0;
  const QString unit_;
  QString number_;
  QString announced_;
  QPixmap face_;
};

/// Distance of two numbered marks, so that about `wanted` of them cover the span: a round number, preferably
/// one that divides the span, as 30 does 360 and 128 does 1024.
double MarkStep(double span, int wanted);

/// The marks of a scale: multiples of step from minimum to maximum; the ends may be off by a thousandth of
/// the span, so that a scale to 179.99 has its mark 180.
std::vector<double> Marks(double minimum, double maximum, double step);

}  // namespace bexlow::platform
