// A numeric edit: what the program assigns is kept to the last bit, what the user enters stays inside the
// limits.
#pragma once

#include <QDoubleSpinBox>

#include <functional>

namespace bexlow::platform {

class CWNumEdit : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit CWNumEdit(QWidget* parent = nullptr);

  /// What the program assigned last, exactly, or what the user has made of it since.
  double Value() const { return value_; }

  /// Shows a value. It may lie outside the limits and may have more decimals than are shown.
  /// A value that is no finite number is ignored.
  void Value(double value);

  /// Limits for the user's typing, wheel and arrows. The value on show stays as it is.
  void SetLimits(double minimum, double maximum);
  double Minimum() const { return lower_; }
  double Maximum() const { return upper_; }

  /// Decimals on show; the exact value is kept.
  void SetDecimals(int decimals);

  /// What one press of an arrow adds or takes.
  void SetStep(double step);

  /// Called with the new value when the user has changed it, not when the program has.
  std::function<void(double)> ValueChanged;

  QValidator::State validate(QString& text, int& position) const override;
  void fixup(QString& text) const override;
  QString textFromValue(double value) const override;
  double valueFromText(const QString& text) const override;
  void stepBy(int steps) override;

 protected:
  StepEnabled stepEnabled() const override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool IsInside(double value) const { return value >= lower_ && value <= upper_; }
  void FitBaseRange();
  void OnBaseChange(double shown);

  double value_ = 0;
  double shown_ = 0;  // the same, rounded to the decimals on show
  double lower_ = 0;
  double upper_ = 100;
  bool assigning_ = false;
};

}  // namespace bexlow::platform
