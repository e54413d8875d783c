#include "platform/graph/CWGraphCurve.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace bexlow::platform {

namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double FinestColumn = 0.125;  // pixels, in PDF, SVG and print
constexpr double BarWidth = 2;
constexpr double HeadRadius = 2.5;
constexpr double DotDistance = 10;  // pixels between samples; from here on each sample is also drawn as a dot

}  // namespace

std::size_t CWGraphCurve::FirstFrom(double place, const Scale& x) const {
  const double index = std::ceil(((place - x.origin) / x.perUnit - series_.X(0)) / series_.StepX());
  return static_cast<std::size_t>(std::clamp(index, 0.0, static_cast<double>(series_.Size())));
}

// With one neighbour beyond each end, so that the line runs on to the frame.
CWGraphCurve::Indices CWGraphCurve::Visible(const Scale& x) const {
  const auto area = clipRect();
  const auto first = FirstFrom(area.left(), x);
  const auto end = FirstFrom(area.right() + 1, x);
  return {first > 0 ? first - 1 : 0, std::min(end + 1, series_.Size())};
}

void CWGraphCurve::draw(QCPPainter* painter) {
  if (series_.IsEmpty() || !mKeyAxis || !mValueAxis) return;
  const auto x = ScaleOf(*mKeyAxis);
  const auto y = ScaleOf(*mValueAxis);
  const auto points = Visible(x);
  if (points.first >= points.end) return;
  if (style_ == CWGraphSeries::Style::Bin) return DrawBars(*painter, x, y, points);
  const double columnWidth = painter->modes().testFlag(QCPPainter::pmVectorized)
                                 ? FinestColumn
                                 : std::clamp(1 / painter->deviceTransform().m11(), FinestColumn, 1.0);
  const double columns = clipRect().width() / columnWidth;
  if (static_cast<double>(points.end - points.first) <= columns) return DrawLine(*painter, x, y, points);
  DrawColumns(*painter, x, y, columnWidth);
}

void CWGraphCurve::DrawLine(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const {
  painter.setAntialiasing(true);
  painter.setPen(mPen);
  painter.setBrush(mPen.color());
  const bool withDots = series_.StepX() * x.perUnit >= DotDistance;
  QPolygonF line;
  const auto flush = [&] {
    if (line.size() > 1) painter.drawPolyline(line);
    if (!withDots && line.size() > 1) return line.clear();
    for (const auto& point : line)
      painter.drawEllipse(point, HeadRadius - 1, HeadRadius - 1);  // also one between gaps
    line.clear();
  };
  for (auto i = points.first; i < points.end; ++i) {
    const double value = series_.Values()[i];
    if (std::isnan(value)) {
      flush();
    } else {
      line.append({x.At(series_.X(i)), y.At(value)});
    }
  }
  flush();
}

// Draws each column from its least to its greatest value, counting the last value of the column before.
void CWGraphCurve::DrawColumns(QCPPainter& painter, const Scale& x, const Scale& y,
                               double columnWidth) const {
  const auto values = series_.Values();
  const auto area = clipRect();
  QVector<QLineF> lines;
  lines.reserve(static_cast<qsizetype>(area.width() / columnWidth) + 1);
  auto from = FirstFrom(area.left(), x);
  for (double column = area.left(); column < area.right() + 1; column += columnWidth) {
    const auto end = FirstFrom(column + columnWidth, x);
    double least = Infinite;
    double greatest = -Infinite;
    for (auto i = from > 0 && from < end ? from - 1 : from; i < end; ++i) {  // nan is never less or greater
      if (values[i] < least) least = values[i];
      if (values[i] > greatest) greatest = values[i];
    }
    from = end;
    if (least > greatest) continue;
    const double middle = column + columnWidth / 2;
    lines.append({middle, y.At(greatest) - 0.5, middle, y.At(least) + 0.5});
  }
  auto pen = mPen;
  pen.setWidthF(columnWidth);
  pen.setCapStyle(Qt::FlatCap);
  painter.setAntialiasing(false);
  painter.setPen(pen);
  painter.drawLines(lines);
}

void CWGraphCurve::DrawBars(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const {
  painter.setAntialiasing(true);
  auto pen = mPen;
  pen.setWidthF(BarWidth);
  pen.setCapStyle(Qt::FlatCap);
  const double ground = y.At(0);
  for (auto i = points.first; i < points.end; ++i) {
    const double value = series_.Values()[i];
    if (value == 0 || std::isnan(value)) continue;
    const QPointF head(x.At(series_.X(i)), y.At(value));
    painter.setPen(pen);
    painter.drawLine(QLineF(head.x(), ground, head.x(), head.y()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(mPen.color());
    painter.drawEllipse(head, HeadRadius, HeadRadius);
  }
}

}  // namespace bexlow::platform
