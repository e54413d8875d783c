#include "platform/graph/CWGraphReadOut.h"

#include <QLabel>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/graph/CWGraphOverlay.h"
#include "platform/graph/CWGraphView.h"

namespace bexlow::platform {

namespace {

QString Hint() {
  return QStringLiteral("Wheel: zoom   Drag: move   Right drag: zoom in   Double click: show all");
}

}  // namespace

CWGraphReadOut::CWGraphReadOut(const CWGraphSeries& series, QCustomPlot& plot, CWGraphView& view,
                               CWGraphOverlay& overlay, QLabel& words)
    : series_(series), plot_(plot), view_(view), overlay_(overlay), words_(words) {}

void CWGraphReadOut::Renew(CWGraphSeries::Style style, std::optional<double> rate) {
  style_ = style;
  rate_ = rate;
  Forget();
}

void CWGraphReadOut::Forget() {
  index_.reset();
  words_.setText(series_.IsEmpty() ? QString() : Hint());
  Refresh();
}

void CWGraphReadOut::PointAt(QPointF place) {
  const auto area = plot_.axisRect()->rect();
  const auto found = area.contains(place.toPoint())
                         ? series_.Nearest(plot_.xAxis->pixelToCoord(place.x()), style_)
                         : std::nullopt;
  if (found) return Read(*found);
  if (index_) Forget();
}

std::size_t CWGraphReadOut::Start() const {
  return index_.value_or(series_.Nearest(view_.X.View().Middle(), style_).value_or(0));
}

void CWGraphReadOut::Step(std::ptrdiff_t points) {
  if (series_.IsEmpty()) return;
  Read(index_ ? series_.Beyond(Start(), points, style_) : Start());
  KeepInSight();
}

void CWGraphReadOut::StepToEnd(bool last) {
  if (series_.IsEmpty()) return;
  Read(last ? series_.Size() - 1 : 0);
  KeepInSight();
}

void CWGraphReadOut::Read(std::size_t index) {
  index_ = index;
  words_.setText(series_.PointText(index, style_, rate_));
  Refresh();
}

void CWGraphReadOut::KeepInSight() {
  if (view_.X.Include(series_.X(*index_)) && view_.Changed) view_.Changed();
}

std::optional<QPointF> CWGraphReadOut::Point() const {
  if (!index_ || *index_ >= series_.Size()) return std::nullopt;
  const double value = series_.Values()[*index_];
  return QPointF(series_.X(*index_), std::isnan(value) ? 0 : value);
}

void CWGraphReadOut::Refresh() {
  const auto area = plot_.axisRect()->rect().translated(plot_.pos());
  overlay_.ShowNotice(series_.IsEmpty() ? QStringLiteral("No data") : QString(), area);
  const auto point = Point();
  if (!point) return overlay_.ShowPoint(std::nullopt, area);
  const auto shown =
      QPointF(plot_.xAxis->coordToPixel(point->x()), plot_.yAxis->coordToPixel(point->y())) + plot_.pos();
  const bool isInSight = shown.x() >= area.left() && shown.x() <= area.right() + 1;
  overlay_.ShowPoint(isInSight ? std::optional(shown) : std::nullopt, area);
}

}  // namespace bexlow::platform
