// The last half minute of the readings as curves, under the dials and slides of a live screen. They know when
// a sample came last, so they dim all that shows samples.
#pragma once

#include <QAbstractSlider>
#include <QGraphicsOpacityEffect>

#include "link/SamplingScreen.h"
#include "live/Strip.h"
#include "platform/controls/CWKnob.h"
#include "platform/graph/CWGraph.h"

namespace bexlow::live {

class LiveStrips : public QWidget {
 public:
  explicit LiveStrips(QWidget* parent)
      : QWidget(parent), drawing_(platform::Machine::Get().MakeAlarm([this] { Tick(); })) {}

  /// Adds a curve beside the others.
  /// @param unit      of its values, for the title of the axis
  /// @param crossing  two samples in a row that differ by more are not joined: an angle has gone through
  /// +-180
  void AddStrip(const char* name, const QString& caption, const QString& unit, double minimum, double maximum,
                std::optional<double> crossing = std::nullopt) {
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
  /// A widget that is pale whenever the strips are: from the start, from 2 s after the last sample, and when
  /// sampling has ended.
  void DimAlong(QWidget* widget) {
    dimmedAlong_.push_back(widget);
    Dim(*widget, !live_);
  }
  /// Stores a sample, even while a click holds the curves still.
  void Add(std::size_t strip, double value) {
    strips_[strip].values.Add(platform::SecondsSince(startedAt_), value);
  }
  /// Draws the stored samples within 0.3 s.
  void Show() {
    drawDue_ = true;
    shownAt_ = platform::Machine::Get().QueryPerformanceCounter();
    if (!live_) SetLive(true);
    if (platform::SecondsSince(drawnAt_) >= DrawingSeconds) DrawNewest();
  }
  /// Empties the curves, and starts their time.
  void Clear() {
    if (paused_) Pause();
    startedAt_ = platform::Machine::Get().QueryPerformanceCounter();
    for (auto& [graph, values] : strips_) {
      values.Clear();
      graph->ClearData();
    }
  }
  /// Draws what was stored; no sample follows.
  void End() {
    DrawNewest();
    SetLive(false);
  }

 private:
  static constexpr double DrawingSeconds = 0.2;  // a step of some 3 pixels
  static constexpr int LeastHeight = 110;

  // What shows the past is pale: a box stays to be read and copied, an instrument shows no number.
  static void Dim(QWidget& widget, bool dim) {
    constexpr double Pale = 0.45;
    if (qobject_cast<platform::CWKnob*>(&widget) || qobject_cast<QAbstractSlider*>(&widget))
      return widget.setEnabled(!dim);
    auto* effect = dim ? new QGraphicsOpacityEffect : nullptr;
    if (dim) effect->setOpacity(Pale);
    widget.setGraphicsEffect(effect);
  }

  struct Row {
    platform::CWGraph* graph;
    Strip values;
  };
  // Only what no frame has drawn, since a frame comes when the line does not have to wait for it.
  void Tick() {
    if (platform::SecondsSince(shownAt_) >= DrawingSeconds) DrawNewest();
    if (platform::SecondsSince(shownAt_) >= link::SilentAfterSeconds) SetLive(false);
  }
  void DrawNewest() {
    drawnAt_ = platform::Machine::Get().QueryPerformanceCounter();
    if (std::exchange(drawDue_, false) && !paused_) Draw();
  }
  void Draw() {
    for (const auto& [graph, values] : strips_) {
      std::vector<double> x, y;
      for (const auto& [seconds, value] : values.Samples()) {
        x.push_back(seconds - values.Samples().back().first);
        y.push_back(value);
      }
      graph->PlotXY(std::move(x), std::move(y));
    }
  }
  void Pause() {
    paused_ = !paused_;
    for (const auto& [graph, values] : strips_)
      graph->SetNumbers(paused_ ? "Held still. Click to go on." : "");
    if (!paused_) Draw();
  }
  // The alarm runs only while samples come.
  void SetLive(bool live) {
    live_ = live;
    live ? drawing_->Start(std::chrono::milliseconds(100)) : drawing_->Stop();
    for (auto* widget : dimmedAlong_) Dim(*widget, !live);
  }

  std::vector<Row> strips_;
  std::vector<QWidget*> dimmedAlong_;
  std::unique_ptr<platform::Alarm> drawing_;
  bool paused_ = false, live_ = false;
  bool drawDue_ = false;                                    ///< samples were stored since the last drawing
  std::int64_t startedAt_ = 0, shownAt_ = 0, drawnAt_ = 0;  ///< readings of the high-resolution counter
};

}  // namespace bexlow::live
