#include "platform/instruments/Instrument.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace bexlow::platform {

namespace {

constexpr double LongestPlainNumber = 1e6;

class InstrumentAccess : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit InstrumentAccess(Instrument& instrument)
      : QAccessibleWidget(&instrument, instrument.Role()), instrument_(instrument) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? instrument_.ValueText() : QAccessibleWidget::text(kind);
  }

  QAccessible::State state() const override {
    auto state = QAccessibleWidget::state();
    state.readOnly = instrument_.IsReadOnly();
    return state;
  }

  QVariant currentValue() const override {
    const double value = instrument_.Value();
    return std::isnan(value) ? 0.0 : value;
  }
  void setCurrentValue(const QVariant& value) override { instrument_.MoveByUser(value.toDouble()); }
  QVariant maximumValue() const override { return instrument_.Maximum(); }
  QVariant minimumValue() const override { return instrument_.Minimum(); }
  QVariant minimumStepSize() const override { return 0.0; }

 private:
  Instrument& instrument_;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  auto* instrument = qobject_cast<Instrument*>(object);
  return instrument ? new InstrumentAccess(*instrument) : nullptr;
}

}  // namespace

Instrument::Instrument(QWidget* parent, int decimals, const QString& unit)
    : QWidget(parent), decimals_(decimals), unit_(unit), number_(TextOf(0)) {
  QAccessible::installFactory(MakeAccess);  // a second time changes nothing
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void Instrument::Value(double value, const QString& number) {
  value_ = value;
  if (std::exchange(number_, number) == number) return;
  update(MovingArea());  // what cannot be seen is not drawn: samples come faster than frames
}

void Instrument::SetRange(double minimum, double maximum) {
  minimum_ = minimum;
  maximum_ = maximum;
  DropFace();
}

double Instrument::FractionOf(double value) const {
  const double known = std::isnan(value) ? 0 : value;
  return (std::clamp(known, minimum_, maximum_) - minimum_) / (maximum_ - minimum_);
}

void Instrument::ForEachMark(double step, int parts,
                             const std::function<void(double mark, bool isLong)>& draw) const {
  const double slack = (maximum_ - minimum_) / 1000;
  const double part = step / parts;
  for (int i = static_cast<int>(std::ceil((minimum_ - slack) / part)); i * part <= maximum_ + slack; ++i)
    draw(i * part, i % parts == 0);
}

QColor Instrument::WordsColour() const {
  return palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
}

QString Instrument::TextOf(double value) const {
  if (std::isinf(value)) return value > 0 ? QStringLiteral("∞") : QStringLiteral("-∞");
  const double known = std::isnan(value) ? 0 : value;
  if (std::abs(known) >= LongestPlainNumber) return QString::number(known, 'g', 4);
  const double unitStep = std::pow(10.0, -decimals_);
  const double shown = std::abs(known) < unitStep / 2 ? 0 : known;  // no "-0"
  return QString::number(shown, 'f', decimals_);
}

void Instrument::DropFace() {
  face_ = {};
  update();
}

void Instrument::EnsureFace() {
  const double ratio = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * ratio).toSize();
  if (face_.size() == pixels && face_.devicePixelRatio() == ratio) return;
  face_ = QPixmap(pixels);
  face_.setDevicePixelRatio(ratio);
  face_.fill(palette().color(QPalette::Window));
  QPainter painter(&face_);
  // The parent's background is drawn into the face, so that a new value repaints only the instrument.
  if (!isWindow()) parentWidget()->render(&painter, {}, geometry(), DrawWindowBackground);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setFont(font());
  DrawFace(painter);
}

void Instrument::paintEvent(QPaintEvent*) {
  if (size().isEmpty()) return;
  EnsureFace();
  QPainter painter(this);
  painter.drawPixmap(0, 0, face_);
  painter.setRenderHint(QPainter::Antialiasing);
  DrawPointer(painter);
  Announce();
}

// Called only when drawing, so that a chain of 380 samples a second does not flood a screen reader.
void Instrument::Announce() {
  if (!QAccessible::isActive() || announced_ == ValueText()) return;
  announced_ = ValueText();
  QAccessibleValueChangeEvent event(this, value_);
  QAccessible::updateAccessibility(&event);
}

void Instrument::resizeEvent(QResizeEvent*) { DropFace(); }

void Instrument::moveEvent(QMoveEvent*) { DropFace(); }

void Instrument::changeEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::EnabledChange:
    case QEvent::StyleChange:
      DropFace();
      break;
    default:
      break;
  }
  QWidget::changeEvent(event);
}

}  // namespace bexlow::platform
