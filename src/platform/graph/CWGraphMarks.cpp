// What is marked on a graph: cursors, the limit, the point read out.
#include <QLabel>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraph.h"

namespace bexlow::platform {

namespace {

constexpr double MarkSize = 8;       // of a diamond, in pixels; less than its half apart only one is drawn
constexpr double DenseDistance = 5;  // pixels; below this mean distance of marks the lines are drawn faint
constexpr float DenseOpacity = 0.3F;
constexpr double ClickReach = 5;  // greatest distance of a click from a cursor, in pixels
constexpr double LimitReach = 4;  // of a press from the limit
constexpr double PointSize = 10;

// Along one axis at a value, along the other from frame to frame.
void Fasten(QCPItemPosition& position, QCPItemPosition::PositionType x, QCPItemPosition::PositionType y) {
  position.setTypeX(x);
  position.setTypeY(y);
}

double WholeWithin(double value, double lower, double upper) {
  const double least = std::ceil(lower);
  return std::clamp(std::round(value), least, std::max(least, std::floor(upper)));
}

// At most: the margins are not yet known when a resized plot is about to be drawn.
double PixelSize(const QCPAxis& axis) {
  return axis.range().size() / std::max(1, axis.parentPlot()->width());
}

QString Hint() {
  return QStringLiteral(
      "Wheel: zoom   Drag: move   Right drag: zoom in   Double click: whole run   Right click: report, "
      "pictures and more");
}

}  // namespace

// They come first, so that the curve is drawn over them.
void CWGraph::BuildCursors() {
  auto* height = plot_->axisRect()->addAxis(QCPAxis::atLeft);
  height->setVisible(false);
  height->setRange(0, 1);
  cursorLines_ = new QCPGraph(plot_->xAxis, height);
  cursorLines_->setLineStyle(QCPGraph::lsImpulse);
  cursorMarks_ = new QCPGraph(plot_->xAxis, plot_->yAxis);
  cursorMarks_->setLineStyle(QCPGraph::lsNone);
  cursorLines_->setAntialiased(false);
  cursorMarks_->setAntialiasedScatters(false);
  stressedLine_ = new QCPItemLine(plot_);
  stressedLine_->setAntialiased(false);
  for (auto* end : {stressedLine_->start, stressedLine_->end}) end->setAxes(plot_->xAxis, height);
}

void CWGraph::BuildMarks() {
  constexpr auto Ratio = QCPItemPosition::ptAxisRectRatio;
  constexpr auto Value = QCPItemPosition::ptPlotCoords;
  limitLine_ = new QCPItemStraightLine(plot_);
  limitLabel_ = new QCPItemText(plot_);
  pointLine_ = new QCPItemStraightLine(plot_);
  pointMark_ = new QCPItemTracer(plot_);
  notice_ = new QCPItemText(plot_);
  rectangle_ = new QCPItemRect(plot_);
  for (auto* position : {limitLine_->point1, limitLine_->point2, limitLabel_->position})
    Fasten(*position, Ratio, Value);
  for (auto* position : {pointLine_->point1, pointLine_->point2}) Fasten(*position, Value, Ratio);
  Fasten(*notice_->position, Ratio, Ratio);
  notice_->position->setCoords(0.5, 0.5);
  notice_->setText(tr("No data"));
  notice_->setPadding({6, 2, 6, 2});
  for (auto* corner : {rectangle_->topLeft, rectangle_->bottomRight})
    corner->setType(QCPItemPosition::ptAbsolute);
  limitLabel_->setPositionAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  limitLabel_->setClipToAxisRect(false);  // it stands in the right margin
  limitLabel_->setPadding({4, 0, 4, 0});
  pointMark_->setStyle(QCPItemTracer::tsCircle);
  pointMark_->setSize(PointSize);
  plot_->addLayer("point");
  plot_->layer("point")->setMode(QCPLayer::lmBuffered);  // redrawn without the rest, as the overlay
  pointLine_->setLayer("point");
  pointMark_->setLayer("point");
  limitLine_->setLayer("overlay");
  limitLabel_->setLayer("overlay");
  notice_->setLayer("overlay");
  rectangle_->setLayer("overlay");
  limitLine_->setVisible(false);
  rectangle_->setVisible(false);
}

void CWGraph::ColourMarks(const QPalette& palette) const {
  const auto colours = ColoursOf(palette, palette.currentColorGroup());
  const auto quiet = Blend(colours.paper, colours.text, 0.75);
  auto fill = colours.hint;
  fill.setAlphaF(0.15F);
  cursorMarks_->setPen(QPen(colours.mark, 1));
  stressedLine_->setPen(QPen(colours.mark, 3, Qt::SolidLine, Qt::FlatCap));
  limitLine_->setPen(QPen(colours.hint, 1, Qt::DashLine));
  limitLabel_->setColor(colours.paper);
  limitLabel_->setBrush(colours.hint);
  pointLine_->setPen(QPen(quiet, 1, Qt::DotLine));
  pointMark_->setPen(QPen(colours.text, 2));
  notice_->setColor(quiet);
  notice_->setBrush(colours.paper);  // the limit does not strike it through
  rectangle_->setPen(QPen(colours.hint, 1));
  rectangle_->setBrush(fill);
}

void CWGraph::SetCursors(std::vector<double> places) {
  cursors_ = std::move(places);
  placed_ = cursors_;
  std::erase_if(placed_, [](double x) { return !std::isfinite(x); });
  if (!std::ranges::is_sorted(placed_)) std::ranges::sort(placed_);
  DrawSoon();
}

void CWGraph::StressCursor(std::optional<double> x) {
  stressed_ = x;
  DrawSoon();
}

// One line in a column of pixels is enough, and one mark in four: a hundred thousand cursors cost no more
// than a hundred.
void CWGraph::FitCursors() const {
  const auto view = plot_->xAxis->range();
  const double pixel = PixelSize(*plot_->xAxis);
  QVector<QCPGraphData> lines, marks;
  for (auto at = std::ranges::lower_bound(placed_, view.lower); at != placed_.end() && *at <= view.upper;) {
    lines << QCPGraphData(*at, 1);
    if (marks.isEmpty() || *at - marks.last().key >= MarkSize / 2 * pixel) marks << QCPGraphData(*at, 0);
    const double next = view.lower + (std::floor((*at - view.lower) / pixel) + 1) * pixel;
    at = std::lower_bound(at + 1, placed_.end(), next);
  }
  auto colour = cursorMarks_->pen().color();
  const bool isDense = static_cast<double>(marks.size()) * DenseDistance * pixel > view.size();
  colour.setAlphaF(isDense ? DenseOpacity : 1);
  cursorLines_->setPen(QPen(colour, 1));
  cursorMarks_->setScatterStyle({QCPScatterStyle::ssDiamond, colour, colour, MarkSize});
  cursorLines_->data()->set(lines, true);
  cursorMarks_->data()->set(marks, true);
  stressedLine_->setVisible(stressed_ && cursors_.size() > 1);
  stressedLine_->start->setCoords(stressed_.value_or(0), 0);
  stressedLine_->end->setCoords(stressed_.value_or(0), 1);
}

std::optional<double> CWGraph::CursorNear(double pixel) const {
  std::optional<double> nearest;
  double least = ClickReach;
  for (const double x : placed_) {
    const double distance = std::abs(plot_->xAxis->coordToPixel(x) - pixel);
    if (distance > least) continue;
    least = distance;
    nearest = x;
  }
  return nearest;
}

void CWGraph::SetLimit(std::optional<double> value) {
  limit_ = value;
  limitLine_->setVisible(value.has_value());
  if (value) {
    limitLine_->point1->setCoords(0, *value);
    limitLine_->point2->setCoords(1, *value);
    limitLabel_->position->setCoords(1, *value);
    limitLabel_->setText(CWGraphNumber(*value) + Unit());
  }
  numbers_->setVisible(value.has_value());  // not with its words, which are made while the plot is drawn
  FitMargins();
  DrawSoon();
}

bool CWGraph::IsOnLimit(QPoint place) const {
  return limit_ && plot_->yAxis->range().contains(*limit_) &&
         std::abs(plot_->yAxis->coordToPixel(*limit_) - place.y()) <= LimitReach;
}

// To the nearest whole number within the view and the full scale.
void CWGraph::MoveLimit(double value) {
  const auto drawn = plot_->yAxis->range();
  const auto whole = y_.Whole();
  SetLimit(WholeWithin(WholeWithin(value, drawn.lower, drawn.upper), whole.lower, whole.upper));
}

bool CWGraph::Counts(std::ptrdiff_t index) const {
  if (index < 0 || index >= std::ssize(values_)) return false;
  const double value = values_[static_cast<std::size_t>(index)];
  return value != 0 && !std::isnan(value);
}

// A bin with a count is preferred to empty neighbours.
std::size_t CWGraph::Nearest(double x) const {
  const double last = static_cast<double>(values_.size() - 1);
  const auto nearest = static_cast<std::ptrdiff_t>(std::clamp(std::round((x - firstX_) / stepX_), 0.0, last));
  if (style_ == PlotStyle::Bin) {
    for (const std::ptrdiff_t distance : {0, -1, 1, -2, 2})
      if (Counts(nearest + distance)) return static_cast<std::size_t>(nearest + distance);
  }
  return static_cast<std::size_t>(nearest);
}

// At most the last or first; bins without a count are skipped.
std::size_t CWGraph::Beyond(std::size_t index, std::ptrdiff_t points) const {
  const std::ptrdiff_t direction = points < 0 ? -1 : 1;
  auto reached = static_cast<std::ptrdiff_t>(index);
  auto left = std::abs(points);
  for (auto i = reached + direction; left > 0 && i >= 0 && i < std::ssize(values_); i += direction) {
    if (style_ == PlotStyle::Bin && !Counts(i)) continue;
    reached = i;
    --left;
  }
  return static_cast<std::size_t>(reached);
}

std::optional<QPointF> CWGraph::PointRead() const {
  if (!read_) return std::nullopt;
  const double value = values_[*read_];
  return QPointF(X(*read_), std::isnan(value) ? 0 : value);
}

// Linked graphs read out the same sample.
void CWGraph::Read(std::optional<std::size_t> index) {
  for (const auto& graph : linked_)
    if (graph && (linkActive_ || graph == this)) graph->ShowPoint(index);
}

void CWGraph::ShowPoint(std::optional<std::size_t> index) {
  read_ = index && *index < values_.size() ? index : std::nullopt;
  const auto point = PointRead();
  if (point) {
    pointMark_->position->setCoords(*point);
    pointLine_->point1->setCoords(point->x(), 0);
    pointLine_->point2->setCoords(point->x(), 1);
  }
  words_->setText(read_ ? PointText(*read_) : values_.empty() ? QString() : Hint());
  auto* layer = plot_->layer("point");
  if (!point && !layer->visible()) return;
  layer->setVisible(point.has_value());
  if (isVisible()) layer->replot();
}

void CWGraph::PointAt(QPoint place) {
  const bool isInside = plot_->axisRect()->rect().contains(place) && !values_.empty();
  if (!isInside && !read_) return;
  Read(isInside ? std::optional(Nearest(plot_->xAxis->pixelToCoord(place.x()))) : std::nullopt);
}

// Starts in the middle of the view.
void CWGraph::Step(std::ptrdiff_t points) {
  if (!values_.empty()) ReadInSight(read_ ? Beyond(*read_, points) : Nearest(XView().Middle()));
}

void CWGraph::ReadInSight(std::size_t index) {
  if (values_.empty()) return;
  index = std::min(index, values_.size() - 1);
  const bool isPlace = style_ == PlotStyle::Linear || Counts(static_cast<std::ptrdiff_t>(index));
  Read(isPlace ? index : Beyond(index, index == 0 ? 1 : -1));
  x_.Include(X(*read_));
}

}  // namespace bexlow::platform
