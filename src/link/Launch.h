// The launch of a logging run, on Main: stamps the time, erases, tells the logger to log, follows the erase.
#pragma once

#include <exception>

#include "link/Communications.h"
#include "platform/controls/Timer.h"
#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

class Launch {
 public:
  /// What the number of the page is reckoned from: bytes that a logger sends for each page it erases.
  static constexpr std::size_t BytesInPage = 3;

  /// @param main      the screen that holds the controls of the launch
  /// @param launched  called when the logger logs by itself and counts as disconnected; told how many bytes
  ///                  were heard during the erase
  Launch(platform::Form& main, std::function<void(std::size_t heard)> launched)
      : main_(main), launched_(std::move(launched)) {
    progress_.frame->hide();
    main.OnActivity = [this] {
      return platform::Activity{"Erasing", "page " + values::NumberText(ErasedPageCount) + " of " +
                                               values::NumberText(files::LastPage) + " before the launch"};
    };
    Timer1.OnTimer = [this] { Timer1_Timer(); };
  }

  QGroupBox* Frame() const { return progress_.frame; }

  void mnuLaunch_Click() {
    if (shared::Shared.CurrentCommPort == 0) return platform::MsgBox("No comm port has been selected!");
    if (!LoggerIsFree(main_)) return;
    if (!platform::AskToConfirm("Bexlow will erase all on-board data before launch!\r\n"
                                "Click YES to proceed.\r\n"
                                "Click NO to cancel this operation."))
      return;
    if (!WriteLaunchTime())
      return shared::TellFailure("Launch Time write to EEPROM failed! Launch did not occur.");
    EraseAndLaunch();
  }

 private:
  static constexpr auto IdleCaption = "Erase";
  static constexpr int PauseAfterCellMs = 12;
  static constexpr int EraseLeadMs = 1000;  // the logger accepts LaunchLogging only during an erase
  static constexpr std::size_t LeastBytesOfErase = 4;  // in one tick
  static constexpr double BytesLostInTick = 2;

  bool WriteLaunchTime() {
    try {
      const auto now = platform::Machine::Get().Now();
      OpenCommPort(MSComm1, main_);
      const std::pair<int, int> cells[] = {
          {103, now.day},    {104, HighByte(now.year)}, {105, LowByte(now.year)}, {106, now.hour},
          {107, now.minute}, {108, now.second},         {109, now.month}};
      for (const auto& [address, value] : cells) {
        Send(MSComm1, WriteEeprom(address, value));
        shared::WaitMilliseconds(PauseAfterCellMs);
      }
      CloseCommPort(MSComm1, main_);
      return true;
    } catch (const std::exception&) {
      if (!Timer1.Enabled())
        MSComm1.PortOpen(false);  // else an erase is being watched; its end closes the port
      return false;
    }
  }

  void EraseAndLaunch() {
    try {
      progress_.frame->show();
      platform::Machine::Get().Repaint();
      ErasedByteCount = ErasedPageCount = 0;
      heard_ = 0;
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

  void Timer1_Timer() {
    const auto count = MSComm1.Input().size();
    heard_ += count;
    if (count < LeastBytesOfErase) return Finish();
    ErasedByteCount += static_cast<double>(count) - BytesLostInTick;
    ErasedPageCount =
        std::min(values::RoundHalfEven(ErasedByteCount / double{BytesInPage}), double{files::LastPage});
    progress_.Show("Erasing page " + QString::fromStdString(values::NumberText(ErasedPageCount)),
                   ErasedPageCount);
    emit main_.ActivityChanged();
  }

  void HideProgress() {
    progress_.frame->setTitle(IdleCaption);
    progress_.frame->hide();
  }

  void Finish() {
    Timer1.Enabled(false);
    CloseCommPort(MSComm1, main_);
    HideProgress();
    platform::MsgBox(
        "Disconnect the serial cable from the Bexlow! The shaker will shake momentarily indicating that "
        "datalogging has begun.");
    launched_(heard_);
  }

  platform::Form& main_;
  std::function<void(std::size_t heard)> launched_;
  platform::MSComm MSComm1{main_, "MSComm1"};
  platform::Timer Timer1{main_, "Timer1", 250};
  platform::Progress progress_ =
      platform::MakeProgress("fraErase", "PBar", IdleCaption, files::LastPage, &main_);
  double ErasedByteCount = 0;
  double ErasedPageCount = 0;  ///< 0 to 2047
  std::size_t heard_ = 0;      ///< bytes; the count of the pages leaves some of them out
};

}  // namespace bexlow::link
