// The start-up screen: the menu that leads to every other screen, and the launch.
#pragma once

#include "link/Launch.h"

namespace bexlow::shell {

class MDIForm1;

class Main : public platform::Form {
  Q_OBJECT

 public:
  explicit Main(MDIForm1& outer);

 private:
  using MakeScreen = std::function<platform::Form*()>;

  void BuildFileMenu();
  void BuildToolsMenu();
  void BuildDisplayMenu();
  void BuildHelpMenu();
  void BuildBody();
  QWidget* BuildOpenButton();

  /// An entry that shows a screen which talks to the logger and so needs a selected port.
  QAction* AddPortScreen(QMenu* menu, const char* name, const QString& caption, const QString& screen,
                         const MakeScreen& make);
  platform::Form* ShowScreen(const QString& screen, const MakeScreen& make);
  void OpenGraph();
  void cmdOpenDataFile_Click();
  void OpenDataFiles(const std::vector<std::string>& paths);

  void mnuConnect_Click();
  void ToggleDisplay();
  void LoggerReached(bool reached);
  /// @param heard  the logger sent something during the erase
  void LoggerSentOff(bool heard);
  void ShowHint();

  MDIForm1& outer_;
  QMenu* mnuTools = nullptr;
  QMenu* mnuDisplay = nullptr;
  QAction* mnuAcc = nullptr;
  QAction* mnuAngles = nullptr;
  QAction* mnuRemote = nullptr;
  QLabel* lblHint = nullptr;
  QString sentOff_;               ///< what was seen of the last launch, until a logger is asked again
  std::int16_t reachedPort_ = 0;  ///< where a logger answered last
  platform::CommonDialog CommonDialog1;
  link::Launch launch_;
};

}  // namespace bexlow::shell
