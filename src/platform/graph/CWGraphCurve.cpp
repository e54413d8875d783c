// The curve of a graph: one that draws no line where two samples lie across a gap.

#include <qcustomplot.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/graph/CWGraph.h"

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
    const auto area = mKeyAxis->axisRect()->size();
    const double column = mKeyAxis->range().size() / std::max(1, area.width()) / columnsAPixel_;
    const double halfPixel = mValueAxis->range().size() / std::max(1, area.height()) / 2;
    const bool isDense = static_cast<double>(end - begin) * column > 2 * ((end - 1)->key - begin->key);
    isDense ? AddColumns(*line, begin, end, column, halfPixel) : AddPoints(*line, begin, end, column);
  }

 private:
  /// A sample between two gaps becomes a dash.
  static void AddPoints(Points& line, Iterator begin, Iterator end, double dash) {
    const auto isGap = [&](Iterator it) { return std::isnan(it->value); };
    for (auto it = begin; it != end; ++it) {
      const bool isAlone = (it == begin || isGap(it - 1)) && (it + 1 == end || isGap(it + 1));
      if (isAlone) line << QCPGraphData(it->key - dash, it->value);
      line << QCPGraphData(isAlone ? it->key + dash : it->key, it->value);
    }
  }
  // Each column counts the last value of the one before. A gap leads to the other side: where values cross
  // from end to end of a scale within a column, both sides are drawn and not what lies between.
  void AddColumns(Points& line, Iterator begin, Iterator end, double column, double halfPixel) const {
    std::array<CWGraphRange, 2> sides;
    const auto clear = [&] { sides.fill({Infinite, -Infinite}); };
    const auto add = [&](CWGraphRange& side, double value) {  // a gap is never less or greater
      if (value < side.lower) side.lower = value;
      if (value > side.upper) side.upper = value;
    };
    const auto number = [&](double key) { return std::floor((key - mKeyAxis->range().lower) / column); };
    const auto draw = [&](double key) {  // the library's smooth lines are moved by half a pixel
      for (const auto& [least, greatest] : sides) {
        if (least <= greatest)
          line << QCPGraphData(key, least - halfPixel) << QCPGraphData(key, greatest + halfPixel)
               << QCPGraphData(key, Nan);
      }
    };
    clear();
    std::size_t side = 0;
    double start = mKeyAxis->range().lower + number(begin->key) * column;
    double last = Nan;
    for (auto it = begin; it != end; ++it) {
      if (it->key >= start + column) {
        draw(start);
        clear();
        const double before = std::exchange(start, mKeyAxis->range().lower + number(it->key) * column);
        const bool isJoined = !std::isnan(it->value) && !std::isnan(last);
        const bool isNext = start < before + 1.5 * column;
        if (isJoined && isNext) add(sides[side], last);
        if (isJoined && !isNext)  // nothing came meanwhile
          line << QCPGraphData(before, last) << QCPGraphData(start, it->value) << QCPGraphData(start, Nan);
      }
      if (std::isnan(it->value)) side = 1 - side;
      add(sides[side], last = it->value);
    }
    draw(start);
  }

  double columnsAPixel_ = 1;
};

}  // namespace

QCPGraph* CWGraph::MakeCurve(QCPAxis* x, QCPAxis* y) { return new Curve(x, y); }

}  // namespace bexlow::platform
