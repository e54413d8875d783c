// A plottable that cannot be selected and is ignored by axis rescaling and by legends.
#pragma once

#include <qcustomplot.h>

namespace bexlow::platform {

class CWGraphPlottable : public QCPAbstractPlottable {
 public:
  CWGraphPlottable(QCPAxis* x, QCPAxis* y) : QCPAbstractPlottable(x, y) {}

  double selectTest(const QPointF&, bool, QVariant*) const override { return -1; }
  QCPRange getKeyRange(bool& found, QCP::SignDomain) const override { return NoRange(found); }
  QCPRange getValueRange(bool& found, QCP::SignDomain, const QCPRange&) const override {
    return NoRange(found);
  }

 protected:
  /// Pixels of an axis: origin + coordinate * scale.
  struct Scale {
    double origin = 0;
    double perUnit = 1;
    double At(double coordinate) const;
  };
  static Scale ScaleOf(const QCPAxis& axis);

  void drawLegendIcon(QCPPainter*, const QRectF&) const override {}

 private:
  // The view fits the axes itself.
  static QCPRange NoRange(bool& found) {
    found = false;
    return {};
  }
};

}  // namespace bexlow::platform
