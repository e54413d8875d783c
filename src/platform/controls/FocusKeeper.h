// Gives the focus back to a control that an action of the user has disabled for a while.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace bexlow::platform {

class FocusKeeper : public QObject {
  Q_OBJECT

 public:
  explicit FocusKeeper(QWidget& screen) : screen_(screen) {}

  /// Runs an action. Qt moves the focus on when the focused control is disabled. It comes back when the
  /// control is enabled again, during the action or later, unless the user has moved it meanwhile.
  /// @param pressed  what the user pressed for it; null for a menu entry or a key
  void Run(const std::function<void()>& action, const QWidget* pressed = nullptr);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Watch(QWidget* control);

  QWidget& screen_;
  QPointer<QWidget> control_;    ///< had the focus when the action began
  QPointer<QWidget> movedOnTo_;  ///< has it since the action ended
  bool running_ = false;
};

}  // namespace bexlow::platform
