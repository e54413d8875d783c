// A screen: a named widget with a caption, a menu of its own and controls that go with it.
#pragma once

#include <QAction>
#include <QList>
#include <QMenu>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QKeyEvent;
class QPushButton;
class QRadioButton;

namespace bexlow::platform {

enum class Pointer { Normal, Busy };

class Form : public QWidget {
  Q_OBJECT

 public:
  Form(const char* name, const QString& caption);
  ~Form() override;

  std::string Name() const { return objectName().toStdString(); }
  const QList<QMenu*>& Menus() const { return menus_; }

  /// Leaves the screen: its timers and ports end now, the widget goes when the running handler has ended.
  void Unload();
  bool Unloaded() const { return unloaded_; }
  /// Adds a step of Unload. Controls add themselves.
  void AtUnload(std::function<void()> step) { unloadSteps_.push_back(std::move(step)); }

  /// Shows the screen as a window that holds off the other windows' input. Returns at once.
  void ShowModal(QWidget* above);

  /// The pointer of the whole program; a screen that is left takes its busy pointer with it.
  void MousePointer(Pointer pointer);

  /// The screen in front: the modal one on top, else the active child window. Null before the first.
  static Form* Active();
  static Form* ActiveChild();
  static void ActiveChild(Form* form);
  /// The screen has come to the front: the keyboard goes to its first control.
  void Activated();

  /// Sees each key pressed in this screen before its controls do. True: the key is used up.
  std::function<bool(const QKeyEvent&)> OnKeyDown;
  /// What the window's close button or Escape does in a modal screen or a child window.
  std::function<void()> OnCloseRequest;

 signals:
  void Left();

 protected:
  QMenu* AddMenu(const char* name, const QString& caption);
  QAction* AddEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> handler);
  /// An entry whose check mark only the program sets.
  QAction* AddCheckEntry(QMenu* menu, const char* name, const QString& caption,
                         std::function<void()> handler);
  QAction* AddSeparator(QMenu* menu, const char* name);
  /// A button whose click goes through the event gate.
  QPushButton* MakeButton(const char* name, const QString& caption, std::function<void()> handler);
  /// An option whose choice by the user goes through the event gate; options of one parent exclude each
  /// other.
  QRadioButton* MakeOption(const char* name, const QString& caption, QWidget* parent,
                           std::function<void()> handler);
  void DefaultButton(QPushButton* button) { defaultButton_ = button; }
  /// What has the keyboard first, where it is not the first control.
  void FirstFocus(QWidget* control) { firstFocus_ = control; }

  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Choose(const QMenu* menu, const std::function<void()>& handler);

  QList<QMenu*> menus_;
  std::vector<std::function<void()>> unloadSteps_;
  QPushButton* defaultButton_ = nullptr;
  QWidget* firstFocus_ = nullptr;
  bool unloaded_ = false;
  bool busy_ = false;
};

}  // namespace bexlow::platform
