// What dials and slides share: a value on a scale, a face drawn once and kept, a pointer, accessibility.
#pragma once

#include <QAccessible>
#include <QPixmap>
#include <QRegion>
#include <QWidget>

#include <functional>

namespace bexlow::platform {

class Instrument : public QWidget {
  Q_OBJECT

 public:
  /// @param decimals  of the value on show
  /// @param unit      text after the value, "°" for instance
  Instrument(QWidget* parent, int decimals, const QString& unit = {});

  /// The value that was set last, even if it lies outside the scale.
  double Value() const { return value_; }

  /// Any double. Outside the scale the pointer stands at the end stop; nan is shown as 0.
  void Value(double value) { Value(value, TextOf(value)); }
  /// The same with a number in other digits, such as those that were received.
  void Value(double value, const QString& number);

  double Minimum() const { return minimum_; }
  double Maximum() const { return maximum_; }

  /// The value as it is shown and read aloud; empty while the instrument is disabled, since the pointer then
  /// tells the past.
  QString ValueText() const { return isEnabled() ? number_ + unit_ : QString(); }

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

  void SetRange(double minimum, double maximum);
  void DropFace();

  /// The marks of the scale: multiples of `step`, which are long, and so many parts of it. The ends may be
  /// off by a thousandth of the scale, so that one to 179.99 has its mark 180.
  void ForEachMark(double step, int parts, const std::function<void(double mark, bool isLong)>& draw) const;
  /// The colour of words on the window.
  QColor WordsColour() const;

  /// The place of a value on the scale: 0 at its beginning, 1 at its end, never beyond.
  double FractionOf(double value) const;

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QString TextOf(double value) const;
  void EnsureFace();
  void Announce();

  const int decimals_;
  const QString unit_;
  double value_ = 0;
  double minimum_ = 0;
  double maximum_ = 1;
  QString number_;
  QString announced_;
  QPixmap face_;
};

}  // namespace bexlow::platform
