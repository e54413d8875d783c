#include "platform/controls/Form.h"

#include <QAbstractSpinBox>
#include <QAccessibleWidget>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScopeGuard>
#include <QShortcut>
#include <QSignalBlocker>

#include <utility>

#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {

// Property of an option's parent: the option that is marked again when a click is dropped.
constexpr auto MarkedBefore = "markedBefore";

std::string ClickOf(const QObject& control) { return control.objectName().toStdString() + "_Click"; }

bool TakesKeys(const QWidget& control, const QWidget& screen) {
  return screen.isAncestorOf(&control) && (control.focusPolicy() & Qt::TabFocus) != 0 &&
         control.isEnabled() && control.isVisibleTo(&screen);
}

// A modal screen is read aloud as a dialog.
class FormAccess : public QAccessibleWidget {
 public:
  explicit FormAccess(QWidget* form) : QAccessibleWidget(form) {}
  QAccessible::Role role() const override {
    return widget()->isWindow() ? QAccessible::Dialog : QAccessible::Client;
  }
};

}  // namespace

Form::Form(const char* name, const QString& caption) {
  // A second time changes nothing.
  QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
    auto* form = qobject_cast<Form*>(object);
    return form ? new FormAccess(form) : nullptr;
  });
  setObjectName(name);
  setWindowTitle(caption);
  setAccessibleName(caption);
  setFocusPolicy(Qt::ClickFocus);
}

Form::~Form() { End(); }

void Form::End() {
  EventGate::Get().Withdraw(this);
  MousePointer(Pointer::Normal);
}

void Form::Unload() {
  if (std::exchange(unloaded_, true)) return;
  for (const auto& step : unloadSteps_) step();
  End();
  if (isWindow()) {
    hide();
    if (parentWidget() != nullptr) parentWidget()->window()->activateWindow();  // not every desktop does
  }
  emit Left();
  deleteLater();
}

// Not in the destructor: by then the controls that added steps are gone.
bool Form::event(QEvent* event) {
  if (event->type() == QEvent::DeferredDelete) Unload();
  return QWidget::event(event);
}

int Form::heightForWidth(int width) const {
  return layout() == nullptr ? -1 : layout()->totalMinimumHeightForWidth(width);
}

void Form::StartWith(std::function<void()> handler) {
  EventGate::Get().Offer(this, {this, "Form_Load"}, std::move(handler));
}

void Form::ShowModal(QWidget* above) {
  setParent(above, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  setWindowModality(Qt::ApplicationModal);
  adjustSize();
  show();
  activateWindow();
  Activated();
}

const Form* Form::OtherEngaged(const Form* form) {
  for (auto* widget : QApplication::allWidgets()) {
    const auto* other = qobject_cast<Form*>(widget);
    if (other != nullptr && other != form && other->Engaged()) return other;
  }
  return nullptr;
}

Activity Form::Doing() const {
  const auto& tell = Engaged() ? OnActivity : OnListening;
  return tell ? tell() : Activity{};
}

void Form::MousePointer(Pointer pointer) {
  const bool busy = pointer == Pointer::Busy;
  if (busy == std::exchange(busy_, busy)) return;
  busy ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
}

Form* Form::Active() {
  for (auto* modal = QApplication::activeModalWidget(); modal != nullptr; modal = modal->parentWidget()) {
    if (auto* form = qobject_cast<Form*>(modal)) return form;
  }
  for (const auto* window : QApplication::topLevelWidgets()) {
    for (auto* form : window->findChildren<Form*>()) {
      if (!form->isWindow() && form->isVisible() && !form->Unloaded()) return form;
    }
  }
  return nullptr;
}

// Takes the focus as Tab does, which selects a box's text, so that typing replaces it. A window that is not
// active yet gets its focus later and without Tab.
void Form::Activated() {
  auto* wanted = std::exchange(shownBefore_, true) ? focusWidget() : firstFocus_;
  if (firstFocus_ == this && (wanted == nullptr || wanted == this)) return setFocus();
  if (wanted == nullptr || !TakesKeys(*wanted, *this)) {
    wanted = nextInFocusChain();
    while (wanted != this && (!TakesKeys(*wanted, *this) || wanted->property("readOnly").toBool()))
      wanted = wanted->nextInFocusChain();
  }
  wanted->setFocus(Qt::TabFocusReason);
  if (auto* number = qobject_cast<QAbstractSpinBox*>(wanted)) number->selectAll();
}

QMenu* Form::AddMenu(const char* name, const QString& caption) {
  auto* menu = new QMenu(caption, this);
  menu->setObjectName(name);
  menu->menuAction()->setObjectName(name);
  menus_.append(menu);
  return menu;
}

bool Form::Act(const std::string& handler, const std::function<void()>& action, const QWidget* pressed) {
  if (unloaded_) return true;
  return EventGate::Get().Click(
      this, [&] { KeepFocus(action, pressed); }, handler);
}

void Form::KeepFocus(const std::function<void()>& action, const QWidget* pressed) {
  const bool stillWaits = focused_ != nullptr && !focused_->isEnabled() && focusWidget() == movedOnTo_ &&
                          (pressed == nullptr || pressed != focusWidget());
  if (!stillWaits) {
    if (focused_ != nullptr) focused_->removeEventFilter(this);
    focused_ = focusWidget();
    if (focused_ != nullptr) focused_->installEventFilter(this);
  }
  const auto end = qScopeGuard([this] {
    acting_ = false;
    movedOnTo_ = focusWidget();
  });
  acting_ = true;
  action();
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
  const bool enabledAgain =
      event->type() == QEvent::EnabledChange && watched == focused_ && focused_->isEnabled();
  if (enabledAgain && (acting_ || focusWidget() == movedOnTo_)) focused_->setFocus();
  return false;
}

QAction* Form::AddEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> handler,
                        const QKeySequence& key) {
  auto* entry = menu->addAction(caption);
  entry->setObjectName(name);
  entry->setShortcut(key);
  entry->setAutoRepeat(false);
  connect(entry, &QAction::triggered, this, [this, menu, entry, handler = std::move(handler)](bool toggled) {
    if (entry->isCheckable()) entry->setChecked(!toggled);
    if (menu->isEnabled())
      Act(ClickOf(*entry), handler);  // a screen reader can trigger the entries of a disabled menu
  });
  return entry;
}

QAction* Form::AddCheckEntry(QMenu* menu, const char* name, const QString& caption,
                             std::function<void()> handler, const QKeySequence& key) {
  auto* entry = AddEntry(menu, name, caption, std::move(handler), key);
  entry->setCheckable(true);
  return entry;
}

QPushButton* Form::MakeButton(const char* name, const QString& caption, std::function<void()> handler) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this,
          [this, button, handler = std::move(handler)] { Act(ClickOf(*button), handler, button); });
  return button;
}

QRadioButton* Form::MakeOption(const char* name, const QString& caption, QWidget* parent, bool marked,
                               const std::function<void()>& handler) {
  auto* option = new QRadioButton(caption, parent);
  option->setObjectName(name);
  option->setChecked(marked);
  connect(option, &QRadioButton::toggled, this, [=, this](bool now) {
    if (!now) return void(parent->setProperty(MarkedBefore, QVariant::fromValue(option)));
    if (Act(
            ClickOf(*option), handler ? handler : [] {}))
      return;
    auto* before = parent->property(MarkedBefore).value<QRadioButton*>();
    const QSignalBlocker quiet(before);  // this is not the user's choice: no handler
    if (before != nullptr) before->setChecked(true);
  });
  return option;
}

void Form::AddChord(const QKeySequence& key, std::function<void()> handler) {
  auto* chord = new QShortcut(key, this);
  chord->setAutoRepeat(false);
  connect(chord, &QShortcut::activated, this,
          [this, handler = std::move(handler)] { Act("Form_KeyDown", handler); });
}

// Enter presses the button that has the focus, else the screen's default button; Escape leaves a modal
// screen.
void Form::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter) {
    auto* focused = qobject_cast<QPushButton*>(focusWidget());
    auto* button = focused != nullptr ? focused : defaultButton_;
    if (button != nullptr) return button->click();
  }
  if (event->key() == Qt::Key_Escape && isWindow()) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void Form::closeEvent(QCloseEvent* event) {
  if (unloaded_) return event->accept();
  event->ignore();
  if (OnCloseRequest) Act("Form_Unload", OnCloseRequest);
}

}  // namespace bexlow::platform
