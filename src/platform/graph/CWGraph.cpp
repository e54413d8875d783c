#include "platform/graph/CWGraph.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

constexpr double LeastSamplesInView = 4;
constexpr int FocusFrame = 2;
constexpr double BarWidth = 2, HeadSize = 3, DotSize = 2;  // heads and dots without their rim, a pen wide
constexpr double DotDistance = 10;  // pixels between samples; from here on each sample is also drawn as a dot
constexpr int TitleRoom = 8;        // pixels above and below the title of a picture
constexpr int LeastPlotLines = 3;   // of text; a plot that is less high goes without its titles

QLabel* MakeWords(QWidget& parent, Qt::Alignment side) {
  auto* words = new QLabel(&parent);
  words->setIndent(8);
  words->setAlignment(side | Qt::AlignVCenter);
  words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  words->setAttribute(Qt::WA_TransparentForMouseEvents);
  return words;
}

void ColourAxis(QCPAxis& axis, const Colours& colours) {
  const QPen line(Blend(colours.paper, colours.text, 0.55), 1);
  axis.setBasePen(line);
  axis.setTickPen(line);
  axis.setSubTickPen(line);
  axis.setTickLabelColor(colours.text);
  axis.setLabelColor(colours.text);
  axis.grid()->setPen(QPen(colours.faint, 1));
  axis.grid()->setZeroLinePen(QPen(Blend(colours.paper, colours.text, 0.4), 1));
}

bool IsPlace(double x) { return std::isfinite(x) && std::abs(x) <= CWGraphLargest; }

constexpr double DeepestZoom = 1.0 / 500;  // of the whole, where nothing finer is known

CWGraphRange Sound(CWGraphRange range) {
  const auto known = [](double end) {
    return std::isnan(end) ? 0 : std::clamp(end, -CWGraphLargest, CWGraphLargest);
  };
  auto [lower, upper] = std::minmax({known(range.lower), known(range.upper)});
  const double least = std::max(1e-9, std::max(std::abs(lower), std::abs(upper)) * 1e-9);
  if (upper - lower >= least) return {lower, upper};
  return {lower - std::max(0.5, least), upper + std::max(0.5, least)};
}

}  // namespace

void CWGraphAxis::SetWhole(bool autoScale, CWGraphRange given) {
  autoScale_ = autoScale;
  given_ = Sound(given);
  ShowWhole();
}

void CWGraphAxis::SetData(std::optional<CWGraphRange> data, double leastSize) {
  data_ = data;
  leastSize_ = leastSize;
  if (autoScale_) ShowWhole();
}

CWGraphRange CWGraphAxis::Whole() const { return autoScale_ && data_ ? Sound(*data_) : given_; }

void CWGraphAxis::Show(CWGraphRange wanted) {
  if (!std::isfinite(wanted.lower) || !std::isfinite(wanted.upper)) return;
  auto limits = Whole();
  if (data_) limits = {std::min(limits.lower, data_->lower), std::max(limits.upper, data_->upper)};
  const double least = std::min(limits.Size(), leastSize_ > 0 ? leastSize_ : Whole().Size() * DeepestZoom);
  const double size = std::clamp(std::abs(wanted.Size()), least, limits.Size());
  const double lower = std::clamp(wanted.Middle() - size / 2, limits.lower, limits.upper - size);
  const bool isAll = size == limits.Size(), isEnd = lower + size > limits.upper - size * 1e-9;  // by rounding
  ShowExactly(isAll ? limits : CWGraphRange{lower, isEnd ? limits.upper : lower + size});
}

void CWGraphAxis::ShowExactly(CWGraphRange range) {
  view_ = Sound(range);
  const double room = view_.Size() * room_;
  axis_.setRange(view_.lower - room, view_.upper + room);
}

void CWGraphAxis::Zoom(double factor, double anchor) {
  const double held = std::clamp(anchor, view_.lower, view_.upper);
  Show({held + (view_.lower - held) * factor, held + (view_.upper - held) * factor});
}

void CWGraphAxis::Pan(double share) {
  const double way = view_.Size() * share;
  Show({view_.lower + way, view_.upper + way});
}

void CWGraphAxis::Include(double place) {
  if (!view_.Holds(place)) Pan((place - view_.Middle()) / view_.Size());
}

CWGraph::CWGraph(QWidget* parent)
    : QWidget(parent), plot_(new QCustomPlot(this)), x_(*plot_->xAxis, 0.01), y_(*plot_->yAxis, 0.03) {
  InstallAccess();
  BuildPlot();
  BuildCursors();
  curve_ = MakeCurve(plot_->xAxis, plot_->yAxis);
  BuildMarks();
  BuildWords();
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  setMouseTracking(true);
  SetPlotStyle(PlotStyle::Linear);
  FitMargins();
  ApplyColours(palette());
}

// The plot goes while what it calls is still there.
CWGraph::~CWGraph() { delete plot_; }

void CWGraph::BuildPlot() {
  plot_->setAttribute(Qt::WA_TransparentForMouseEvents);  // this widget handles the mouse
  plot_->setFocusPolicy(Qt::NoFocus);
  auto plain = QLocale::c();  // as the numbers in words
  plain.setNumberOptions(QLocale::OmitGroupSeparator);
  plot_->setLocale(plain);
  plot_->setAttribute(Qt::WA_OpaquePaintEvent, false);  // else a paler graph shows what was there before
  plot_->axisRect()->setupFullAxesBox();
  plot_->xAxis2->setTicks(false);
  plot_->yAxis2->setTicks(false);
  connect(plot_, &QCustomPlot::beforeReplot, this, [this] { FitToView(); });
  const auto changed = qOverload<const QCPRange&>(&QCPAxis::rangeChanged);
  connect(plot_->xAxis, changed, this, [this] { FollowView(); });
  connect(plot_->yAxis, changed, this, [this] { DrawSoon(); });
}

void CWGraph::BuildWords() {
  numbers_ = MakeWords(*this, Qt::AlignRight);
  numbers_->hide();
  words_ = MakeWords(*this, Qt::AlignLeft);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(FocusFrame, FocusFrame, FocusFrame, FocusFrame + 2);
  layout->setSpacing(0);
  layout->addWidget(numbers_);
  layout->addWidget(plot_, 1);
  layout->addWidget(words_);
}

void CWGraph::PlotXY(std::vector<double> x, std::vector<double> values) {
  const double way = x.empty() ? 0 : x.back() - x.front();
  places_ = std::move(x);
  TakeSeries(std::move(values), 0, way / std::max(1.0, static_cast<double>(places_.size())));
}

void CWGraph::TakeSeries(std::vector<double> values, double firstX, double stepX) {
  values_ = std::move(values);
  firstX_ = IsPlace(firstX) ? firstX : 0;
  stepX_ = IsPlace(stepX) && stepX > 0 ? stepX : 1;
  double least = std::numeric_limits<double>::infinity(), greatest = -least;
  for (double& value : values_) {
    if (!IsPlace(value))
      value = std::isfinite(value) ? std::copysign(CWGraphLargest, value)
                                   : std::numeric_limits<double>::quiet_NaN();
    least = value < least ? value : least;  // no number is neither
    greatest = value > greatest ? value : greatest;
  }
  valueRange_ = least <= greatest ? std::optional(CWGraphRange{least, greatest}) : std::nullopt;
  RenewCurve();
}

void CWGraph::RenewCurve() {
  const bool isBin = style_ == PlotStyle::Bin;
  QVector<QCPGraphData> points;
  points.reserve(std::ssize(values_));
  auto atBreak = breaks_.begin();
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const bool isBreak = atBreak != breaks_.end() && *atBreak == i;
    if (isBreak) ++atBreak;
    if (isBin && !Counts(static_cast<std::ptrdiff_t>(i))) continue;
    const bool crosses = crossing_ && i > 0 && std::abs(values_[i] - values_[i - 1]) > *crossing_;
    if (!isBin && i > 0 && (crosses || isBreak))
      points << QCPGraphData((X(i - 1) + X(i)) / 2, std::numeric_limits<double>::quiet_NaN());
    points << QCPGraphData(X(i), values_[i]);
  }
  curve_->data()->set(points, true);
  auto range = valueRange_;
  if (range && isBin) range = {std::min(0.0, range->lower), std::max(1.0, range->upper)};
  x_.SetData(values_.empty() ? std::nullopt : std::optional(CWGraphRange{X(0), X(values_.size() - 1)}),
             LeastSamplesInView * stepX_);
  y_.SetData(range, 0);
  notice_->setVisible(values_.empty());
  Read(std::nullopt);
  told_.reset();
  DrawSoon();
}

void CWGraph::SetPlotStyle(PlotStyle style) {
  style_ = style;
  curve_->setLineStyle(style == PlotStyle::Bin ? QCPGraph::lsImpulse : QCPGraph::lsLine);
  RenewTimes();
  RenewCurve();
}

void CWGraph::SetCrossing(std::optional<double> degrees) {
  crossing_ = degrees;
  RenewCurve();
}

void CWGraph::SetAxisTitles(const QString& x, const QString& y) {
  titleX_ = x;
  titleY_ = y;
  DrawSoon();
}

void CWGraph::SetSampleTimes(std::optional<SampleTimes> times) {
  times_ = std::move(times);
  Read(std::nullopt);
  RenewTimes();
}

void CWGraph::ShowTime(bool time) {
  for (const auto& graph : linked_) {
    if (!graph) continue;
    graph->timeShown_ = time;
    graph->RenewTimes();
  }
}

const std::optional<SampleTimes>& CWGraph::Clock() const {
  static const std::optional<SampleTimes> None;
  return timeShown_ && style_ == PlotStyle::Linear ? times_ : None;
}

void CWGraph::SetNumbers(const QString& words) {
  numbers_->setText(words);
  if (!interactive_) numbers_->setVisible(!words.isEmpty());
}

// An edge that differs from a sample by the rounding of doubles shows it.
std::optional<std::pair<std::size_t, std::size_t>> CWGraph::DrawnSamples() const {
  constexpr double Rounding = 1e-6;
  const auto drawn = plot_->xAxis->range();
  const double first = std::max(0.0, std::ceil((drawn.lower - firstX_) / stepX_ - Rounding));
  const double last = std::min(static_cast<double>(values_.size()) - 1,
                               std::floor((drawn.upper - firstX_) / stepX_ + Rounding));
  if (first > last) return std::nullopt;
  return std::pair{static_cast<std::size_t>(first), static_cast<std::size_t>(last)};
}

void CWGraph::LinkXAxis(CWGraph& other) {
  std::erase_if(linked_, [](const auto& graph) { return graph.isNull(); });
  linked_.emplace_back(&other);
  const auto all = linked_;
  for (const auto& graph : all) {
    graph->linked_ = all;
    graph->linkActive_ = true;
  }
}

void CWGraph::SetXLinkActive(bool active) {
  for (const auto& graph : linked_)
    if (graph) graph->linkActive_ = active;
}

// Linked graphs pass it back, which changes nothing and so ends there.
void CWGraph::FollowView() {
  for (const auto& graph : linked_)
    if (linkActive_ && graph && graph != this) graph->x_.ShowExactly(XView());
  DrawSoon();
}

void CWGraph::ShowAll() {
  x_.ShowWhole();
  y_.ShowWhole();
}

void CWGraph::DrawNow() {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  plot_->replot(QCustomPlot::rpImmediateRefresh);
}

// A graph that is not on show is drawn when it is shown.
void CWGraph::DrawSoon() {
  if (isVisible()) plot_->replot(QCustomPlot::rpQueuedReplot);
}

void CWGraph::FitToView() {
  FitTitles(plot_->size());
  FitCursors();
  const double distance = stepX_ * plot_->width() / plot_->xAxis->range().size();
  const double dot = style_ == PlotStyle::Bin ? HeadSize : distance >= DotDistance ? DotSize : 0;
  curve_->setScatterStyle(dot > 0 ? QCPScatterStyle(QCPScatterStyle::ssDisc, dot) : QCPScatterStyle());
  auto pen = curve_->pen();
  pen.setWidthF(style_ == PlotStyle::Bin ? BarWidth : 1);
  curve_->setPen(pen);
  limitLabel_->setVisible(limit_ && plot_->yAxis->range().contains(*limit_));
  const std::pair seen{XView(), limit_};
  if (std::exchange(told_, seen) != seen && Moved) Moved();
}

// The left margin has room for a title and "-180", so that graphs above each other have their axes in line,
// the right one for the label of the limit, which must not hide the last samples. The library leaves out a
// label that does not fit: half of the outermost ones lies in the margins above and on the right.
void CWGraph::FitMargins() {
  const auto words = fontMetrics();
  const int left = words.horizontalAdvance(QStringLiteral("-1800")) + words.height() + 22;
  const int right = words.horizontalAdvance(limit_ ? QStringLiteral("-180°") : QStringLiteral("-18")) + 10;
  plot_->axisRect()->setMinimumMargins(QMargins(left, words.height() / 2 + 1, right, 4));
}

// A small plot has fewer tick labels and goes without its x title. A y title that is too long goes
// without its unit.
void CWGraph::FitTitles(QSize plot) const {
  const auto words = fontMetrics();
  int room = plot.height() - 3 * words.height() / 2 - 16;  // without the labels of the x axis and the margins
  const bool hasRoom = room >= (LeastPlotLines + 1) * words.height();
  if (hasRoom) room -= words.height();
  plot_->xAxis->setLabel(hasRoom ? TitleX() : QString());
  const auto name = TitleY().section(" (", 0, 0);
  const auto fits = [&](const QString& title) { return words.horizontalAdvance(title) <= room; };
  plot_->yAxis->setLabel(fits(TitleY()) ? TitleY() : fits(name) ? name : QString());
  const auto fitTicks = [](QCPAxis& axis, int count) {
    axis.ticker()->setTickCount(std::clamp(count, 2, 7));
  };
  fitTicks(*plot_->xAxis, plot.width() / words.horizontalAdvance(QStringLiteral("-1000000")));
  fitTicks(*plot_->yAxis, room / (2 * words.height()));
}

void CWGraph::ApplyColours(const QPalette& palette) const {
  const auto colours = ColoursOf(palette, palette.currentColorGroup());
  plot_->setBackground(colours.paper);
  for (auto* axis : {plot_->xAxis, plot_->yAxis, plot_->xAxis2, plot_->yAxis2}) ColourAxis(*axis, colours);
  curve_->setPen(QPen(colours.series, curve_->pen().widthF()));
  ColourMarks(palette);
}

int CWGraph::TitleHeight() const { return fontMetrics().height() + TitleRoom; }

QSize CWGraph::PictureSize() const { return plot_->size() + QSize(0, TitleHeight()); }

// The axis comes first in the title and the launch last: a file name that is too long loses its middle.
void CWGraph::PaintPicture(QCPPainter& painter, QSize size) const {
  const QSize area(size.width(), size.height() - TitleHeight());
  const QRect title(plot_->axisRect()->left(), 0, area.width() - plot_->axisRect()->left(), TitleHeight());
  const auto words = accessibleName() + (heading_.isEmpty() ? "" : ", " + heading_);
  ApplyColours(PaperPalette());
  FitCursors();
  FitTitles(area);
  plot_->layer("point")->setVisible(false);
  painter.save();
  painter.setFont(font());
  painter.setPen(Qt::black);
  painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(words, Qt::ElideMiddle, title.width()));
  painter.translate(0, TitleHeight());
  plot_->toPainter(&painter, area.width(), area.height());
  painter.restore();
  plot_->layer("point")->setVisible(read_.has_value());
  ApplyColours(palette());
  plot_->replot(QCustomPlot::rpQueuedReplot);  // lays it out for the screen again
}

void CWGraph::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
      ApplyColours(palette());
      break;
    case QEvent::FontChange:
      for (auto* axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
      }
      for (auto* text : {limitLabel_, notice_}) text->setFont(font());
      FitMargins();
      break;
    default:
      return;
  }
  DrawSoon();
}

void CWGraph::paintEvent(QPaintEvent*) {
  if (!hasFocus()) return;
  QPainter painter(this);
  painter.setPen(QPen(ColoursOf(*this).focus, FocusFrame));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

// The screen it is shown on may have another density than the one it was made on.
void CWGraph::showEvent(QShowEvent* event) {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  DrawSoon();
  QWidget::showEvent(event);
}

}  // namespace bexlow::platform
