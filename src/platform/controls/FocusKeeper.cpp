#include "platform/controls/FocusKeeper.h"

#include <QEvent>
#include <QScopeGuard>

namespace bexlow::platform {

void FocusKeeper::Run(const std::function<void()>& action, const QWidget* pressed) {
  const bool usesIt = pressed != nullptr && pressed == screen_.focusWidget();
  const bool stillWaits =
      control_ != nullptr && !control_->isEnabled() && screen_.focusWidget() == movedOnTo_ && !usesIt;
  if (!stillWaits) Watch(screen_.focusWidget());
  const auto end = qScopeGuard([this] {
    running_ = false;
    movedOnTo_ = screen_.focusWidget();
  });
  running_ = true;
  action();
}

void FocusKeeper::Watch(QWidget* control) {
  if (control_ != nullptr) control_->removeEventFilter(this);
  control_ = control;
  if (control_ != nullptr) control_->installEventFilter(this);
}

bool FocusKeeper::eventFilter(QObject* watched, QEvent* event) {
  const bool enabledAgain =
      event->type() == QEvent::EnabledChange && watched == control_ && control_->isEnabled();
  if (enabledAgain && (running_ || screen_.focusWidget() == movedOnTo_)) control_->setFocus();
  return false;
}

}  // namespace bexlow::platform
