#include "platform/graph/CWGraph.h"

#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraphCursors.h"
#include "platform/graph/CWGraphCurve.h"
#include "platform/graph/CWGraphInteraction.h"
#include "platform/graph/CWGraphLimit.h"
#include "platform/graph/CWGraphLook.h"
#include "platform/graph/CWGraphOverlay.h"
#include "platform/graph/CWGraphReadOut.h"
#include "platform/graph/CWGraphView.h"
#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {

constexpr double LeastSamplesInView = 4;
constexpr int FocusFrame = 2;

QLabel* MakeWords(QWidget& parent, Qt::Alignment side) {
  auto* words = new QLabel(&parent);
  words->setIndent(8);
  words->setAlignment(side | Qt::AlignVCenter);
  words->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  words->setAttribute(Qt::WA_TransparentForMouseEvents);
  return words;
}

}  // namespace

CWGraph::CWGraph(QWidget* parent) : QWidget(parent) {
  InstallChartAccess();
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  BuildPlot();
  BuildInteraction();
  BuildMenu();
  PresetQuestions();
  SetPlotStyle(PlotStyle::Linear);
  ApplyColours(palette());
}

CWGraph::~CWGraph() = default;

void CWGraph::BuildPlot() {
  plot_ = new QCustomPlot(this);
  plot_->setAttribute(Qt::WA_TransparentForMouseEvents);  // this widget handles the mouse
  plot_->setFocusPolicy(Qt::NoFocus);
  plot_->axisRect()->setupFullAxesBox();
  plot_->xAxis2->setTicks(false);
  plot_->yAxis2->setTicks(false);
  cursors_ = new CWGraphCursors(plot_->xAxis, plot_->yAxis);  // drawn first, under the curve
  curve_ = new CWGraphCurve(plot_->xAxis, plot_->yAxis, series_);
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

// The left margin has room for a title and "-180", so that graphs above each other have their axes in line,
// the right one for the label of the limit, which must not hide the last samples.
void CWGraph::FitMargins() {
  const auto words = fontMetrics();
  const int left = words.horizontalAdvance(QStringLiteral("-1800")) + words.height() + 22;
  const int right = Limit() ? words.horizontalAdvance(QStringLiteral("-180°")) + 10 : 14;
  plot_->axisRect()->setMinimumMargins(QMargins(left, 8, right, 4));
}

void CWGraph::BuildInteraction() {
  overlay_ = new CWGraphOverlay(*this);
  view_ = std::make_unique<CWGraphView>(*plot_->xAxis, *plot_->yAxis);
  view_->Changed = [this] { PassXView(); };
  limit_ = std::make_unique<CWGraphLimit>(*plot_, view_->Y);
  FitMargins();
  readOut_ = std::make_unique<CWGraphReadOut>(series_, *plot_, *view_, *overlay_, *words_);
  connect(plot_, &QCustomPlot::beforeReplot, this, [this] { FitToSize(); });
  connect(plot_, &QCustomPlot::afterReplot, this, [this] { TellMoved(); });
  interaction_ = new CWGraphInteraction(*this, *plot_, *view_, *readOut_, *overlay_, *limit_);
  interaction_->MenuWanted = [this](QPoint global) { menu_->popup(global); };
  interaction_->Clicked = [this](QPoint place) { ClickAt(place); };
  interaction_->Paged = [this](bool forward) { return Paged && Paged(forward); };
}

void CWGraph::SetInteractive(bool interactive) {
  interaction_->SwitchOn(interactive);
  setMouseTracking(interactive);
  readOut_->Forget();
  words_->setVisible(interactive);
  for (auto* entry : actions()) entry->setEnabled(interactive);
}

void CWGraph::ClickAt(QPoint place) {
  const auto cursor = cursors_->Near(place.x());
  EventGate::Get().Click(this, [&] {
    if (cursor && CursorClicked) CursorClicked(*cursor);
    if (Clicked) Clicked();
  });
}

// Words that appear resize the plot, and during its own redraw it does not redraw itself.
void CWGraph::TellMoved() {
  const auto drawn = plot_->size();
  readOut_->Refresh();
  const std::pair seen{XView(), Limit()};
  if (std::exchange(told_, seen) != seen && Moved) Moved();
  if (plot_->size() != drawn) DrawSoon();
}

void CWGraph::ClearData() {
  TakeSeries({});
}

void CWGraph::PlotY(std::span<const double> values, double firstX, double stepX) {
  TakeSeries({{values.begin(), values.end()}, firstX, stepX});
}

void CWGraph::PlotY(std::span<const std::int16_t> values, double firstX, double stepX) {
  TakeSeries({{values.begin(), values.end()}, firstX, stepX});
}

void CWGraph::TakeSeries(CWGraphSeries series) {
  series_ = std::move(series);
  auto yRange = series_.YRange();
  if (yRange && style_ == PlotStyle::Bin)
    yRange = {std::min(0.0, yRange->lower), std::max(1.0, yRange->upper)};
  view_->X.SetData(series_.XRange(), LeastSamplesInView * series_.StepX());
  view_->Y.SetData(yRange, 0);
  readOut_->Renew(style_, rate_);
  told_.reset();
  DrawSoon();
}

void CWGraph::SetPlotStyle(PlotStyle style) {
  style_ = style;
  curve_->SetStyle(style);
  ApplyStyle();
  TakeSeries(std::move(series_));
}

void CWGraph::SetXAxis(bool autoScale, double minimum, double maximum) {
  view_->X.SetWhole(autoScale, {minimum, maximum});
  DrawSoon();
}

void CWGraph::SetYAxis(bool autoScale, double minimum, double maximum) {
  view_->Y.SetWhole(autoScale, {minimum, maximum});
  DrawSoon();
}

void CWGraph::SetAxisTitles(const QString& x, const QString& y) {
  titleX_ = x;
  titleY_ = y;
  DrawSoon();
}

std::optional<double> CWGraph::ClockRate() const {
  return timeShown_ && style_ == PlotStyle::Linear ? rate_ : std::nullopt;
}

void CWGraph::ApplyStyle() {
  DressInStyle(*plot_, style_, ClockRate());
  DrawSoon();
}

QString CWGraph::TitleX() const {
  if (!titleX_.isEmpty()) return titleX_;
  if (style_ == PlotStyle::Bin) return tr("Angle (degrees)");
  return ClockRate() ? tr("Time since launch (h:min:s)") : tr("Sample");
}

QString CWGraph::TitleY() const {
  if (!titleY_.isEmpty()) return titleY_;
  return style_ == PlotStyle::Bin ? tr("Count") : tr("Angle (degrees)");
}

// A small plot has fewer tick labels. It goes without the x title if the y title needs its room, and without
// both where the y title does not fit at all.
void CWGraph::FitToSize() {
  const auto words = fontMetrics();
  const int room = plot_->height() - words.height() - 22;  // without the labels of the x axis and the margins
  const int missing = words.horizontalAdvance(TitleY()) - room;
  plot_->xAxis->setLabel(missing + words.height() <= 0 ? TitleX() : QString());
  plot_->yAxis->setLabel(missing <= 0 ? TitleY() : QString());
  const auto fitTicks = [](QCPAxis& axis, int count) {
    axis.ticker()->setTickCount(std::clamp(count, 2, 7));
  };
  fitTicks(*plot_->xAxis, plot_->width() / words.horizontalAdvance(QStringLiteral("-1000000")));
  fitTicks(*plot_->yAxis, room / (2 * words.height()));
}

void CWGraph::SetSampleTimes(std::optional<SampleTimes> times) {
  times_ = std::move(times);
  SetSampleRate(times_ ? std::optional(times_->rate) : std::nullopt);
}

void CWGraph::SetCrossing(std::optional<double> degrees) {
  crossing_ = degrees;
  DrawSoon();
}

// An edge that differs from a sample by the rounding of doubles shows it.
std::optional<std::pair<std::size_t, std::size_t>> CWGraph::DrawnSamples() const {
  constexpr double Rounding = 1e-6;
  const auto drawn = plot_->xAxis->range();
  const auto index = [this](double x) { return (x - series_.X(0)) / series_.StepX(); };
  const double first = std::max(0.0, std::ceil(index(drawn.lower) - Rounding));
  const double last =
      std::min(static_cast<double>(series_.Size()) - 1, std::floor(index(drawn.upper) + Rounding));
  if (first > last) return std::nullopt;
  return std::pair{static_cast<std::size_t>(first), static_cast<std::size_t>(last)};
}

void CWGraph::SetSampleRate(std::optional<double> rate) {
  rate_ = rate;
  readOut_->Renew(style_, rate_);
  ApplyStyle();
  RenewMenu();
}

void CWGraph::ShowTime(bool time) {
  for (auto* graph : {this, linked_.data()}) {
    if (!graph) continue;
    graph->timeShown_ = time;
    graph->ApplyStyle();
    graph->RenewMenu();
  }
}

void CWGraph::SetLimit(std::optional<double> value) {
  limit_->Set(value);
  FitMargins();
  DrawSoon();
}

std::optional<double> CWGraph::Limit() const {
  return limit_->Value();
}

void CWGraph::SetNumbers(const QString& words) {
  if (words == numbers_->text()) return;
  numbers_->setText(words);
  numbers_->setVisible(!words.isEmpty());
  RenewMenu();
}

void CWGraph::EnableCursors() {
  if (CursorCount() > 0) return;
  AddCursor();
  SetCursorLook(1);
}

int CWGraph::CursorCount() const {
  return static_cast<int>(cursors_->All().size());
}

void CWGraph::AddCursor() {
  cursors_->All().emplace_back();
  DrawSoon();
}

void CWGraph::RemoveAllCursors() {
  cursors_->All().clear();
  DrawSoon();
}

void CWGraph::StressCursor(std::optional<double> x) {
  cursors_->Stress(x);
  DrawSoon();
}

void CWGraph::SetCursorLook(int n) {
  cursors_->Numbered(n).look = CWGraphCursors::Look::Marked;
  DrawSoon();
}

void CWGraph::SetCursorPosition(int n, double x, double y) {
  auto& cursor = cursors_->Numbered(n);
  cursor.x = x;
  cursor.y = y;
  DrawSoon();
}

double CWGraph::CursorX(int n) const {
  return cursors_->Numbered(n).x;
}
double CWGraph::CursorY(int n) const {
  return cursors_->Numbered(n).y;
}

void CWGraph::LinkXAxis(CWGraph& other) {
  linked_ = &other;
  other.linked_ = this;
  other.isSecond_ = true;
  SetXLinkActive(true);
  RenewMenu();
  other.RenewMenu();
}

void CWGraph::SetXLinkActive(bool active) {
  linkActive_ = active;
  if (linked_) linked_->linkActive_ = active;
}

// Copies the x view to the linked graph, which does not copy it back.
void CWGraph::PassXView() {
  DrawSoon();
  if (!linkActive_ || !linked_) return;
  linked_->view_->X.ShowExactly(XView());
  linked_->DrawSoon();
}

void CWGraph::ShowAll() {
  view_->X.ShowWhole();
  view_->Y.ShowWhole();
  PassXView();
}

void CWGraph::BringIntoView(double x) {
  if (view_->X.Include(x)) PassXView();
}

CWGraphRange CWGraph::XView() const {
  return view_->X.View();
}
CWGraphRange CWGraph::YView() const {
  return view_->Y.View();
}

void CWGraph::SetXView(CWGraphRange range) {
  view_->X.Show(range);
  PassXView();
}

void CWGraph::DrawNow() {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  plot_->replot(QCustomPlot::rpImmediateRefresh);
}

// A graph that is not on show is drawn when it is shown.
void CWGraph::DrawSoon() {
  if (isVisible()) plot_->replot(QCustomPlot::rpQueuedReplot);
}

void CWGraph::ApplyColours(const QPalette& palette) const {
  const auto colours = ColoursOf(palette, palette.currentColorGroup());
  DressInColours(*plot_, *curve_, *cursors_, colours);
  limit_->SetColours(colours.hint, colours.paper);
}

void CWGraph::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (!plot_) return;
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
      ApplyColours(palette());
      DrawSoon();
      break;
    case QEvent::FontChange:
      for (auto* axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
      }
      FitMargins();
      DrawSoon();
      break;
    default:
      break;
  }
}

void CWGraph::resizeEvent(QResizeEvent* event) {
  overlay_->setGeometry(rect());
  overlay_->raise();
  QWidget::resizeEvent(event);
}

// The screen it is shown on may have another density than the one it was made on.
void CWGraph::showEvent(QShowEvent* event) {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  DrawSoon();
  QWidget::showEvent(event);
}

void CWGraph::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Mouse && interaction_->IsOn())
    menu_->popup(mapToGlobal(rect().center()));
  event->accept();  // by mouse it opens on release, since the right button also draws the rectangle
}

QSize CWGraph::sizeHint() const {
  return {640, 260};
}
QSize CWGraph::minimumSizeHint() const {
  return {160, 90};
}

}  // namespace bexlow::platform
