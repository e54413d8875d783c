// How a user finds things: menu entries and buttons by their captions, controls by what they are for.
#pragma once

#include <QMainWindow>
#include <QMenuBar>

#include "platform/controls/Form.h"

namespace bexlow::test {

inline QString Plain(const QString& caption) { return QString(caption).remove('&'); }

/// An entry of a menu, offered or not; null if there is none.
inline QAction* FindEntry(const QMainWindow& outer, const QString& menu, const QString& entry) {
  for (auto* top : outer.menuBar()->actions()) {
    if (Plain(top->text()) != menu) continue;
    for (auto* action : top->menu()->actions())
      if (Plain(action->text()) == entry) return action;
  }
  return nullptr;
}

/// An entry that the menu of a control offers now; null if there is none.
inline QAction* FindOffered(const QWidget& control, const QString& entry) {
  auto* menu = control.findChild<QMenu*>();
  emit menu->aboutToShow();
  for (auto* action : menu->actions())
    if (action->isVisible() && Plain(action->text()) == entry) return action;
  return nullptr;
}

/// Neither the entry nor its menu is hidden or disabled.
inline bool IsOffered(const QAction* entry) {
  if (entry == nullptr || !entry->isEnabled() || !entry->isVisible()) return false;
  const auto* menu = qobject_cast<QMenu*>(entry->associatedObjects().value(0))->menuAction();
  return menu->isEnabled() && menu->isVisible();
}

/// A button on show in the screen in front; null if there is none.
inline QPushButton* FindButton(const QString& caption) {
  const auto* form = platform::Form::Active();
  if (form == nullptr) return nullptr;
  for (auto* button : form->findChildren<QPushButton*>())
    if (Plain(button->text()) == caption && button->isVisibleTo(form)) return button;
  return nullptr;
}

/// A control of the screen in front by its name.
template <class T = QWidget>
T& The(const std::string& name) {
  const auto* form = platform::Form::Active();
  auto* control = form == nullptr ? nullptr : form->findChild<T*>(QString::fromStdString(name));
  if (control == nullptr) throw std::runtime_error("no control " + name);
  return *control;
}

}  // namespace bexlow::test
