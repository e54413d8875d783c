#include "platform/instruments/CWSlide.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

// Lengths in the widget's units.
constexpr double GrooveWidth = 8;
constexpr double EndRoom = 14;  // half a number beyond the ends of the scale
constexpr double MajorLength = 10;
constexpr double MinorLength = 5;
constexpr double TickGap = 4;
constexpr double KnobLength = 12;  // along the groove
constexpr double KnobBreadth = 24;
constexpr int PagesInScale = 16;
constexpr double NotchDegrees = 120;  // one notch of a wheel, in eighths of a degree

Colours ColoursFor(const QWidget& widget) {
  return ColoursOf(widget.palette(), widget.isEnabled() ? QPalette::Active : QPalette::Disabled);
}

}  // namespace

CWSlide::CWSlide(QWidget* parent) : Instrument(parent) {
  SetScale(0, 1024);
  SetOrientation(Qt::Vertical);
}

void CWSlide::SetScale(double minimum, double maximum) {
  SetRange(minimum, maximum, 0);
}

void CWSlide::SetOrientation(Qt::Orientation orientation) {
  orientation_ = orientation;
  const auto along = QSizePolicy::Expanding;
  const auto across = QSizePolicy::Preferred;
  setSizePolicy(IsUpright() ? across : along, IsUpright() ? along : across);
  updateGeometry();
  DropFace();
}

void CWSlide::SetReadOnly(bool readOnly) {
  readOnly_ = readOnly;
  dragging_ = false;
  setFocusPolicy(readOnly ? Qt::NoFocus : Qt::StrongFocus);
  DropFace();
}

void CWSlide::SetStep(double step) {
  if (step > 0 && std::isfinite(step)) step_ = step;
}

QSize CWSlide::sizeHint() const {
  return IsUpright() ? QSize(96, 240) : QSize(300, 84);
}
QSize CWSlide::minimumSizeHint() const {
  return IsUpright() ? QSize(84, 120) : QSize(160, 72);
}

// The value text stands above an upright scale and over the middle of a lying one.
QRectF CWSlide::Groove() const {
  const double textHeight = fontMetrics().height() + 6.0;
  if (IsUpright()) {
    const double left = std::max(KnobBreadth / 2, width() / 2.0 - 20) - GrooveWidth / 2;
    return {left, textHeight + EndRoom, GrooveWidth, std::max(1.0, height() - textHeight - 2 * EndRoom)};
  }
  const double endRoom = EndRoom + 4;
  return {endRoom, textHeight + KnobBreadth / 2 - GrooveWidth / 2, std::max(1.0, width() - 2 * endRoom),
          GrooveWidth};
}

QPointF CWSlide::PlaceOf(double fraction) const {
  const auto groove = Groove();
  if (IsUpright()) return {groove.center().x(), groove.bottom() - fraction * groove.height()};
  return {groove.left() + fraction * groove.width(), groove.center().y()};
}

double CWSlide::ValueAt(QPointF place) const {
  const auto groove = Groove();
  const double fraction = IsUpright() ? (groove.bottom() - place.y()) / groove.height()
                                      : (place.x() - groove.left()) / groove.width();
  return Minimum() + std::clamp(fraction, 0.0, 1.0) * (Maximum() - Minimum());
}

void CWSlide::DrawFace(QPainter& painter) const {
  const auto colours = ColoursFor(*this);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.45), 1));
  painter.setBrush(colours.paper);
  painter.drawRoundedRect(Groove(), GrooveWidth / 2, GrooveWidth / 2);

  const double length = IsUpright() ? Groove().height() : Groove().width();
  const double major = MarkStep(Maximum() - Minimum(), std::max(2, static_cast<int>(length / 48)));
  const auto readable = ColoursOf(palette()).text;
  const auto window = palette().color(QPalette::Window);
  painter.setPen(isEnabled() ? palette().color(QPalette::WindowText) : Blend(window, readable, 0.6));
  for (const double mark : Marks(Minimum(), Maximum(), major / 4)) {
    const bool isMajor = std::abs(mark / major - std::round(mark / major)) < 0.01;
    const double tick = isMajor ? MajorLength : MinorLength;
    const QPointF out = IsUpright() ? QPointF(1, 0) : QPointF(0, 1);
    const QPointF from = PlaceOf(FractionOf(mark)) + out * (KnobBreadth / 2 + TickGap);
    painter.drawLine(from, from + out * tick);
    if (!isMajor) continue;
    const auto number = QString::number(mark);
    const QPointF at = from + out * (tick + 3);
    if (IsUpright()) {
      painter.drawText(QRectF(at.x(), at.y() - 20, 60, 40), Qt::AlignLeft | Qt::AlignVCenter, number);
    } else {
      painter.drawText(QRectF(at.x() - 30, at.y(), 60, 40), Qt::AlignHCenter | Qt::AlignTop, number);
    }
  }
}

void CWSlide::DrawPointer(QPainter& painter) const {
  const auto colours = ColoursFor(*this);
  const QPointF place = PlaceOf(Fraction());
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.series);
  painter.drawRoundedRect(
      QRectF(PlaceOf(0), place)
          .normalized()
          .adjusted(IsUpright() ? -GrooveWidth / 2 + 1 : 0, IsUpright() ? 0 : -GrooveWidth / 2 + 1,
                    IsUpright() ? GrooveWidth / 2 - 1 : 0, IsUpright() ? 0 : GrooveWidth / 2 - 1),
      2, 2);

  QRectF knob(0, 0, IsUpright() ? KnobBreadth : KnobLength, IsUpright() ? KnobLength : KnobBreadth);
  if (readOnly_) knob.setSize(IsUpright() ? QSizeF(KnobBreadth, 4) : QSizeF(4, KnobBreadth));
  knob.moveCenter(place);
  painter.setPen(QPen(readOnly_    ? colours.series
                      : hasFocus() ? colours.focus
                                   : Blend(colours.paper, colours.text, 0.6),
                      hasFocus() ? 2 : 1));
  painter.setBrush(readOnly_ ? colours.series : colours.paper);
  painter.drawRoundedRect(knob, 3, 3);
  if (!readOnly_) {
    const QPointF half = IsUpright() ? QPointF(KnobBreadth / 2 - 4, 0) : QPointF(0, KnobBreadth / 2 - 4);
    painter.setPen(QPen(colours.series, 2));
    painter.drawLine(place - half, place + half);
  }

  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  painter.drawText(QRectF(0, 0, width(), fontMetrics().height() + 2.0),
                   Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, ValueText());
}

void CWSlide::MoveByUser(double value) {
  if (readOnly_ || !isEnabled() || std::isnan(value)) return;
  const double stepped = std::round(std::clamp(value, Minimum(), Maximum()) / step_) * step_;
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

void CWSlide::mouseReleaseEvent(QMouseEvent*) {
  dragging_ = false;
}

// Touch pads send parts of a notch; they are gathered until they make a step.
void CWSlide::wheelEvent(QWheelEvent* event) {
  if (readOnly_ || !hasFocus()) return event->ignore();
  wheelRest_ += event->angleDelta().y() / NotchDegrees * 3;
  const double steps = std::trunc(wheelRest_);
  wheelRest_ -= steps;
  if (steps != 0) MoveByUser(Value() + steps * step_);
}

void CWSlide::keyPressEvent(QKeyEvent* event) {
  const double page = std::max(step_, (Maximum() - Minimum()) / PagesInScale);
  const double from = std::isnan(Value()) ? 0 : std::clamp(Value(), Minimum(), Maximum());
  const auto wanted = [&]() -> std::optional<double> {
    switch (event->key()) {
      case Qt::Key_Up:
      case Qt::Key_Right:
        return from + step_;
      case Qt::Key_Down:
      case Qt::Key_Left:
        return from - step_;
      case Qt::Key_PageUp:
        return from + page;
      case Qt::Key_PageDown:
        return from - page;
      case Qt::Key_Home:
        return Minimum();
      case Qt::Key_End:
        return Maximum();
      default:
        return std::nullopt;
    }
  }();
  if (!wanted || readOnly_ || event->modifiers().testFlag(Qt::ControlModifier))
    return QWidget::keyPressEvent(event);
  MoveByUser(*wanted);
}

void CWSlide::focusInEvent(QFocusEvent* event) {
  update();
  QWidget::focusInEvent(event);
}

void CWSlide::focusOutEvent(QFocusEvent* event) {
  update();
  QWidget::focusOutEvent(event);
}

}  // namespace bexlow::platform
