#include "platform/graph/CWGraphAccess.h"

#include <QAccessibleWidget>
#include <QWidget>

namespace bexlow::platform {

namespace {

class ChartAccess : public QAccessibleWidget {
 public:
  ChartAccess(QWidget& widget, const DescribedChart& chart)
      : QAccessibleWidget(&widget, QAccessible::Chart), chart_(chart) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Description ? chart_.Description() : QAccessibleWidget::text(kind);
  }

  // Only the read-out is exposed as a child; plot and overlay have no text.
  int childCount() const override { return ReadOut() ? 1 : 0; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? QAccessible::queryAccessibleInterface(ReadOut()) : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child && ReadOut() && child->object() == ReadOut() ? 0 : -1;
  }

 private:
  QWidget* ReadOut() const { return chart_.WordsShown(); }

  const DescribedChart& chart_;
};

QAccessibleInterface* MakeAccess(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  const auto* chart = dynamic_cast<DescribedChart*>(object);
  return widget && chart ? new ChartAccess(*widget, *chart) : nullptr;
}

}  // namespace

void InstallChartAccess() {
  QAccessible::installFactory(MakeAccess);
}  // a second time changes nothing

}  // namespace bexlow::platform
