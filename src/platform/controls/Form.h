// A screen: a named widget with a caption, a menu of its own, and controls that end with it.
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

#include "platform/controls/Controls.h"

namespace bexlow::platform {

enum class Pointer { Normal, Busy };

/// What a screen is doing with the logger, in words.
struct Activity {
  std::string phase;         ///< "Writing": read aloud when it changes
  std::string details;       ///< "cell 12 of 46, 17 s left": shown behind it
  std::string joint = ", ";  ///< stands between the two
  bool warns = false;        ///< the exchange does not go on
  std::string Text() const { return details.empty() ? phase : phase + joint + details; }
};

class Form : public QWidget {
  Q_OBJECT

 public:
  Form(const char* name, const QString& caption);
  ~Form() override;

  std::string Name() const { return objectName().toStdString(); }
  const QList<QMenu*>& Menus() const { return menus_; }

  /// Leaves the screen: its timers and ports end now, the widget goes when the running handler has ended.
  /// deleteLater does the same.
  void Unload();
  bool Unloaded() const { return unloaded_; }
  /// Adds a step of Unload. Controls add themselves.
  void AtUnload(std::function<void()> step) { unloadSteps_.push_back(std::move(step)); }

  /// Shows the screen as a window that blocks input to the other windows. Returns at once.
  void ShowModal(QWidget* above);

  /// A port was opened or a timer started (+1), or ended (-1): while any is left, the screen is engaged in an
  /// exchange with the logger.
  void Engage(int change) {
    if ((engaged_ += change) == 0) emit ActivityChanged();
  }
  bool Engaged() const { return engaged_ > 0; }
  /// The engaged screen other than this, null if there is none.
  static const Form* OtherEngaged(const Form* form = nullptr);
  /// Tells what an engaged screen is doing; after ActivityChanged it is asked at once.
  std::function<Activity()> OnActivity;
  /// Tells what a screen is doing without the logger, while it is in front.
  std::function<Activity()> OnListening;
  /// What one of the two tells; empty where a screen does not tell.
  Activity Doing() const;

  /// Sets the pointer of the whole program; leaving the screen ends its busy pointer.
  void MousePointer(Pointer pointer);

  /// The screen in front: the modal one on top, else the one on show in the outer window. Null before the
  /// first.
  static Form* Active();
  /// The screen has come to the front: the keyboard goes to the control that had it last, at first to the
  /// first one that does more than show a text, or to the screen itself.
  void Activated();

  /// What the window's close button or Escape does in a modal screen or a child window; null: nothing.
  std::function<void()> OnCloseRequest = [this] { Unload(); };

 signals:
  void Left();
  /// The numbers of OnActivity are new: the status line tells them now, as the screen does.
  void ActivityChanged();

 protected:
  QMenu* AddMenu(const char* name, const QString& caption);
  /// An entry of a menu; its key, if it has one, works while the screen is in front.
  QAction* AddEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> handler,
                    const QKeySequence& key = {});
  /// An entry whose check mark only the program sets.
  QAction* AddCheckEntry(QMenu* menu, const char* name, const QString& caption, std::function<void()> handler,
                         const QKeySequence& key = {});
  /// A button whose click goes through the event gate.
  QPushButton* MakeButton(const char* name, const QString& caption, std::function<void()> handler);
  /// An option; options of one parent exclude each other. The handler runs through the event gate, each
  /// time the option is marked later, by a click, a key or an assistive tool.
  QRadioButton* MakeOption(const char* name, const QString& caption, QWidget* parent, bool marked,
                           const std::function<void()>& handler = {});
  void DefaultButton(QPushButton* button) { defaultButton_ = button; }
  /// The control that has the keyboard first, where it is not the first that does more than show a text; the
  /// screen itself for none.
  void FirstFocus(QWidget* control) { firstFocus_ = control; }
  /// A key that works wherever the keyboard is while the screen is in front. Held down it counts once.
  void AddChord(const QKeySequence& key, std::function<void()> handler);
  /// What the screen does first: an event after the click that opens it, when the screen is in front.
  void StartWith(std::function<void()> handler);

  /// The least height, not the preferred one: a scroll area gives no less than this.
  int heightForWidth(int width) const override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Runs a user's action, under the handler's name. False if it was dropped.
  bool Act(const std::string& handler, const std::function<void()>& action, const QWidget* pressed = nullptr);
  /// Qt moves the focus on when the focused control is disabled. It comes back when the control is enabled
  /// again, during the action or later, unless the user has moved it meanwhile.
  /// @param pressed  what the user pressed for the action; null for a menu entry or a key
  void KeepFocus(const std::function<void()>& action, const QWidget* pressed);
  void End();

  QList<QMenu*> menus_;
  std::vector<std::function<void()>> unloadSteps_;
  QPushButton* defaultButton_ = nullptr;
  QPointer<QWidget> focused_;    ///< when the last action began
  QPointer<QWidget> movedOnTo_;  ///< has the focus since that action ended
  bool acting_ = false;
  QWidget* firstFocus_ = nullptr;
  bool shownBefore_ = false;
  bool unloaded_ = false;
  bool busy_ = false;
  int engaged_ = 0;
};

}  // namespace bexlow::platform
