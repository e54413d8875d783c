#include "platform/graph/CWGraphCurve.h"

#include <qcustomplot.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace bexlow::platform {

namespace {

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinite = std::numeric_limits<double>::infinity();
constexpr double PaperColumns = 8;  // a pixel, in PDF, SVG and print

// The library's own sampling loses a pixel column that begins with a gap, and joins both sides of a gap
// within one.
class Curve : public QCPGraph {
 public:
  using QCPGraph::QCPGraph;

 protected:
  using Points = QVector<QCPGraphData>;
  using Iterator = QCPGraphDataContainer::const_iterator;

  void draw(QCPPainter* painter) override {
    columnsAPixel_ = painter->modes().testFlag(QCPPainter::pmVectorized)
                         ? PaperColumns
                         : painter->device()->devicePixelRatioF();
    QCPGraph::draw(painter);
  }
  void getOptimizedLineData(Points* line, const Iterator& begin, const Iterator& end) const override {
    if (mLineStyle != lsLine) return QCPGraph::getOptimizedLineData(line, begin, end);
    const double columns = std::max(1, mKeyAxis->axisRect()->width()) * columnsAPixel_;
    const double column = mKeyAxis->range().size() / columns;
    const bool isDense = static_cast<double>(end - begin) * column > 2 * ((end - 1)->key - begin->key);
    isDense ? AddColumns(*line, begin, end, column) : AddPoints(*line, begin, end, column);
  }

 private:
  /// A sample between two gaps becomes a dash.
  static void AddPoints(Points& line, Iterator begin, Iterator end, double dash) {
    for (auto it = begin; it != end; ++it) {
      const bool isAlone =
          (it == begin || std::isnan((it - 1)->value)) && (it + 1 == end || std::isnan((it + 1)->value));
      if (isAlone) line << QCPGraphData(it->key - dash, it->value) << QCPGraphData(it->key + dash, it->value);
      if (!isAlone) line << *it;
    }
  }
  // Each column begins with the last value of the one before. A gap leads to the other side: where values
  // cross from end to end of a scale within a column, both sides are drawn and not what lies between.
  static void AddColumns(Points& line, Iterator begin, Iterator end, double column) {
    std::array<Extent, 2> sides;
    std::size_t side = 0;
    double start = std::floor(begin->key / column) * column, last = Nan;
    const auto draw = [&] {
      for (auto& extent : sides) extent.Draw(line, start, column);
    };
    for (auto it = begin; it != end; ++it) {
      if (it->key >= start + column) {
        draw();
        start = std::floor(it->key / column) * column;
        sides[side].Add(last);
      }
      if (std::isnan(it->value)) side = 1 - side;
      sides[side].Add(last = it->value);
    }
    draw();
  }

  struct Extent {
    double least = Infinite, greatest = -Infinite, first = Nan, last = Nan;

    void Add(double value) {
      if (std::isnan(value)) return;
      if (least > greatest) first = value;
      last = value;
      least = std::min(least, value);
      greatest = std::max(greatest, value);
    }
    void Draw(Points& line, double start, double column) {
      if (least > greatest) return;
      if (first > last) std::swap(least, greatest);
      line << QCPGraphData(start, first) << QCPGraphData(start + column / 2, least)
           << QCPGraphData(start + column / 2, greatest) << QCPGraphData(start + column, last)
           << QCPGraphData(start, Nan);
      *this = {};
    }
  };

  double columnsAPixel_ = 1;
};

}  // namespace

QCPGraph* MakeCurve(QCPAxis* x, QCPAxis* y) {
  return new Curve(x, y);
}

}  // namespace bexlow::platform
