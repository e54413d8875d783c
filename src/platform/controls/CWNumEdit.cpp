#include "platform/controls/CWNumEdit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace bexlow::platform {

namespace {

constexpr double LongestPlainNumber = 1e12;  // beyond it digits would fill the box

bool IsPlainZero(const QString& text) {
  return std::ranges::none_of(text, [](QChar c) { return c.isDigit() && c != u'0'; });
}

std::optional<double> NumberOf(const QString& text) {
  bool isNumber = false;
  const double number = QLocale::c().toDouble(text, &isNumber);
  return isNumber ? std::optional(number) : std::nullopt;
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
  connect(lineEdit(), &QLineEdit::textEdited, this, &CWNumEdit::OnEdited);
  connect(lineEdit(), &QLineEdit::inputRejected, this, [this] {
    Refuse((decimals() > 0 ? "Only a number goes here, " : "Only a whole number goes here, ") +
           LimitsInWords());
  });
  connect(this, &QDoubleSpinBox::editingFinished, this, &CWNumEdit::OnFinished);
}

double CWNumEdit::Value() const {
  const auto typed = outside_.isEmpty() ? std::nullopt : NumberOf(lineEdit()->text());
  return typed ? std::clamp(*typed, lower_, upper_) : value_;
}

void CWNumEdit::Value(double value) {
  if (!std::isfinite(value)) return;
  assigning_ = true;
  outside_.clear();
  EndRefusal();
  value_ = value;
  FitBaseRange();
  setValue(value);
  shown_ = QDoubleSpinBox::value();
  lineEdit()->setText(textFromValue(shown_));  // replaces half-typed text, too
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

// The base class limits every value to its range, so the range must include an assigned value.
void CWNumEdit::FitBaseRange() {
  const double least = std::min(lower_, value_);
  const double greatest = std::max(upper_, value_);
  if (least != minimum() || greatest != maximum()) setRange(least, greatest);
}

void CWNumEdit::OnBaseChange(double shown) {
  if (assigning_ || shown == shown_) return;  // Enter reports values that have not changed
  shown_ = shown;
  if (IsInside(shown)) {
    value_ = shown;
  } else {
    Value(std::clamp(shown, lower_, upper_));  // an assistive tool uses the base's range, maybe a wider one
  }
}

// A typed number may lie outside the limits: if 1025 were refused at a limit of 1024, 102 would be left.
QValidator::State CWNumEdit::validate(QString& text, int& position) const {
  if (text == textFromValue(value())) return QValidator::Acceptable;
  text = text.trimmed();
  if (decimals() > 0) text.replace(u',', u'.');
  position = std::min(position, static_cast<int>(text.size()));
  const QString sign = lower_ < 0 ? "-?" : "";
  const QString fraction = decimals() > 0 ? "(\\.[0-9]*)?" : "";
  const QRegularExpression number("\\A" + sign + "[0-9]*" + fraction + "\\z");
  if (!number.match(text).hasMatch()) return QValidator::Invalid;
  const auto typed = NumberOf(text);
  return typed && IsInside(*typed) ? QValidator::Acceptable : QValidator::Intermediate;
}

void CWNumEdit::fixup(QString& text) const {
  const auto typed = NumberOf(text.trimmed());
  if (typed && std::isfinite(*typed)) text = textFromValue(std::clamp(*typed, lower_, upper_));
}

void CWNumEdit::OnEdited() {
  const auto typed = NumberOf(lineEdit()->text());
  const bool outside = typed && !IsInside(*typed);
  const bool moreDigitsCannotHelp = outside && (*typed > upper_ ? *typed >= 0 : *typed < 0);
  if (!outside && !outside_.isEmpty()) QToolTip::hideText();
  outside_ = outside ? lineEdit()->text() : QString();
  if (moreDigitsCannotHelp) {
    Refuse("Outside " + LimitsInWords());
  } else {
    EndRefusal();
  }
}

void CWNumEdit::OnFinished() {
  const QString typed = std::exchange(outside_, {});
  if (!typed.isEmpty()) Refuse(typed + " is outside " + LimitsInWords() + ": the box now holds " + text());
}

QString CWNumEdit::LimitsInWords() const {
  return textFromValue(lower_) + " to " + textFromValue(upper_);
}

// Shown after the running event, since Qt hides a tool tip when the focus changes.
void CWNumEdit::Refuse(const QString& words) {
  if (!description_) description_ = accessibleDescription();
  setAccessibleDescription(words);
  const auto show = [this, words] { QToolTip::showText(mapToGlobal(rect().bottomLeft()), words, this); };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void CWNumEdit::EndRefusal() {
  if (!description_) return;
  setAccessibleDescription(*std::exchange(description_, std::nullopt));
}

QString CWNumEdit::textFromValue(double value) const {
  if (std::abs(value) >= LongestPlainNumber) return QLocale::c().toString(value, 'g', 6);
  const auto text = QLocale::c().toString(value, 'f', decimals()).remove(u',');
  return text.startsWith(u'-') && IsPlainZero(text) ? text.mid(1) : text;
}

double CWNumEdit::valueFromText(const QString& text) const {
  if (text == textFromValue(value())) return value();
  return QLocale::c().toDouble(QLocale::c().toString(NumberOf(text).value_or(0), 'f', decimals()));
}

void CWNumEdit::stepBy(int steps) {
  const double from = outside_.isEmpty() ? value() : Value();
  outside_.clear();
  EndRefusal();
  setValue(std::clamp(from + steps * singleStep(), lower_, upper_));
  selectAll();
}

QAbstractSpinBox::StepEnabled CWNumEdit::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (isReadOnly()) return enabled;
  if (value_ < upper_) enabled |= StepUpEnabled;
  if (value_ > lower_) enabled |= StepDownEnabled;
  return enabled;
}

// Ten steps at once go unseen, on a page that scrolls even in a box that is out of sight: page keys and the
// wheel with a key held scroll the page that holds the box, and so does any wheel without the focus.
void CWNumEdit::keyPressEvent(QKeyEvent* event) {
  const bool pages = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
  pages ? event->ignore() : QDoubleSpinBox::keyPressEvent(event);
}

void CWNumEdit::wheelEvent(QWheelEvent* event) {
  const bool steps = hasFocus() && event->modifiers() == Qt::NoModifier;
  steps ? QDoubleSpinBox::wheelEvent(event) : event->ignore();
}

}  // namespace bexlow::platform
