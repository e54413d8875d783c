#include "platform/instruments/CWSlide.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <map>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

// Lengths in the widget's units.
constexpr double GrooveWidth = 8;
constexpr double MajorLength = 10;
constexpr double MinorLength = 5;
constexpr double TickGap = 4;
constexpr double NumberGap = 3;
constexpr double LongDistance = 42;  // of two numbers, at least
constexpr double KnobLength = 12;    // along the groove
constexpr double KnobBreadth = 24;
constexpr double MarkLength = 4;      // in place of the knob where only the program moves the pointer
constexpr double Step = 1;            // what an arrow key adds; the user's values are multiples of it
constexpr double Page = 64;           // what a page key adds
constexpr double NotchDegrees = 120;  // one notch of a wheel, in eighths of a degree

}  // namespace

CWSlide::CWSlide(QWidget* parent) : Instrument(parent, 0) {
  SetRange(0, 1024);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void CWSlide::SetReadOnly(bool readOnly) {
  readOnly_ = readOnly;
  dragging_ = false;
  setFocusPolicy(readOnly ? Qt::NoFocus : Qt::StrongFocus);
  DropFace();
}

QSize CWSlide::sizeHint() const { return {minimumSizeHint().width() + 12, 240}; }
QSize CWSlide::minimumSizeHint() const { return {static_cast<int>(Breadth()) + 4, 120}; }

// Of knob, marks and numbers.
double CWSlide::Breadth() const {
  return KnobBreadth + TickGap + MajorLength + NumberGap +
         fontMetrics().horizontalAdvance(QString::number(Maximum()));
}

// The value text stands above the scale.
QRectF CWSlide::Groove() const {
  const double endRoom = fontMetrics().height() / 2.0 + 2;  // half a number beyond the ends of the scale
  const double textHeight = fontMetrics().height() + 6.0;
  const double left = std::max(0.0, width() - Breadth()) / 2 + (KnobBreadth - GrooveWidth) / 2;
  return {left, textHeight + endRoom, GrooveWidth, std::max(1.0, height() - textHeight - 2 * endRoom)};
}

QPointF CWSlide::PlaceOf(double value) const {
  const auto groove = Groove();
  return {groove.center().x(), groove.bottom() - FractionOf(value) * groove.height()};
}

double CWSlide::ValueAt(QPointF place) const {
  const auto groove = Groove();
  return (groove.bottom() - place.y()) / groove.height() * Maximum();
}

void CWSlide::DrawFace(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.45), 1));
  painter.setBrush(colours.paper);
  painter.drawRoundedRect(Groove(), GrooveWidth / 2, GrooveWidth / 2);

  const double height = Groove().height();
  const double longStep = height >= 8 * LongDistance ? 128 : height >= 4 * LongDistance ? 256 : 512;
  const auto window = palette().color(QPalette::Window);
  painter.setPen(isEnabled() ? WordsColour() : Blend(window, ColoursOf(palette()).text, 0.6));
  ForEachMark(longStep, 4, [&](double mark, bool isLong) {
    const QPointF from = PlaceOf(mark) + QPointF(KnobBreadth / 2 + TickGap, 0);
    const QPointF to = from + QPointF(isLong ? MajorLength : MinorLength, 0);
    painter.drawLine(from, to);
    if (isLong)
      painter.drawText(QRectF(to.x() + NumberGap, to.y() - 20, 60, 40), Qt::AlignLeft | Qt::AlignVCenter,
                       QString::number(mark));
  });
}

void CWSlide::DrawPointer(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  const QPointF place = PlaceOf(Value());
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.series);
  const double halfFill = GrooveWidth / 2 - 1;
  painter.drawRoundedRect(QRectF(PlaceOf(0), place).normalized().adjusted(-halfFill, 0, halfFill, 0), 2, 2);

  QRectF knob(0, 0, KnobBreadth, readOnly_ ? MarkLength : KnobLength);
  knob.moveCenter(place);
  painter.setPen(QPen(readOnly_    ? colours.series
                      : hasFocus() ? colours.focus
                                   : Blend(colours.paper, colours.text, 0.6),
                      hasFocus() ? 2 : 1));
  painter.setBrush(readOnly_ ? colours.series : colours.paper);
  painter.drawRoundedRect(knob, 3, 3);
  if (!readOnly_) {
    const QPointF half(KnobBreadth / 2 - 4, 0);
    painter.setPen(QPen(colours.series, 2));
    painter.drawLine(place - half, place + half);
  }

  painter.setPen(WordsColour());
  painter.drawText(QRectF(0, 0, width(), fontMetrics().height() + 2.0),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, ValueText());
}

void CWSlide::MoveByUser(double value) {
  if (readOnly_ || !isEnabled() || std::isnan(value)) return;
  const double stepped = std::round(std::clamp(value, Minimum(), Maximum()) / Step) * Step;
  const double wanted = std::clamp(stepped, Minimum(), Maximum());
  if (wanted == Value()) return;
  Value(wanted);
  if (PointerValueChanged) PointerValueChanged(wanted);
}

void CWSlide::mousePressEvent(QMouseEvent* event) {
  dragging_ = !readOnly_ && event->button() == Qt::LeftButton;
  if (!dragging_) return QWidget::mousePressEvent(event);
  MoveByUser(ValueAt(event->position()));
}

void CWSlide::mouseMoveEvent(QMouseEvent* event) {
  if (dragging_) MoveByUser(ValueAt(event->position()));
}

void CWSlide::mouseReleaseEvent(QMouseEvent*) { dragging_ = false; }

// Touch pads send parts of a notch; they are gathered until they make a step.
void CWSlide::wheelEvent(QWheelEvent* event) {
  if (readOnly_ || !hasFocus()) return event->ignore();
  wheelRest_ += event->angleDelta().y() / NotchDegrees * 3;
  const double steps = std::trunc(wheelRest_);
  wheelRest_ -= steps;
  if (steps != 0) MoveByUser(Value() + steps * Step);
}

void CWSlide::keyPressEvent(QKeyEvent* event) {
  const double from = std::isnan(Value()) ? 0 : std::clamp(Value(), Minimum(), Maximum());
  const std::map<int, double> targets{
      {Qt::Key_Up, from + Step},   {Qt::Key_Right, from + Step},  {Qt::Key_Down, from - Step},
      {Qt::Key_Left, from - Step}, {Qt::Key_PageUp, from + Page}, {Qt::Key_PageDown, from - Page},
      {Qt::Key_Home, Minimum()},   {Qt::Key_End, Maximum()},
  };
  const auto target = targets.find(event->key());
  if (target == targets.end() || readOnly_ || event->modifiers().testFlag(Qt::ControlModifier))
    return QWidget::keyPressEvent(event);
  MoveByUser(target->second);
}

}  // namespace bexlow::platform
