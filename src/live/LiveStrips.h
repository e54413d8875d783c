// The last half minute of the readings as curves, under the dials and slides of a live screen. They know when
// a sample came last, so they dim all that shows samples.
#pragma once

#include "live/Strip.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/Machine.h"

namespace bexlow::live {

class LiveStrips : public QWidget {
 public:
  explicit LiveStrips(QWidget* parent);

  /// Adds a curve beside the others.
  /// @param unit      of its values, for the title of the axis
  /// @param crossing  two samples in a row that differ by more are not joined: an angle has gone through
  /// +-180
  void AddStrip(const char* name, const QString& caption, const QString& unit, double minimum, double maximum,
                std::optional<double> crossing = std::nullopt);
  /// A widget that is pale whenever the strips are: from the start, from 2 s after the last sample, and when
  /// sampling has ended.
  void DimAlong(QWidget* widget);
  /// Stores a sample, even while a click holds the curves still.
  void Add(std::size_t strip, double value);
  /// Draws the stored samples within 0.2 s.
  void Show();
  /// Empties the curves, and starts their time.
  void Clear();
  /// Draws what was stored; no sample follows.
  void End();

 private:
  struct Row {
    platform::CWGraph* graph;
    Strip values;
  };
  void Tick();
  void DrawNewest();
  void Draw();
  void Pause();
  void SetLive(bool live);

  std::vector<Row> strips_;
  std::vector<QWidget*> dimmedAlong_;
  std::unique_ptr<platform::Alarm> drawing_;
  bool paused_ = false, live_ = false;
  bool drawDue_ = false;                                    ///< samples were stored since the last drawing
  std::int64_t startedAt_ = 0, shownAt_ = 0, drawnAt_ = 0;  ///< readings of the high-resolution counter
};

}  // namespace bexlow::live
