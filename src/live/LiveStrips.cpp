#include "live/LiveStrips.h"

#include <QGraphicsOpacityEffect>

#include "link/SamplingScreen.h"
#include "platform/instruments/Instrument.h"

namespace bexlow::live {

namespace {

constexpr double DrawingSeconds = 0.1;
constexpr int LeastHeight = 110;

// What shows the past is pale: a box stays to be read and copied, an instrument shows no number.
void Dim(QWidget& widget, bool dim) {
  constexpr double Pale = 0.45;
  if (auto* instrument = qobject_cast<platform::Instrument*>(&widget)) return instrument->setEnabled(!dim);
  auto* effect = dim ? new QGraphicsOpacityEffect : nullptr;
  if (dim) effect->setOpacity(Pale);
  widget.setGraphicsEffect(effect);
}

}  // namespace

LiveStrips::LiveStrips(QWidget* parent)
    : QWidget(parent), drawing_(platform::Machine::Get().MakeAlarm([this] { Tick(); })) {}

void LiveStrips::DimAlong(QWidget* widget) {
  dimmedAlong_.push_back(widget);
  Dim(*widget, !live_);
}

void LiveStrips::AddStrip(const char* name, const QString& caption, const QString& unit, double minimum,
                          double maximum, std::optional<double> crossing) {
  if (layout() == nullptr) {
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
  }
  auto* graph = new platform::CWGraph(this);
  graph->setObjectName(name);
  graph->setAccessibleName(caption + ", last 30 seconds");
  graph->setToolTip("The last 30 seconds. A click holds the curves still, another lets them go on.");
  graph->SetPlotStyle(platform::PlotStyle::Linear);
  graph->SetAxisTitles("Seconds", caption + " (" + unit + ")");
  graph->SetXAxis(false, -Strip::Seconds, 0);
  graph->SetYAxis(false, minimum, maximum);
  graph->SetCrossing(crossing);
  graph->SetInteractive(false);
  graph->Clicked = [this] { Pause(); };
  graph->setMinimumHeight(LeastHeight);
  layout()->addWidget(graph);
  DimAlong(graph);
  strips_.push_back({graph, {}});
}

void LiveStrips::Add(std::size_t strip, double value) {
  strips_[strip].values.Add(platform::SecondsSince(startedAt_), value);
}

void LiveStrips::Show() {
  drawDue_ = true;
  shownAt_ = platform::Machine::Get().QueryPerformanceCounter();
  if (!live_) SetLive(true);
  if (platform::SecondsSince(drawnAt_) >= DrawingSeconds) DrawNewest();
}

// Only what no frame has drawn, since a frame comes when the line does not have to wait for it.
void LiveStrips::Tick() {
  if (platform::SecondsSince(shownAt_) >= DrawingSeconds) DrawNewest();
  if (platform::SecondsSince(shownAt_) >= link::SilentAfterSeconds) SetLive(false);
}

void LiveStrips::DrawNewest() {
  drawnAt_ = platform::Machine::Get().QueryPerformanceCounter();
  if (std::exchange(drawDue_, false) && !paused_) Draw();
}

void LiveStrips::End() {
  DrawNewest();
  SetLive(false);
}

// The alarm runs only while samples come.
void LiveStrips::SetLive(bool live) {
  live_ = live;
  live ? drawing_->Start(std::chrono::milliseconds(100)) : drawing_->Stop();
  for (auto* widget : dimmedAlong_) Dim(*widget, !live);
}

void LiveStrips::Draw() {
  for (const auto& [graph, values] : strips_) {
    std::vector<double> x, y;
    for (const auto& [seconds, value] : values.Samples()) {
      x.push_back(seconds - values.Samples().back().first);
      y.push_back(value);
    }
    graph->PlotXY(std::move(x), std::move(y));
  }
}

void LiveStrips::Pause() {
  paused_ = !paused_;
  for (const auto& [graph, values] : strips_) graph->SetNumbers(paused_ ? "Held still. Click to go on." : "");
  if (!paused_) Draw();
}

void LiveStrips::Clear() {
  if (paused_) Pause();
  startedAt_ = platform::Machine::Get().QueryPerformanceCounter();
  for (auto& [graph, values] : strips_) {
    values.Clear();
    graph->ClearData();
  }
}

}  // namespace bexlow::live
