#include "platform/graph/CWGraphLimit.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/graph/CWGraphSeries.h"
#include "platform/graph/CWGraphView.h"

namespace bexlow::platform {

namespace {

constexpr double Reach = 4;  // greatest distance of a press from the line, in pixels

double WholeWithin(double value, double lower, double upper) {
  const double least = std::ceil(lower);
  return std::clamp(std::round(value), least, std::max(least, std::floor(upper)));
}

// Across the whole width, at a value of the y axis.
void Fasten(QCPItemPosition& position, QCPAxisRect& area) {
  position.setAxisRect(&area);
  position.setTypeX(QCPItemPosition::ptAxisRectRatio);
  position.setTypeY(QCPItemPosition::ptPlotCoords);
}

}  // namespace

CWGraphLimit::CWGraphLimit(QCustomPlot& plot, const CWGraphAxis& yAxis)
    : plot_(plot), yAxis_(yAxis), line_(new QCPItemStraightLine(&plot)), label_(new QCPItemText(&plot)) {
  for (auto* position : {line_->point1, line_->point2, label_->position}) Fasten(*position, *plot.axisRect());
  label_->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  label_->setClipToAxisRect(false);  // it stands in the right margin
  label_->setPadding({4, 0, 4, 0});
  QObject::connect(plot.yAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), label_,
                   [this] { FollowView(); });
  Set(std::nullopt);
}

void CWGraphLimit::Set(std::optional<double> value) {
  value_ = value;
  line_->setVisible(value.has_value());
  FollowView();
  if (!value) return;
  line_->point1->setCoords(0, *value);
  line_->point2->setCoords(1, *value);
  label_->position->setCoords(1, *value);
  label_->setText(CWGraphNumber(*value) + QStringLiteral("°"));
}

void CWGraphLimit::FollowView() {
  label_->setVisible(value_ && plot_.yAxis->range().contains(*value_));
}

bool CWGraphLimit::IsNear(double y) const {
  return value_ && plot_.yAxis->range().contains(*value_) &&
         std::abs(plot_.yAxis->coordToPixel(*value_) - y) <= Reach;
}

void CWGraphLimit::Place(double value) {
  const auto drawn = plot_.yAxis->range();
  const auto whole = yAxis_.Whole();
  Set(WholeWithin(WholeWithin(value, drawn.lower, drawn.upper), whole.lower, whole.upper));
}

void CWGraphLimit::DragTo(double y) {
  Place(plot_.yAxis->pixelToCoord(y));
}

void CWGraphLimit::Step(double units) {
  if (value_) Place(*value_ + units);
}

void CWGraphLimit::SetColours(const QColor& line, const QColor& paper) {
  line_->setPen(QPen(line, 1, Qt::DashLine));
  label_->setColor(paper);
  label_->setBrush(line);
}

}  // namespace bexlow::platform
