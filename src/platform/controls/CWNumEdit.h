// A numeric edit: what the program assigns is kept to the last bit, what the user enters stays inside the
// limits.
#pragma once

#include <QDoubleSpinBox>

#include <functional>
#include <optional>

namespace bexlow::platform {

class CWNumEdit : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit CWNumEdit(QWidget* parent = nullptr);

  /// What the program assigned last, exactly, or what the user has made of it since. While what is typed lies
  /// outside the limits, it is the limit that the box will show when the user has finished.
  double Value() const;

  /// Shows a value. It may lie outside the limits and may have more decimals than are shown.
  /// A value that is no finite number is ignored.
  void Value(double value);

  /// Limits for the user's typing, wheel and arrows. The value on show stays as it is. A key that fits no
  /// number within them is refused, a number outside them ends at the nearer limit, and the box says so.
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
  /// The number that the box holds as text, if it is one.
  std::optional<double> Typed() const;
  bool IsInside(double value) const { return value >= lower_ && value <= upper_; }
  void FitBaseRange();
  void OnBaseChange(double shown);
  void OnEdited();
  void OnFinished();
  QString LimitsInWords() const;
  /// Says why something typed does not count: in words beside the box and as its accessible description.
  void Refuse(const QString& words);
  void EndRefusal();  ///< the words beside the box stay for a while

  double value_ = 0;
  double shown_ = 0;  // the same, rounded to the decimals on show
  double lower_ = 0;
  double upper_ = 100;
  bool assigning_ = false;
  QString outside_;                     ///< what is typed, while it lies outside the limits
  std::optional<QString> description_;  ///< the accessible one, while a refusal stands in its place
};

}  // namespace bexlow::platform
