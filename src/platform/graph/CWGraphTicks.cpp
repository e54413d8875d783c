// Marks along the axes of a graph, and its numbers.
#include <QLocale>
#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

#include "platform/graph/CWGraph.h"
#include "values/NumberText.h"

namespace bexlow::platform {

namespace {

/// Whole steps for counts and samples.
class WholeTicker : public QCPAxisTicker {
 protected:
  double getTickStep(const QCPRange& range) override {
    return std::max(1.0, std::ceil(QCPAxisTicker::getTickStep(range)));
  }
  int getSubTickCount(double step) override { return step < 2 ? 0 : QCPAxisTicker::getSubTickCount(step); }
};

/// Steps that divide both full scales, so that their ends are told; usual steps for other values.
class DegreeTicker : public QCPAxisTicker {
 protected:
  double getTickStep(const QCPRange& range) override {
    const double rough = range.size() / (tickCount() + 1);
    for (const double step : {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 45.0, 90.0, 180.0})
      if (step >= rough && range.size() <= 400) return step;
    return QCPAxisTicker::getTickStep(range);
  }
  int getSubTickCount(double step) override {
    if (step < 2) return 0;
    return step == 2 ? 1 : step == 10 || step == 5 ? 4 : 2;
  }
};

/// Whole seconds, minutes and hours on an axis that counts samples. Its steps are seconds.
class ClockTicker : public QCPAxisTicker {
 public:
  explicit ClockTicker(const SampleTimes& times) : times_(times) {}

 protected:
  double getTickStep(const QCPRange& range) override {
    const double rough = (times_.secondsAt(range.upper) - times_.secondsAt(range.lower)) / (tickCount() + 1);
    for (const double step : {0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 120.0,
                              300.0, 600.0, 900.0, 1800.0})
      if (step >= rough) return step;
    return 3600 * std::ceil(rough / 3600);
  }
  int getSubTickCount(double) override { return 0; }
  QVector<double> createTickVector(double step, const QCPRange& range) override {
    decimals_ = step < 0.1 ? 2 : step < 1 ? 1 : 0;
    QVector<double> ticks;
    const double first = std::ceil(std::max(0.0, times_.secondsAt(range.lower)) / step);
    const double tolerance = times_.rate > 0 ? 0.5 / times_.rate : 1e-6;
    for (int i = 0; i <= 2 * tickCount(); ++i) {
      const double seconds = (first + i) * step;
      const double sample = times_.sampleAt(seconds);
      const bool isMissing = std::abs(times_.secondsAt(sample) - seconds) > tolerance;
      const bool hasRoom = ticks.isEmpty() || (sample - ticks.last()) * 3 * tickCount() > range.size();
      if (sample <= range.upper && !isMissing && hasRoom) ticks << sample;
    }
    return ticks;
  }
  QString getTickLabel(double tick, const QLocale&, QChar, int) override {
    return QString::fromStdString(values::DurationClock(times_.secondsAt(tick), decimals_));
  }

 private:
  SampleTimes times_;
  int decimals_ = 0;
};

}  // namespace

// The axis of angles has marks at 30, 45, 90.
void CWGraph::RenewTimes() {
  const QSharedPointer<QCPAxisTicker> whole(new WholeTicker);
  const QSharedPointer<QCPAxisTicker> degrees(new DegreeTicker);
  const bool isBin = style_ == PlotStyle::Bin;
  plot_->xAxis->setTicker(isBin ? degrees : whole);
  if (const auto& clock = Clock())
    plot_->xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new ClockTicker(*clock)));
  plot_->yAxis->setTicker(isBin ? whole : degrees);
  DrawSoon();
}

QString CWGraphNumber(double value) {
  auto plain = QLocale::c();
  plain.setNumberOptions(QLocale::OmitGroupSeparator);
  return plain.toString(value == 0 ? 0.0 : value, 'g', 12);
}

}  // namespace bexlow::platform
