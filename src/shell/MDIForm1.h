// The outer window: child windows as tabs, and the menu of the one in front.
#pragma once

#include <QMainWindow>

#include "platform/controls/Form.h"
#include "platform/machine/Machine.h"

class QStatusBar;
class QTabWidget;

namespace bexlow::platform {
class RunningCopy;
}

namespace bexlow::shell {

/// Shown if there is no manual to open.
inline constexpr auto ManualElsewhere =
    "Please refer to the Software Help Manual located on the distribution media!";

/// The line at the foot of the window: the logger, what a screen is doing with it, and the last failure.
class StatusLine {
 public:
  explicit StatusLine(QStatusBar& bar);
  ~StatusLine();
  Q_DISABLE_COPY(StatusLine)

  /// What is known of the logger, such as "Connected on Comm 5"; to this the device is added.
  void Connection(const std::string& text);
  /// Asks the engaged screen what it is doing. Happens of itself four times a second.
  void Refresh();

 private:
  void TellConnection();

  QStatusBar& bar_;
  QLabel* lblConnection;
  QLabel* lblActivity;
  QLabel* lblFailure;
  std::string phase_, connection_, device_, failure_;
  const platform::Form* engaged_ = nullptr;  ///< when the line was told last; only to be compared
  std::unique_ptr<platform::Alarm> alarm_;
};

class MDIForm1 : public QMainWindow {
  Q_OBJECT

 public:
  MDIForm1();
  ~MDIForm1() override;

  /// The start-up steps. False if another copy runs: then nothing has happened but the message.
  bool Load();

  /// The open child of that name, null if there is none.
  platform::Form* Child(const QString& name) const;
  /// Takes a new child in, or brings one that is open to the front.
  void ShowChild(platform::Form* child);
  /// Called with the paths of files that were dropped on the window.
  std::function<void(const std::vector<std::string>& paths)> OnFilesDropped;
  StatusLine& Status() { return status_; }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void OnActivated(int tab);
  void OnLeft(platform::Form* child);
  void AskToClose(int tab);
  void ShowManual();
  platform::Form* ChildAt(int tab) const;
  int TabOf(const platform::Form* child) const;

  QTabWidget* tabs_;
  StatusLine status_;
  QPointer<platform::Form> front_;  ///< whose menus are on show
  std::unique_ptr<platform::RunningCopy> runningCopy_;
};

/// The start-up screen: the menu that leads to every other screen, the table of runs, and the launch.
platform::Form* MakeMain(MDIForm1& outer);

}  // namespace bexlow::shell
