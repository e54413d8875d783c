// What assistive tools hear of a drawn value: number, ends of the scale, whether it can be set.
#pragma once

#include <QAccessibleWidget>

namespace bexlow::platform {

/// @tparam Control  has Value, ValueText and Ends; MoveByUser and the focus, if it can be set
template <class Control>
class ValueAccess : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  /// For all controls of this class; a second time changes nothing.
  static void Install() {
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
      auto* control = qobject_cast<Control*>(object);
      return control ? new ValueAccess(*control) : nullptr;
    });
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                               : QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? control_.ValueText() : QAccessibleWidget::text(kind);
  }
  QAccessible::State state() const override {
    auto state = QAccessibleWidget::state();
    state.readOnly = control_.focusPolicy() == Qt::NoFocus;
    return state;
  }
  QVariant currentValue() const override { return control_.Value(); }
  void setCurrentValue([[maybe_unused]] const QVariant& value) override {
    if constexpr (requires { control_.MoveByUser(0.0); }) control_.MoveByUser(value.toDouble());
  }
  QVariant maximumValue() const override { return control_.Ends().second; }
  QVariant minimumValue() const override { return control_.Ends().first; }
  QVariant minimumStepSize() const override { return 0.0; }

 private:
  explicit ValueAccess(Control& control) : QAccessibleWidget(&control, Control::Role), control_(control) {}

  Control& control_;
};

}  // namespace bexlow::platform
