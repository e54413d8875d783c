#include "platform/controls/CWNumEdit.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/controls/Colours.h"

namespace bexlow::platform {

namespace {

constexpr int ExactDecimals = 22;            // of the base class: from 1e-5 on a double keeps its 17 digits
constexpr double LongestPlainNumber = 1e12;  // beyond it digits would fill the box

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
  setDecimals(ExactDecimals);
  setFocusPolicy(Qt::StrongFocus);
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  // An assistive tool uses the base's range, which holds a value that was given outside the limits.
  connect(this, &QDoubleSpinBox::valueChanged, this, [this](double value) {
    if (value != given_ && !IsInside(value)) Value(std::clamp(value, lower_, upper_));
    Mark();
  });
  connect(lineEdit(), &QLineEdit::textEdited, this, &CWNumEdit::OnEdited);
  connect(lineEdit(), &QLineEdit::inputRejected, this, [this] {
    Refuse((decimals_ > 0 ? "Only a number goes here, " : "Only a whole number goes here, ") +
           LimitsInWords());
  });
  connect(this, &QDoubleSpinBox::editingFinished, this, &CWNumEdit::OnFinished);
  Value(0);
}

double CWNumEdit::Value() const {
  const auto typed = outside_.isEmpty() ? std::nullopt : NumberOf(lineEdit()->text());
  return typed ? std::clamp(*typed, lower_, upper_) : value();
}

void CWNumEdit::Value(double value) {
  if (!std::isfinite(value)) return;
  given_ = value;
  outside_.clear();
  EndRefusal();
  setRange(std::min(lower_, value), std::max(upper_, value));
  setValue(value);
  lineEdit()->setText(CWNumEdit::textFromValue(value));  // replaces half-typed text, too
  Mark();
}

// A value outside the limits, which no user can have entered, is red.
void CWNumEdit::Mark() {
  QPalette look;
  if (!IsInside(value())) look.setColor(QPalette::Text, ColoursOf(QApplication::palette()).mark);
  setPalette(look);
}

void CWNumEdit::SetLimits(double minimum, double maximum) {
  lower_ = minimum;
  upper_ = maximum;
  Value(value());
}

void CWNumEdit::SetDecimals(int decimals) {
  decimals_ = decimals;
  Value(value());
}

// A typed number may lie outside the limits: if 1025 were refused at a limit of 1024, 102 would be left.
QValidator::State CWNumEdit::validate(QString& text, int& position) const {
  if (text == textFromValue(value())) return QValidator::Acceptable;
  text = text.trimmed();
  if (decimals_ > 0) text.replace(u',', u'.');
  position = std::min(position, static_cast<int>(text.size()));
  const QString sign = lower_ < 0 ? "-?" : "";
  const QString fraction = decimals_ > 0 ? "(\\.[0-9]*)?" : "";
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
  if (!typed.isEmpty())
    Refuse(typed + " is outside " + LimitsInWords() + ": " +
           (accessibleName().isEmpty() ? "the box" : accessibleName()) + " now holds " + text());
}

QString CWNumEdit::LimitsInWords() const { return textFromValue(lower_) + " to " + textFromValue(upper_); }

// Beside the box, since those below are filled in next: Qt shows a tip 16 pixels lower than asked. After the
// running event, since Qt hides a tool tip when the focus changes.
void CWNumEdit::Refuse(const QString& words) {
  if (!description_) description_ = accessibleDescription();
  setAccessibleDescription(words);
  const auto show = [this, words] {
    QToolTip::showText(mapToGlobal(rect().topRight()) - QPoint(0, 16), words, this);
  };
  QMetaObject::invokeMethod(this, show, Qt::QueuedConnection);
}

void CWNumEdit::EndRefusal() {
  if (!description_) return;
  setAccessibleDescription(*std::exchange(description_, std::nullopt));
}

QString CWNumEdit::textFromValue(double value) const {
  if (std::abs(value) >= LongestPlainNumber) return QLocale::c().toString(value, 'g', 6);
  return QLocale::c().toString(Rounded(value) == 0 ? 0.0 : value, 'f', decimals_).remove(u',');
}

double CWNumEdit::valueFromText(const QString& text) const {
  if (text == textFromValue(value())) return value();
  return Rounded(NumberOf(text).value_or(0));
}

double CWNumEdit::Rounded(double value) const { return QString::number(value, 'f', decimals_).toDouble(); }

void CWNumEdit::stepBy(int steps) {
  const double from = Rounded(Value());
  outside_.clear();
  EndRefusal();
  setValue(std::clamp(from + steps * singleStep(), lower_, upper_));
  selectAll();
}

QAbstractSpinBox::StepEnabled CWNumEdit::stepEnabled() const {
  StepEnabled enabled = StepNone;
  if (isReadOnly()) return enabled;
  if (value() < upper_) enabled |= StepUpEnabled;
  if (value() > lower_) enabled |= StepDownEnabled;
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
