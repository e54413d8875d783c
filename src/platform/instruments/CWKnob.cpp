#include "platform/instruments/CWKnob.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

// All lengths are shares of the dial's radius. From the rim inwards: numbers, marks, the needle's point.
constexpr double RimWidth = 0.03;
constexpr double NumberRadius = 0.81;
constexpr double NumberHeight = 0.13;
constexpr double ScaleRadius = 0.55;
constexpr double MajorLength = 0.09;
constexpr double MinorLength = 0.045;
constexpr double PointerLength = 0.53;
constexpr double HubRadius = 0.07;

constexpr double LongMarkDegrees = 30;
constexpr int MarksInLong = 3;

// Centre at 0, 0 and radius 1.
void EnterDial(QPainter& painter, const CWKnob& knob) {
  painter.translate(knob.Centre());
  painter.scale(knob.Radius(), knob.Radius());
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

CWKnob::CWKnob(QWidget* parent) : Instrument(parent, 1, QStringLiteral("°")) {
  SetScale(179.99, 270, 359.9);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void CWKnob::SetScale(double end, double startDegrees, double arcDegrees) {
  startDegrees_ = startDegrees;
  arcDegrees_ = arcDegrees;
  SetRange(-end, end);
}

QSize CWKnob::sizeHint() const { return {190, heightForWidth(190)}; }
QSize CWKnob::minimumSizeHint() const { return {130, heightForWidth(130)}; }

QFont CWKnob::NumberFont() const {
  auto larger = font();
  larger.setPointSizeF(QFontInfo(font()).pointSizeF() * 1.4);
  return larger;
}
double CWKnob::NumberRoom() const { return QFontMetrics(NumberFont()).height(); }
double CWKnob::Radius() const {
  return std::max(1.0, std::min<double>(width(), height() - NumberRoom()) / 2 - 1);
}
QPointF CWKnob::Centre() const { return {width() / 2.0, (height() - NumberRoom()) / 2}; }

double CWKnob::AngleAt(double value) const { return startDegrees_ + FractionOf(value) * arcDegrees_; }

QRegion CWKnob::MovingArea() const {
  const double reach = Radius() * PointerLength;
  QRectF needle(0, 0, 2 * reach, 2 * reach);
  needle.moveCenter(Centre());
  const auto number = QRectF(0, Centre().y() + Radius(), width(), height()).toAlignedRect();
  return QRegion(needle.toAlignedRect().adjusted(-1, -1, 1, 1)) + number.intersected(rect());
}

void CWKnob::DrawFace(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  EnterDial(painter, *this);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.35), RimWidth));
  painter.setBrush(colours.paper);
  painter.drawEllipse(QPointF(), 1 - RimWidth / 2, 1 - RimWidth / 2);
  const QRectF circle(-ScaleRadius, -ScaleRadius, 2 * ScaleRadius, 2 * ScaleRadius);
  painter.setPen(QPen(Blend(colours.paper, colours.text, 0.5), 0.015, Qt::SolidLine, Qt::FlatCap));
  constexpr double Sixteenths = 16;  // the unit of Qt's arcs, which run against the clock from three o'clock
  painter.drawArc(circle, static_cast<int>((180 - startDegrees_) * Sixteenths),
                  static_cast<int>(-arcDegrees_ * Sixteenths));
  ForEachMark(LongMarkDegrees, MarksInLong, [&](double mark, bool isLong) {
    const double angle = AngleAt(mark);
    const double reach = ScaleRadius + (isLong ? MajorLength : MinorLength);
    painter.setPen(QPen(colours.text, isLong ? 0.022 : 0.012, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(OnCircle(angle, ScaleRadius), OnCircle(angle, reach));
    if (isLong) DrawCentred(painter, OnCircle(angle, NumberRadius), NumberHeight, NumberAt(mark));
  });
}

// On a full circle the number where both ends meet stands once.
QString CWKnob::NumberAt(double mark) const {
  if (arcDegrees_ < 350 || std::abs(mark) < Maximum()) return QString::number(mark);
  return mark > 0 ? QStringLiteral("±%1").arg(mark) : QString();
}

void CWKnob::DrawPointer(QPainter& painter) const {
  const auto colours = ColoursOf(*this);
  const QRectF number(0, Centre().y() + Radius(), width(), NumberRoom());
  painter.setPen(WordsColour());
  painter.setFont(NumberFont());
  painter.drawText(number, Qt::AlignCenter | Qt::TextDontClip, ValueText());
  EnterDial(painter, *this);
  const double angle = AngleAt(Value());
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
}

}  // namespace bexlow::platform
