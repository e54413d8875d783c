#include "platform/graph/CWGraphLook.h"

#include <cmath>

namespace bexlow::platform {

namespace {

using Style = CWGraphSeries::Style;

/// Whole steps for counts and samples.
class WholeTicker : public QCPAxisTicker {
 public:
  WholeTicker() { setTickCount(7); }

 protected:
  double getTickStep(const QCPRange& range) override {
    return std::max(1.0, QCPAxisTicker::getTickStep(range));
  }
  int getSubTickCount(double step) override { return step < 2 ? 0 : QCPAxisTicker::getSubTickCount(step); }
};

/// Steps that divide a circle.
class DegreeTicker : public QCPAxisTicker {
 public:
  DegreeTicker() { setTickCount(7); }

 protected:
  double getTickStep(const QCPRange& range) override {
    const double rough = range.size() / (tickCount() + 1);
    for (const double step : {1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 45.0, 60.0, 90.0, 180.0}) {
      if (step >= rough) return step;
    }
    return QCPAxisTicker::getTickStep(range);
  }
  int getSubTickCount(double step) override {
    if (step < 2) return 0;
    return step == 2 ? 1 : step == 10 || step == 5 ? 4 : 2;
  }
};

/// Whole seconds, minutes and hours on an axis that counts samples.
class ClockTicker : public QCPAxisTicker {
 public:
  explicit ClockTicker(double rate) : rate_(rate) { setTickCount(7); }

 protected:
  double getTickStep(const QCPRange& range) override {
    const double rough = range.size() / rate_ / (tickCount() + 1);
    for (const double step :
         {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 120.0, 300.0, 600.0, 900.0, 1800.0}) {
      if (step >= rough) return TakeStep(step);
    }
    return TakeStep(3600 * std::ceil(rough / 3600));
  }
  int getSubTickCount(double) override { return 0; }
  QString getTickLabel(double tick, const QLocale&, QChar, int) override {
    return DurationClock(tick / rate_, decimals_);
  }

 private:
  double TakeStep(double seconds) {
    decimals_ = seconds < 1 ? 1 : 0;
    return seconds * rate_;
  }

  double rate_;
  int decimals_ = 0;
};

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

}  // namespace

void DressInStyle(QCustomPlot& plot, Style style, std::optional<double> clockRate) {
  const bool isBin = style == Style::Bin;
  const QSharedPointer<QCPAxisTicker> whole(new WholeTicker);
  const QSharedPointer<QCPAxisTicker> degrees(new DegreeTicker);
  plot.xAxis->setTicker(isBin ? degrees : whole);
  if (clockRate) plot.xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new ClockTicker(*clockRate)));
  plot.yAxis->setTicker(isBin ? whole : degrees);
}

void DressInColours(QCustomPlot& plot, QCPAbstractPlottable& curve, CWGraphCursors& cursors,
                    const Colours& colours) {
  plot.setBackground(colours.paper);
  for (auto* axis : {plot.xAxis, plot.yAxis, plot.xAxis2, plot.yAxis2}) ColourAxis(*axis, colours);
  curve.setPen(QPen(colours.series, 1));
  cursors.SetColours(Blend(colours.paper, colours.text, 0.6), colours.mark);
}

}  // namespace bexlow::platform
