#include "config/ValueBox.h"

#include <QKeyEvent>
#include <QValidator>

#include <algorithm>

namespace bexlow::config {

namespace {

bool Passes(QChar key, bool boxIsEmpty) {
  return (key >= u'0' && key <= u'9') || (key == u'-' && boxIsEmpty);
}

/// Removes from inserted text the characters that could not have been typed; keeps the text already there.
class KeyFilter : public QValidator {
 public:
  explicit KeyFilter(QLineEdit* box) : QValidator(box) {
    connect(box, &QLineEdit::textChanged, this, [this](const QString& text) { before_ = text; });
  }

  State validate(QString& text, int& cursor) const override {
    const auto head = std::ranges::mismatch(text, before_).in1 - text.begin();
    const auto most = std::min(text.size(), before_.size()) - head;
    qsizetype tail = 0;
    while (tail < most && text[text.size() - 1 - tail] == before_[before_.size() - 1 - tail]) ++tail;
    QString passed;
    for (const QChar key : text.sliced(head, text.size() - head - tail)) {
      if (Passes(key, head + passed.size() + tail == 0)) passed += key;
    }
    cursor -= static_cast<int>(text.size() - head - tail - passed.size());
    text = text.first(head) + passed + text.last(tail);
    return Acceptable;
  }

 private:
  QString before_;
};

}  // namespace

ValueBox::ValueBox(const char* name, const QString& accessibleName, QWidget* parent) : QLineEdit(parent) {
  setObjectName(name);
  setAccessibleName(accessibleName);
  setInputMethodHints(Qt::ImhFormattedNumbersOnly);
  setValidator(new KeyFilter(this));
}

// A key that does not pass changes nothing in the box; selected text stays selected.
void ValueBox::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  const bool isCommand =
      (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  const bool isCharacter = !isCommand && !typed.isEmpty() && typed.front().isPrint();
  if (isCharacter && !Passes(typed.front(), text().isEmpty())) return event->accept();
  QLineEdit::keyPressEvent(event);
}

}  // namespace bexlow::config
