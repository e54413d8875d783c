#include "platform/controls/CWNumEdit.h"

#include <QLineEdit>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace bexlow::platform {

namespace {

constexpr double LongestPlainNumber = 1e12;  // beyond it digits would fill the box

bool IsPlainZero(const QString& text) {
  return std::ranges::none_of(text, [](QChar c) { return c.isDigit() && c != u'0'; });
}

}  // namespace

CWNumEdit::CWNumEdit(QWidget* parent) : QDoubleSpinBox(parent) {
  auto plain = QLocale::c();
  plain.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
  setLocale(plain);
  setGroupSeparatorShown(false);
  setDecimals(0);
  setFocusPolicy(Qt::StrongFocus);
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  FitBaseRange();
  connect(this, &QDoubleSpinBox::valueChanged, this, &CWNumEdit::OnBaseChange);
}

void CWNumEdit::Value(double value) {
  if (!std::isfinite(value)) return;
  assigning_ = true;
  value_ = value;
  FitBaseRange();
  setValue(value);
  shown_ = QDoubleSpinBox::value();
  lineEdit()->setText(textFromValue(shown_));  // also over what the user has half typed
  assigning_ = false;
}

void CWNumEdit::SetLimits(double minimum, double maximum) {
  lower_ = std::min(minimum, maximum);
  upper_ = std::max(minimum, maximum);
  Value(value_);
}

void CWNumEdit::SetDecimals(int decimals) {
  assigning_ = true;
  setDecimals(decimals);
  assigning_ = false;
  Value(value_);
}

void CWNumEdit::SetStep(double step) {
  setSingleStep(step);
}

// The base bounds whatever it is given by its range, so its range has to reach out to an assigned value.
void CWNumEdit::FitBaseRange() {
  const double least = std::min(lower_, value_);
  const double greatest = std::max(upper_, value_);
  if (least != minimum() || greatest != maximum()) setRange(least, greatest);
}

void CWNumEdit::OnBaseChange(double shown) {
  if (assigning_ || shown == shown_) return;  // Enter tells of values that have not changed
  shown_ = shown;
  if (IsInside(shown)) {
    value_ = shown;
  } else {
    Value(
        std::clamp(shown, lower_, upper_));  // an assistive tool goes by the base's range, which may be wider
  }
  if (ValueChanged) ValueChanged(value_);
}

QValidator::State CWNumEdit::validate(QString& text, int& position) const {
  if (text == textFromValue(value())) return QValidator::Acceptable;
  const auto state = QDoubleSpinBox::validate(text, position);
  if (state != QValidator::Acceptable) return state;
  const double typed = QDoubleSpinBox::valueFromText(text);
  if (IsInside(typed)) return state;
  const bool moreDigitsCannotHelp = typed > upper_ ? typed >= 0 : typed < 0;
  return moreDigitsCannotHelp && IsInside(value_) ? QValidator::Invalid : QValidator::Intermediate;
}

void CWNumEdit::fixup(QString& text) const {
  bool isNumber = false;
  const double typed = QLocale::c().toDouble(text.trimmed(), &isNumber);
  if (isNumber && std::isfinite(typed)) text = textFromValue(std::clamp(typed, lower_, upper_));
}

QString CWNumEdit::textFromValue(double value) const {
  if (std::abs(value) >= LongestPlainNumber) return QLocale::c().toString(value, 'g', 6);
  const auto text = QLocale::c().toString(value, 'f', decimals()).remove(u',');
  return text.startsWith(u'-') && IsPlainZero(text) ? text.mid(1) : text;
}

double CWNumEdit::valueFromText(const QString& text) const {
  return text == textFromValue(value()) ? value() : QDoubleSpinBox::valueFromText(text);
}

void CWNumEdit::stepBy(int steps) {
  const double wanted = std::clamp(value() + steps * singleStep(), lower_, upper_);
  setValue(wanted);
  selectAll();
}

QAbstractSpinBox::StepEnabled CWNumEdit::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (isReadOnly()) return enabled;
  if (value_ < upper_) enabled |= StepUpEnabled;
  if (value_ > lower_) enabled |= StepDownEnabled;
  return enabled;
}

// Without the focus the wheel belongs to the page, which may be scrolling past.
void CWNumEdit::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) return QDoubleSpinBox::wheelEvent(event);
  event->ignore();
}

}  // namespace bexlow::platform
