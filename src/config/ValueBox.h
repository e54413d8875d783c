// A text box that takes digits, and a minus sign only while it is empty.
#pragma once

#include <QLineEdit>

namespace bexlow::config {

/// Other keys are ignored. Text that is pasted, dropped or composed by an input method loses the characters
/// that could not have been typed.
class ValueBox : public QLineEdit {
 public:
  ValueBox(const char* name, const QString& accessibleName, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace bexlow::config
