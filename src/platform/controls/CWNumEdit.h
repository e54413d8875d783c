// A numeric edit: keeps the program's values exactly and the user's entries within the limits.
#pragma once

#include <QDoubleSpinBox>

#include <optional>

namespace bexlow::platform {

class CWNumEdit : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit CWNumEdit(QWidget* parent = nullptr);

  /// The exact value that the program assigned last, or the user's entry since then. While the typed number
  /// lies outside the limits, it is the limit that the box will show when the user has finished.
  double Value() const;

  /// Shows a value. It may lie outside the limits and may have more decimals than are shown.
  /// A value that is no finite number is ignored.
  void Value(double value);

  /// Limits for the user's typing, wheel and arrows. The value on show stays as it is. A key that fits no
  /// number within them is refused, a number outside them ends at the nearer limit, and the box says so.
  void SetLimits(double minimum, double maximum);

  /// Decimals on show; the exact value is kept. Typed decimals beyond them are rounded.
  void SetDecimals(int decimals);

  QValidator::State validate(QString& text, int& position) const override;
  void fixup(QString& text) const override;
  QString textFromValue(double value) const override;
  double valueFromText(const QString& text) const override;
  void stepBy(int steps) override;

 protected:
  StepEnabled stepEnabled() const override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool IsInside(double value) const { return value >= lower_ && value <= upper_; }
  void OnEdited();
  void OnFinished();
  void Mark();
  QString LimitsInWords() const;
  /// Says why typed text is refused: in a tool tip beside the box and as its accessible description.
  void Refuse(const QString& words);
  void EndRefusal();  ///< the tool tip stays for a while

  double Rounded(double value) const;  ///< to the decimals on show

  double given_ = 0;  ///< by the program, maybe outside the limits
  double lower_ = 0;
  double upper_ = 100;
  int decimals_ = 0;
  QString outside_;                     ///< the typed text while it lies outside the limits
  std::optional<QString> description_;  ///< the accessible one, while a refusal replaces it
};

}  // namespace bexlow::platform
