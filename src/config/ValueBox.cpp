#include "config/ValueBox.h"

#include <QKeyEvent>
#include <QValidator>

namespace bexlow::config {

namespace {

bool Passes(QChar key, bool boxIsEmpty) {
  return (key >= u'0' && key <= u'9') || (key == u'-' && boxIsEmpty);
}

/// Takes out of any new text what the keys would not have brought in.
class KeyFilter : public QValidator {
 public:
  explicit KeyFilter(QLineEdit* box) : QValidator(box) {
    connect(box, &QLineEdit::textChanged, this, [this](const QString& text) { before_ = text; });
  }

  State validate(QString& text, int& cursor) const override {
    const bool minusMayLead = before_.isEmpty() || before_.startsWith(u'-');
    QString passed;
    qsizetype droppedBeforeCursor = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
      if (Passes(text[i], passed.isEmpty() && minusMayLead)) {
        passed += text[i];
      } else if (i < cursor) {
        ++droppedBeforeCursor;
      }
    }
    text = passed;
    cursor -= static_cast<int>(droppedBeforeCursor);
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

// A key that does not pass leaves the box as it is, a selection in it too.
void ValueBox::keyPressEvent(QKeyEvent* event) {
  const QString typed = event->text();
  const bool isCommand =
      (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
  const bool isCharacter = !isCommand && !typed.isEmpty() && typed.front().isPrint();
  if (isCharacter && !Passes(typed.front(), text().isEmpty())) return event->accept();
  QLineEdit::keyPressEvent(event);
}

}  // namespace bexlow::config
