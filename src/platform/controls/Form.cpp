#include "platform/controls/Form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

#include "platform/controls/EventGate.h"

namespace bexlow::platform {

namespace {
Form* activeChild = nullptr;
std::vector<Form*> modalForms;
constexpr auto MarkedBefore =
    "markedBefore";  // of a group: the option that a dropped click gives the mark back to
}  // namespace

Form::Form(const char* name, const QString& caption) {
  setObjectName(name);
  setWindowTitle(caption);
  setAccessibleName(caption);
  setFocusPolicy(Qt::StrongFocus);
  qApp->installEventFilter(this);
}

Form::~Form() {
  MousePointer(Pointer::Normal);
  std::erase(modalForms, this);
  if (activeChild == this) activeChild = nullptr;
}

void Form::Unload() {
  if (std::exchange(unloaded_, true)) return;
  for (const auto& step : unloadSteps_) step();
  MousePointer(Pointer::Normal);
  std::erase(modalForms, this);
  if (activeChild == this) activeChild = nullptr;
  if (isWindow()) hide();
  emit Left();
  deleteLater();
}

void Form::ShowModal(QWidget* above) {
  setParent(above, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  setWindowModality(Qt::ApplicationModal);
  modalForms.push_back(this);
  adjustSize();
  show();
  activateWindow();
}

void Form::MousePointer(Pointer pointer) {
  const bool busy = pointer == Pointer::Busy;
  if (busy == std::exchange(busy_, busy)) return;
  if (busy) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QApplication::restoreOverrideCursor();
  }
}

Form* Form::Active() {
  return modalForms.empty() ? activeChild : modalForms.back();
}

Form* Form::ActiveChild() {
  return activeChild;
}

void Form::ActiveChild(Form* form) {
  activeChild = form;
}

void Form::Activated() {
  if (focusWidget() != nullptr && focusWidget() != this) return focusWidget()->setFocus();
  if (firstFocus_ != nullptr) return firstFocus_->setFocus();
  for (auto* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
    const bool isStop = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled();
    if (isAncestorOf(next) && isStop && next->isVisibleTo(this)) return next->setFocus();
  }
}

QMenu* Form::AddMenu(const char* name, const QString& caption) {
  auto* menu = new QMenu(caption, this);
  menu->setObjectName(name);
  menu->menuAction()->setObjectName(name);
  menus_.append(menu);
  return menu;
}

// A screen reader reaches the entries of a disabled menu.
void Form::Choose(const QMenu* menu, const std::function<void()>& handler) {
  if (!unloaded_ && menu->isEnabled()) EventGate::Get().Click(this, handler);
}

QAction* Form::AddEntry(QMenu* menu, const char* name, const QString& caption,
                        std::function<void()> handler) {
  auto* entry = menu->addAction(caption);
  entry->setObjectName(name);
  connect(entry, &QAction::triggered, this,
          [this, menu, handler = std::move(handler)] { Choose(menu, handler); });
  return entry;
}

QAction* Form::AddCheckEntry(QMenu* menu, const char* name, const QString& caption,
                             std::function<void()> handler) {
  auto* entry = menu->addAction(caption);
  entry->setObjectName(name);
  entry->setCheckable(true);
  connect(entry, &QAction::triggered, this, [this, menu, entry, handler = std::move(handler)](bool toggled) {
    entry->setChecked(!toggled);
    Choose(menu, handler);
  });
  return entry;
}

QAction* Form::AddSeparator(QMenu* menu, const char* name) {
  auto* separator = menu->addSeparator();
  separator->setObjectName(name);
  return separator;
}

QPushButton* Form::MakeButton(const char* name, const QString& caption, std::function<void()> handler) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, [this, handler = std::move(handler)] {
    if (!unloaded_) EventGate::Get().Click(this, handler);
  });
  return button;
}

QRadioButton* Form::MakeOption(const char* name, const QString& caption, QWidget* parent,
                               std::function<void()> handler) {
  auto* option = new QRadioButton(caption, parent);
  option->setObjectName(name);
  connect(option, &QRadioButton::toggled, parent, [parent, option](bool marked) {
    if (!marked) parent->setProperty(MarkedBefore, QVariant::fromValue(option));
  });
  connect(option, &QRadioButton::clicked, this, [this, parent, handler = std::move(handler)] {
    if (unloaded_ || EventGate::Get().Click(
                         this, handler ? handler : [] {}))
      return;
    if (auto* before = parent->property(MarkedBefore).value<QRadioButton*>()) before->setChecked(true);
  });
  return option;
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
  if (OnCloseRequest) EventGate::Get().Click(this, OnCloseRequest);
}

bool Form::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !OnKeyDown || unloaded_) return false;
  if (Active() != this || !watched->isWidgetType()) return false;
  bool used = false;
  EventGate::Get().Click(this, [&] { used = OnKeyDown(*static_cast<QKeyEvent*>(event)); });
  return used;
}

}  // namespace bexlow::platform
