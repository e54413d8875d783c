#include "campaign/Download.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

#include "download/DownloadErase.h"
#include "platform/RealMachine.h"
#include "shell/MDIForm1.h"
#include "shell/Records.h"

namespace bexlow::campaign {

namespace {

constexpr int LimitMs = 60'000;  // a download of 20 pages takes 7 s, its fault 5 s more

class AnsweredMachine : public platform::RealMachine {
 public:
  using RealMachine::RealMachine;

  platform::Answer Ask(const std::string& text, platform::Buttons buttons) override {
    if (text == "Download completed!") {
      ending.completed = true;
    } else if (buttons != platform::Buttons::YesNo && ending.message.empty()) {
      ending.message = text;
    }
    if (buttons == platform::Buttons::RetryCancel) {
      QTimer::singleShot(0, giveUp, &QAction::trigger);
      QTimer::singleShot(0, qApp, &QApplication::quit);
      return platform::Answer::Retry;
    }
    if (buttons == platform::Buttons::YesNo || !ending.completed)
      QTimer::singleShot(0, qApp, &QApplication::quit);
    return buttons == platform::Buttons::YesNo ? platform::Answer::No : platform::Answer::Ok;
  }
  std::optional<std::string> AskFile(const platform::FileQuestion&) override {
    return DataFile(ProgramFolder()).string();
  }

  Ending ending;
  QAction* giveUp = nullptr;
};

}  // namespace

std::filesystem::path DataFile(const std::filesystem::path& folder) {
  return folder / "run.qbx";
}

Ending Download(const std::filesystem::path& folder) {
  AnsweredMachine machine(folder);
  platform::Machine::Install(machine);
  shell::MDIForm1 outer;
  if (!outer.Load()) return {};
  shell::Shared.CurrentCommPort = 1;
  auto* screen = new download::DownloadErase([] {});
  outer.ShowChild(screen);
  outer.show();
  for (auto* entry : screen->Menus().first()->actions()) {
    if (entry->objectName() == "mnuDownload") machine.giveUp = entry;
  }
  QTimer::singleShot(0, machine.giveUp, &QAction::trigger);
  QTimer::singleShot(LimitMs, qApp, &QApplication::quit);
  QApplication::exec();
  return machine.ending;
}

}  // namespace bexlow::campaign
