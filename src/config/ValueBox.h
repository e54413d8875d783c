// A text box that takes digits, and a minus sign only while it is empty.
#pragma once

#include <QLineEdit>

namespace bexlow::config {

/// Keys that do not pass are dropped one by one. What is pasted, dropped or composed by an input method
/// passes the same filter, as if it were typed.
class ValueBox : public QLineEdit {
 public:
  ValueBox(const char* name, const QString& accessibleName, QWidget* parent);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace bexlow::config
