#include "shell/Emblem.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

#include <cmath>

namespace bexlow::shell {

QPixmap DrawEmblem(int side, double devicePixelRatio) {
  QPixmap pixmap(QSize(side, side) * devicePixelRatio);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(QStringLiteral(":/bexlow.svg")).render(&painter, QRectF(0, 0, side, side));
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
  painter.setPen(QPen(QColor(0xe6, 0x9f, 0x00), 2));
  painter.drawPath(path);
}

}  // namespace bexlow::shell
