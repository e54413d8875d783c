// What drawn controls share: the part that does not move, and what assistive tools hear.
#pragma once

#include <QAccessibleWidget>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <tuple>
#include <utility>

namespace bexlow::platform {

/// What does not move on a control, with the ground it stands on: drawn once and kept, so that a new value
/// repaints nothing else.
class Face {
 public:
  /// Covers the control. `draw` is called when the control looks different from last time.
  void Draw(QPainter& painter, QWidget& control, const auto& draw) {
    const double ratio = control.devicePixelRatioF();
    const Look look{control.geometry(), ratio, control.palette().cacheKey(), control.font(),
                    control.isEnabled()};
    if (std::exchange(look_, look) != look) {
      face_ = QPixmap((QSizeF(control.size()) * ratio).toSize());
      face_.setDevicePixelRatio(ratio);
      face_.fill(control.palette().color(QPalette::Window));
      QPainter ground(&face_);
      if (!control.isWindow())
        control.parentWidget()->render(&ground, {}, control.geometry(), QWidget::DrawWindowBackground);
      ground.setFont(control.font());
      draw(ground);
      control.setAttribute(Qt::WA_OpaquePaintEvent);  // a style takes it from a slider
    }
    painter.drawPixmap(0, 0, face_);
  }

 private:
  using Look = std::tuple<QRect, double, qint64, QFont, bool>;
  Look look_;
  QPixmap face_;
};

/// Tells number, ends of the scale, and whether it can be set.
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
