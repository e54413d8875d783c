#include "platform/controls/CWKnob.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

// All lengths are hundredths of the dial's radius. From the rim inwards: numbers, marks, the needle's point.
constexpr double Rim = 100;
constexpr double RimWidth = 3;
constexpr double NumberRadius = 81;
constexpr int NumberHeight = 13;
constexpr double ScaleRadius = 55;
constexpr double MajorLength = 9;
constexpr double MinorLength = 4.5;
constexpr double PointerLength = 53;
constexpr double HubRadius = 7;

constexpr int LongMarkDegrees = 30;
constexpr int MarkDegrees = 10;

// Centre at 0, 0.
void EnterDial(QPainter& painter, const CWKnob& knob) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(knob.Centre());
  painter.scale(knob.Radius() / Rim, knob.Radius() / Rim);
}

// Clockwise from the top, on a screen whose y runs down.
QPointF OnCircle(double degrees, double radius) {
  const double angle = (degrees - 90) * std::numbers::pi / 180;
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

QRectF Around(QPointF centre, double radius) {
  return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
}

}  // namespace

CWKnob::CWKnob(QWidget* parent, double end, double arcDegrees)
    : QWidget(parent), end_(end), arcDegrees_(arcDegrees) {
  ValueAccess<CWKnob>::Install();
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CWKnob::Value(double value) {
  const double shown = std::abs(value) < 0.05 ? 0 : value;  // no "-0.0"
  Value(value, std::abs(value) < 1e6 ? QString::number(shown, 'f', 1) : QString::number(value, 'g', 4));
}

// What cannot be seen is not drawn: samples come faster than frames.
void CWKnob::Value(double value, const QString& number) {
  value_ = value;
  if (std::exchange(number_, number) == number) return;
  const auto needle = Around(Centre(), Radius() * PointerLength / Rim).toAlignedRect().adjusted(-1, -1, 1, 1);
  const int foot = static_cast<int>(Centre().y() + Radius());
  update(QRegion(needle) + QRect(0, foot, width(), height() - foot));
  QAccessibleValueChangeEvent event(this, value);
  QAccessible::updateAccessibility(&event);
}

QFont CWKnob::NumberFont() const {
  auto larger = font();
  larger.setPixelSize(std::max(QFontInfo(font()).pixelSize() * 7 / 5, std::min(width(), height()) / 12));
  return larger;
}

double CWKnob::Radius() const {
  return std::max(1.0, std::min<double>(width(), height() - NumberRoom()) / 2 - 1);
}

double CWKnob::AngleAt(double value) const {
  return std::clamp(std::isnan(value) ? 0 : value, -end_, end_) / end_ * arcDegrees_ / 2;
}

void CWKnob::DrawFace(QPainter& painter) const {
  EnterDial(painter, *this);
  const auto colours = ColoursOf(*this);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.35), RimWidth));
  painter.setBrush(colours.paper);
  painter.drawEllipse(Around({}, Rim - RimWidth / 2));
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.5), 1.5, Qt::SolidLine, Qt::FlatCap));
  constexpr double Sixteenths = 16;  // the unit of Qt's arcs, which run against the clock from three o'clock
  painter.drawArc(Around({}, ScaleRadius), static_cast<int>((90 + arcDegrees_ / 2) * Sixteenths),
                  static_cast<int>(-arcDegrees_ * Sixteenths));
  auto numberFont = font();
  numberFont.setPixelSize(NumberHeight);
  painter.setFont(numberFont);
  const bool isCircle = arcDegrees_ > 350;  // the number where both ends meet stands once
  const int last = static_cast<int>(std::round(end_ / MarkDegrees)) * MarkDegrees;
  for (int mark = -last; mark <= last; mark += MarkDegrees) {
    const bool isLong = mark % LongMarkDegrees == 0;
    const double angle = AngleAt(mark);
    painter.setPen(QPen(colours.text, isLong ? 2.2 : 1.2, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnCircle(angle, ScaleRadius),
                     OnCircle(angle, ScaleRadius + (isLong ? MajorLength : MinorLength)));
    if (!isLong || (isCircle && mark == -last)) continue;
    painter.drawText(Around(OnCircle(angle, NumberRadius), Rim), Qt::AlignCenter,
                     (isCircle && mark == last ? "±" : "") + QString::number(mark));
  }
}

void CWKnob::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  face_.Draw(painter, *this, [this](QPainter& face) { DrawFace(face); });
  painter.setFont(NumberFont());
  painter.drawText(QRectF(0, Centre().y() + Radius(), width(), NumberRoom()),
                   Qt::AlignCenter | Qt::TextDontClip, ValueText());
  EnterDial(painter, *this);
  const auto colours = ColoursOf(*this);
  const double angle = AngleAt(value_);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.series);
  painter.drawPolygon(QPolygonF{OnCircle(angle, PointerLength), OnCircle(angle + 90, HubRadius * 0.6),
                                OnCircle(angle + 180, HubRadius * 2), OnCircle(angle - 90, HubRadius * 0.6)});
  painter.drawEllipse(Around({}, HubRadius));
  painter.setBrush(colours.paper);
  painter.drawEllipse(Around({}, HubRadius / 2));
}

}  // namespace bexlow::platform
