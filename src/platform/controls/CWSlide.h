// An upright scale of 0 to 1024: shows a reading, or lets the user set a value.
#pragma once

#include <QMouseEvent>
#include <QSlider>
#include <QStyleOptionSlider>

#include <algorithm>

#include "platform/controls/Colours.h"
#include "platform/controls/Drawn.h"

namespace bexlow::platform {

class CWSlide : public QSlider {
  Q_OBJECT

 public:
  static constexpr auto Role = QAccessible::Slider;

  /// Only the program moves it at first.
  explicit CWSlide(QWidget* parent = nullptr) : QSlider(Qt::Vertical, parent) {
    ValueAccess<CWSlide>::Install();
    setRange(0, 1024);
    setPageStep(64);
    SetReadOnly(true);
    connect(this, &QSlider::actionTriggered, this, [this] { MoveByUser(sliderPosition()); });
  }

  /// false lets the user move the pointer: by mouse, keys, and by the wheel while it has the focus.
  void SetReadOnly(bool readOnly) {
    setFocusPolicy(readOnly ? Qt::NoFocus : Qt::StrongFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents, readOnly);
  }

  /// Called with the new value when the user has moved the pointer, not when the program has.
  std::function<void(double)> PointerValueChanged;

  /// The value that was set last, even if it lies outside the scale.
  double Value() const { return value_; }
  /// Any double. Outside the scale the pointer stands at the end stop, for nan at 0.
  void Value(double value) {
    if (std::exchange(value_, value) == value) return;
    setValue(Nearest(value));
    update();
  }
  std::pair<double, double> Ends() const { return {minimum(), maximum()}; }

  /// The value as it is shown and read aloud; empty while disabled, since the pointer then tells the past.
  QString ValueText() const { return isEnabled() ? QString::number(value_) : QString(); }

  /// The user, or an assistive tool, moves the pointer to the nearest whole number. Ignored if read-only.
  void MoveByUser(double value) {
    const int wanted = Nearest(value);
    if (focusPolicy() == Qt::NoFocus || !isEnabled() || wanted == value_) return;
    Value(wanted);
    if (PointerValueChanged) PointerValueChanged(wanted);
  }

  QSize minimumSizeHint() const override {
    return {NumbersLeft() + fontMetrics().horizontalAdvance(QString::number(maximum())), 120};
  }

 protected:
  // The value in digits stands above the track, the numbers of the scale reach beyond its ends.
  void initStyleOption(QStyleOptionSlider* option) const override {
    QSlider::initStyleOption(option);
    const int line = fontMetrics().height();
    option->rect = {0, line * 3 / 2, KnobBreadth(), height() - line * 7 / 4};
  }

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    face_.Draw(painter, *this, [this](QPainter& face) { DrawScale(face); });
    painter.drawText(QRect(0, 0, width(), fontMetrics().height()), Qt::AlignCenter,
                     fontMetrics().elidedText(ValueText(), Qt::ElideRight, width()));
    const auto colours = ColoursOf(*this);
    const int place = PlaceOf(value());
    DrawBox(painter, KnobBreadth() / 3, place, PlaceOf(0), Qt::NoPen, colours.series);
    if (focusPolicy() == Qt::NoFocus) return;
    DrawBox(painter, KnobBreadth() - 1, place - KnobHalf, place + KnobHalf, colours.series,
            hasFocus() ? colours.focus : colours.paper);
  }

  // A press goes to its place, as Qt has it with another button.
  void mousePressEvent(QMouseEvent* event) override {
    const QRect track(0, PlaceOf(maximum()) - KnobHalf, KnobBreadth(),
                      PlaceOf(0) - PlaceOf(maximum()) + 2 * KnobHalf);
    const bool isHit = track.contains(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !isHit) return event->ignore();
    const auto button = Qt::MouseButton(style()->styleHint(QStyle::SH_Slider_AbsoluteSetButtons));
    QMouseEvent there(event->type(), event->position(), event->globalPosition(), button, button, {});
    QSlider::mousePressEvent(&there);
  }
  void wheelEvent(QWheelEvent* event) override { hasFocus() ? QSlider::wheelEvent(event) : event->ignore(); }

 private:
  static constexpr int KnobHalf = 6, LongMark = 10, Gap = 4;  // the gap is before and behind the marks

  static int Nearest(double value) { return qRound(std::max(0.0, std::min(value, 1024.0))); }  // of nan: 0
  int KnobBreadth() const { return style()->pixelMetric(QStyle::PM_SliderThickness, nullptr, this) * 3 / 2; }
  int MarksLeft() const { return KnobBreadth() + Gap; }
  int NumbersLeft() const { return MarksLeft() + LongMark + Gap; }
  int PlaceOf(int value) const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.sliderPosition = value;
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).center().y();
  }

  void DrawBox(QPainter& painter, int breadth, int top, int bottom, const QPen& rim, QColor fill) const {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(rim);
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF((KnobBreadth() - breadth) / 2.0, top + 0.5, breadth, bottom - top), 4, 4);
  }
  void DrawScale(QPainter& painter) const {
    const int line = fontMetrics().height();
    int step = 128;
    while (step < 512 && PlaceOf(0) - PlaceOf(step) < 2.5 * line) step *= 2;
    painter.setPen(Blend(palette().color(QPalette::Window),
                         palette().color(QPalette::Active, QPalette::WindowText), isEnabled() ? 1 : 0.6));
    for (int mark = 0; mark <= maximum(); mark += step / 4) {
      const bool isLong = mark % step == 0;
      const int place = PlaceOf(mark);
      painter.drawLine(MarksLeft(), place, MarksLeft() + (isLong ? LongMark : LongMark / 2), place);
      if (isLong)
        painter.drawText(QRect(NumbersLeft(), place - line, width(), 2 * line), Qt::AlignVCenter,
                         QString::number(mark));
    }
    const auto colours = ColoursOf(*this);
    DrawBox(painter, KnobBreadth() / 3, PlaceOf(maximum()), PlaceOf(0),
            Blend(colours.paper, colours.text, 0.45), colours.paper);
  }

  double value_ = 0;
  Face face_;
};

}  // namespace bexlow::platform
