#include "link/Launch.h"

#include <QGroupBox>
#include <QProgressBar>
#include <QVBoxLayout>

#include <exception>
#include <utility>

#include "link/Communications.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Machine.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/NumberText.h"

namespace bexlow::link {

using platform::MsgBox;

namespace {

constexpr auto IdleCaption = "Erase";
constexpr int PauseBehindCellMs = 12;
constexpr int EraseLeadMs = 1000;  // the logger accepts LaunchLogging only during an erase

}  // namespace

Launch::Launch(platform::Form& main, std::function<void(bool heard)> launched)
    : main_(main),
      launched_(std::move(launched)),
      MSComm1(main, "MSComm1"),
      Timer1(main, "Timer1", 250),
      fraErase(platform::MakeFrame("fraErase", IdleCaption, &main)),
      PBar(platform::MakeProgressBar("PBar", IdleCaption, fraErase)) {
  PBar->setMaximum(LastPage);
  auto* layout = new QVBoxLayout(fraErase);
  layout->addWidget(PBar);
  fraErase->hide();
  main.OnActivity = [this] {
    return platform::Activity{"Erasing", "page " + values::NumberText(progress_.ErasedPageCount) + " of " +
                                             values::NumberText(LastPage) + " before the launch"};
  };
  Timer1.OnTimer = [this] { Timer1_Timer(); };
}

void Launch::mnuLaunch_Click() {
  if (shared::Shared.CurrentCommPort == 0) return MsgBox("No comm port has been selected!");
  if (!LoggerIsFree(main_)) return;
  if (!platform::AskToConfirm("Bexlow will erase all on-board data before launch!\r\n"
                              "Click YES to proceed.\r\n"
                              "Click NO to cancel this operation."))
    return;
  if (!WriteLaunchTime())
    return shared::TellFailure("Launch Time write to EEPROM failed! Launch did not occur.");
  EraseAndLaunch();
}

bool Launch::WriteLaunchTime() {
  try {
    const auto now = platform::Machine::Get().Now();
    OpenCommPort(MSComm1, main_);
    for (const auto& [address, value] :
         LaunchCells(now.day, now.month, now.year, now.hour, now.minute, now.second)) {
      Send(MSComm1, WriteEeprom(address, value));
      shared::WaitMilliseconds(PauseBehindCellMs);
    }
    CloseCommPort(MSComm1, main_);
    return true;
  } catch (const std::exception&) {
    if (!Timer1.Enabled())
      MSComm1.PortOpen(false);  // else an erase is being watched; its end closes the port
    return false;
  }
}

void Launch::EraseAndLaunch() {
  try {
    fraErase->show();
    platform::Machine::Get().Repaint();
    progress_ = {};
    heard_ = false;
    OpenCommPort(MSComm1, main_);
    Send(MSComm1, EraseData());
    shared::WaitMilliseconds(EraseLeadMs);
    Send(MSComm1, MakeRequest(CommandName::LaunchLogging));
    Timer1.Enabled(true);
  } catch (const std::exception&) {
    Timer1.Enabled(false);
    MSComm1.PortOpen(false);
    HideProgress();
    shared::TellFailure("Bexlow failed to launch!");
  }
}

void Launch::Timer1_Timer() {
  shared::Guarded(main_, "Timer1_Timer", [this] {
    const auto count = MSComm1.Input().size();
    heard_ = heard_ || count > 0;
    if (!progress_.Count(count)) return Finish();
    const double page = progress_.ErasedPageCount;
    platform::SetProgress(PBar, page);
    fraErase->setTitle("Erasing page " + QString::fromStdString(values::NumberText(page)));
  });
}

void Launch::HideProgress() {
  fraErase->setTitle(IdleCaption);
  fraErase->hide();
}

void Launch::Finish() {
  Timer1.Enabled(false);
  CloseCommPort(MSComm1, main_);
  HideProgress();
  MsgBox(
      "Disconnect the serial cable from the Bexlow! The shaker will shake momentarily indicating that "
      "datalogging has begun.");
  launched_(heard_);
}

}  // namespace bexlow::link
