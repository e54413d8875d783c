#include "platform/instruments/CWKnob.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

// All lengths are shares of the dial's radius.
constexpr double RimWidth = 0.03;
constexpr double ScaleRadius = 0.90;
constexpr double MajorLength = 0.12;
constexpr double MinorLength = 0.06;
constexpr double NumberRadius = 0.635;
constexpr double NumberHeight = 0.15;
constexpr double PointerLength = 0.84;
constexpr double HubRadius = 0.08;
constexpr double ValueHeight = 0.2;
constexpr double ValueBelowCentre = 0.32;  // the middle of the window that shows the value
constexpr double WindowWidth = 0.84;
constexpr double WindowHeight = 0.26;

constexpr int ScaleMarkDegrees = 30;  // of the arc between two long marks, roughly

double RadiusOf(const QWidget& widget) {
  return std::min(widget.width(), widget.height()) / 2.0 - 1;
}

// Centre at 0, 0 and radius 1, in a square in the middle of the widget.
void EnterDial(QPainter& painter, const QWidget& widget) {
  painter.translate(widget.width() / 2.0, widget.height() / 2.0);
  painter.scale(RadiusOf(widget), RadiusOf(widget));
}

// Clockwise from nine o'clock, on a screen whose y runs down.
QPointF OnCircle(double degrees, double radius) {
  const double angle = (degrees + 180) * std::numbers::pi / 180;
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

void DrawCentred(QPainter& painter, QPointF centre, double height, const QString& text) {
  constexpr double Zoom = 100;  // fonts have no sizes below one
  QFont font = painter.font();
  font.setPixelSize(std::max(1, static_cast<int>(height * Zoom)));
  painter.save();
  painter.setFont(font);
  painter.translate(centre);
  painter.scale(1 / Zoom, 1 / Zoom);
  painter.drawText(QRectF(-100, -50, 200, 100), Qt::AlignCenter | Qt::TextDontClip, text);
  painter.restore();
}

}  // namespace

CWKnob::CWKnob(QWidget* parent) : Instrument(parent, QStringLiteral("°")) {
  SetScale(-179.99, 179.99, 270, 359.9);
  auto policy = QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void CWKnob::SetScale(double minimum, double maximum, double startDegrees, double arcDegrees) {
  startDegrees_ = startDegrees;
  arcDegrees_ = arcDegrees;
  SetRange(minimum, maximum, 1);
}

QSize CWKnob::sizeHint() const {
  return {190, 190};
}
QSize CWKnob::minimumSizeHint() const {
  return {130, 130};
}

double CWKnob::AngleAt(double fraction) const {
  return startDegrees_ + fraction * arcDegrees_;
}

// The needle and the window lie within the circle of the needle's point.
QRect CWKnob::MovingArea() const {
  const double reach = RadiusOf(*this) * PointerLength;
  QRectF area(0, 0, 2 * reach, 2 * reach);
  area.moveCenter(QRectF(rect()).center());
  return area.toAlignedRect().adjusted(-1, -1, 1, 1);
}

void CWKnob::DrawFace(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  EnterDial(painter, *this);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.35), RimWidth));
  painter.setBrush(colours.paper);
  painter.drawEllipse(QPointF(), 1 - RimWidth / 2, 1 - RimWidth / 2);
  DrawScale(painter);
  DrawNumbers(painter);
}

void CWKnob::DrawScale(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  const QRectF circle(-ScaleRadius, -ScaleRadius, 2 * ScaleRadius, 2 * ScaleRadius);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.5), 0.015, Qt::SolidLine, Qt::FlatCap));
  constexpr double Sixteenths = 16;  // the unit of Qt's arcs, which run against the clock from three o'clock
  painter.drawArc(circle, static_cast<int>((180 - startDegrees_) * Sixteenths),
                  static_cast<int>(-arcDegrees_ * Sixteenths));

  const double major = MarkStep(Maximum() - Minimum(), static_cast<int>(arcDegrees_ / ScaleMarkDegrees));
  constexpr int MinorsInMajor = 3;
  for (const double mark : Marks(Minimum(), Maximum(), major / MinorsInMajor)) {
    const bool isMajor = std::abs(mark / major - std::round(mark / major)) < 0.01;
    const double angle = AngleAt(FractionOf(mark));
    painter.setPen(QPen(colours.text, isMajor ? 0.022 : 0.012, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnCircle(angle, ScaleRadius),
                     OnCircle(angle, ScaleRadius - (isMajor ? MajorLength : MinorLength)));
  }
}

// On a full circle only every second number fits, and only one where both ends meet.
void CWKnob::DrawNumbers(QPainter& painter) const {
  painter.setPen(ColoursOf(*this).text);
  const bool isFullCircle = arcDegrees_ > 350;
  const double marks = arcDegrees_ / ScaleMarkDegrees / (isFullCircle ? 2 : 1);
  const double step = MarkStep(Maximum() - Minimum(), static_cast<int>(marks));
  for (const double mark : Marks(Minimum(), Maximum(), step)) {
    if (isFullCircle && mark < Minimum() + step / 2) continue;
    const bool isMeeting = isFullCircle && mark > Maximum() - step / 2 && Maximum() == -Minimum();
    const auto text = isMeeting ? QStringLiteral("±%1").arg(mark) : QString::number(mark);
    DrawCentred(painter, OnCircle(AngleAt(FractionOf(mark)), NumberRadius), NumberHeight, text);
  }
}

// The value stands in a window above the needle, so that it can be read wherever the needle points.
void CWKnob::DrawValue(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  QRectF window(0, 0, WindowWidth, WindowHeight);
  window.moveCenter({0, ValueBelowCentre});
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.3), 0.012));
  painter.setBrush(colours.paper);
  painter.drawRoundedRect(window, 0.05, 0.05);
  painter.setPen(colours.text);
  DrawCentred(painter, window.center(), ValueHeight, ValueText());
}

void CWKnob::DrawPointer(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  EnterDial(painter, *this);
  const double angle = AngleAt(Fraction());
  QPainterPath needle(OnCircle(angle, PointerLength));
  needle.lineTo(OnCircle(angle + 90, HubRadius * 0.6));
  needle.lineTo(OnCircle(angle + 180, HubRadius * 2));
  needle.lineTo(OnCircle(angle - 90, HubRadius * 0.6));
  needle.closeSubpath();
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours.series);
  painter.drawPath(needle);
  painter.drawEllipse(QPointF(), HubRadius, HubRadius);
  painter.setBrush(colours.paper);
  painter.drawEllipse(QPointF(), HubRadius / 2, HubRadius / 2);
  DrawValue(painter);
}

}  // namespace bexlow::platform
