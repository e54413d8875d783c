// Draws a series: as a line that loses no spike however many samples share a pixel, or as bars with heads.
#pragma once

#include "platform/graph/CWGraphPlottable.h"
#include "platform/graph/CWGraphSeries.h"

namespace bexlow::platform {

// The plot library's own graph, made for points at any distance, takes two to three times as long for a full
// run. Our points are equally spaced: those in a pixel column are found without a search, and are drawn as
// one vertical line.
class CWGraphCurve : public CWGraphPlottable {
 public:
  /// The series belongs to the graph and lives as long as it does.
  CWGraphCurve(QCPAxis* x, QCPAxis* y, const CWGraphSeries& series)
      : CWGraphPlottable(x, y), series_(series) {}

  void SetStyle(CWGraphSeries::Style style) { style_ = style; }

 protected:
  void draw(QCPPainter* painter) override;

 private:
  /// Indices of points, the last one excluded.
  struct Indices {
    std::size_t first = 0;
    std::size_t end = 0;
  };

  std::size_t FirstFrom(double place, const Scale& x) const;
  Indices Visible(const Scale& x) const;
  void DrawLine(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const;
  void DrawColumns(QCPPainter& painter, const Scale& x, const Scale& y, double columnWidth) const;
  void DrawBars(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const;

  const CWGraphSeries& series_;
  CWGraphSeries::Style style_ = CWGraphSeries::Style::Linear;
};

}  // namespace bexlow::platform
