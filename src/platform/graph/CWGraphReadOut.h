// The point of a graph that is read out: chosen by pointer or keys, marked on the plot, put into words.
#pragma once

#include <QPointF>

#include <cstddef>
#include <optional>

#include "platform/graph/CWGraphSeries.h"

class QCustomPlot;
class QLabel;

namespace bexlow::platform {

class CWGraphOverlay;
class CWGraphView;

class CWGraphReadOut {
 public:
  /// The pieces belong to the graph and live as long as it does.
  CWGraphReadOut(const CWGraphSeries& series, QCustomPlot& plot, CWGraphView& view, CWGraphOverlay& overlay,
                 QLabel& words);

  /// Clears the read-out: the series or its style has changed.
  /// @param rate  samples a second, where they are known
  void Renew(CWGraphSeries::Style style, std::optional<double> rate);

  /// Reads the point nearest to a place of the plot; outside of the axes none.
  void PointAt(QPointF place);
  /// Moves on by `points`, starting in the middle of the view, and keeps the point in view.
  void Step(std::ptrdiff_t points);
  void StepToEnd(bool last);
  void Forget();
  /// The point read out; nothing where none is.
  std::optional<QPointF> Point() const;

  /// Moves the mark to where the point is after a redraw.
  void Refresh();

 private:
  void Read(std::size_t index);
  void KeepInSight();
  std::size_t Start() const;

  const CWGraphSeries& series_;
  QCustomPlot& plot_;
  CWGraphView& view_;
  CWGraphOverlay& overlay_;
  QLabel& words_;
  CWGraphSeries::Style style_ = CWGraphSeries::Style::Linear;
  std::optional<double> rate_;
  std::optional<std::size_t> index_;
};

}  // namespace bexlow::platform
