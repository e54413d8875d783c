// Draws a series: as a line that loses no spike however many samples share a pixel, or as bars with heads.
#pragma once

#include <qcustomplot.h>

#include <vector>

#include "platform/CWGraphSeries.h"

namespace bexlow::platform {

// The plot library's own graph, made for points in any distance, takes twice to three times as long for a
// full run. Ours are equally spaced: those of a pixel column are found without a search, and are one upright
// line.
class CWGraphCurve : public QCPAbstractPlottable {
 public:
  /// The series belongs to the graph and lives as long as it does.
  CWGraphCurve(QCPAxis* x, QCPAxis* y, const CWGraphSeries& series)
      : QCPAbstractPlottable(x, y), series_(series) {}

  void SetStyle(CWGraphSeries::Style style) { style_ = style; }

  double selectTest(const QPointF&, bool, QVariant*) const override { return -1; }
  QCPRange getKeyRange(bool& found, QCP::SignDomain) const override { return NoRange(found); }
  QCPRange getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const override {
    return NoRange(found);
  }

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter*, const QRectF&) const override {}

 private:
  /// Pixels of an axis: origin + coordinate * scale.
  struct Scale {
    double origin = 0;
    double perUnit = 1;
    double At(double coordinate) const;
  };
  /// Indices of points, the last one excluded.
  struct Indices {
    std::size_t first = 0;
    std::size_t end = 0;
  };

  // The view fits the axes itself.
  static QCPRange NoRange(bool& found) {
    found = false;
    return {};
  }
  static Scale ScaleOf(const QCPAxis& axis);
  std::size_t FirstFrom(double place, const Scale& x) const;
  Indices Visible(const Scale& x) const;
  void DrawLine(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const;
  void DrawColumns(QCPPainter& painter, const Scale& x, const Scale& y, double columnWidth) const;
  void DrawBars(QCPPainter& painter, const Scale& x, const Scale& y, Indices points) const;

  const CWGraphSeries& series_;
  CWGraphSeries::Style style_ = CWGraphSeries::Style::Linear;
};

}  // namespace bexlow::platform
