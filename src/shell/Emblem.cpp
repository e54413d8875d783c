#include "shell/Emblem.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace bexlow::shell {

namespace {

const QColor Ground(0x1f, 0x4e, 0x79);
const QColor Upright(0x9f, 0xc5, 0xe8);
const QColor Body(0xff, 0xff, 0xff);
const QColor Signal(0xe6, 0x9f, 0x00);

// All lengths are hundredths of the side.
void Draw(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(Ground);
  painter.drawRoundedRect(QRectF(0, 0, 100, 100), 22, 22);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(Upright, 3, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(40, 86), QPointF(40, 14));
  painter.setPen(QPen(Signal, 4, Qt::SolidLine, Qt::RoundCap));
  painter.drawArc(QRectF(-20, 22, 120, 120), 86 * 16, -20 * 16);
  painter.translate(40, 86);
  painter.rotate(30);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Body);
  painter.drawRoundedRect(QRectF(-12, -54, 24, 50), 8, 8);
  painter.setBrush(Signal);
  painter.drawEllipse(QPointF(0, -42), 5, 5);
}

}  // namespace

QPixmap DrawEmblem(int side, double devicePixelRatio) {
  QPixmap pixmap(QSize(side, side) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(side / 100.0, side / 100.0);
  Draw(painter);
  return pixmap;
}

Emblem::Emblem(const char* name, int side, QWidget* parent) : QWidget(parent), side_(side) {
  setObjectName(name);
  setFixedSize(side, side);
}

void Emblem::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawPixmap(0, 0, DrawEmblem(side_, devicePixelRatioF()));
}

Trace::Trace(const char* name, QSize size, QWidget* parent) : QWidget(parent) {
  setObjectName(name);
  setFixedSize(size);
}

void Trace::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Mid), 1));
  for (const int y : {2, height() - 3}) painter.drawLine(0, y, width(), y);
  QPainterPath path;
  for (int x = 0; x <= width(); x += 4) {
    const double t = 12.0 * x / width();
    const double y = height() / 2.0 - height() / 5.0 * (std::sin(t) + 0.35 * std::sin(3.1 * t));
    if (x == 0)
      path.moveTo(x, y);
    else
      path.lineTo(x, y);
  }
  painter.setPen(QPen(Signal, 2));
  painter.drawPath(path);
}

}  // namespace bexlow::shell
