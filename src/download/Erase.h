// The erase of the Download screen: one command; the number of bytes that come back tells the progress.
#pragma once

#include "link/Communications.h"
#include "link/SamplingScreen.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"

namespace bexlow::download {

class Erase {
 public:
  /// @param mnuErase     starts and halts the erase
  /// @param mnuDownload  is disabled meanwhile
  /// @param idleFrame    is hidden meanwhile
  Erase(platform::Form& screen, QAction* mnuErase, QAction* mnuDownload, QGroupBox* idleFrame)
      : screen_(screen), mnuErase_(mnuErase), mnuDownload_(mnuDownload), idleFrame_(idleFrame) {
    progress_.line->addWidget(
        platform::MakeLabel("Label2", "InBufferCount", progress_.frame, txtInBufferSize));
    progress_.line->addWidget(txtInBufferSize);
    progress_.frame->hide();
    TimerErase.OnTimer = [this] { TimerErase_Timer(); };
  }

  QGroupBox* Frame() const { return progress_.frame; }

  void mnuErase_Click() {
    shared::Guarded(
        screen_, "mnuErase_Click",
        [this] {
          if (!mnuErase_->isChecked()) return Start();
          Halt();
          platform::MsgBox("Erase halted by user! Erase may not be complete.");
          BackToIdle();
        },
        [this] { screen_.MousePointer(platform::Pointer::Normal); });
  }

  /// The number in the box; until one is there, none is known.
  platform::Activity Activity() const {
    if (!TimerErase.Enabled()) return {"The erase has stopped", "", "", true};
    const auto count = txtInBufferSize->text().toStdString();
    const auto bytes = count.empty() ? "" : count + " of " + std::to_string(CompleteAtBytes) + " bytes";
    const auto silent = pace_.SilentSeconds();
    if (silent < link::SilentAfterSeconds) return {"Erasing", bytes};
    return {"Nothing heard of the erase", "for " + std::to_string(silent) + " s; " + bytes, " ", true};
  }

  /// Stops watching without a message, when the screen is left.
  void End() {
    if (!mnuErase_->isChecked()) return;
    Halt();
    BackToIdle();
  }

 private:
  static constexpr int CompleteAtBytes = 2050;
  // More than CompleteAtBytes: no byte is taken out during an erase.
  static constexpr int EraseBufferSize = 2100;

  void Start() {
    if (!link::LoggerIsFree(screen_)) return;
    if (!platform::AskToConfirm("All on-board data will be erased!\r\n"
                                "Click YES to proceed.\r\n"
                                "Click NO to cancel this operation."))
      return;
    screen_.MousePointer(platform::Pointer::Busy);
    mnuErase_->setChecked(true);
    mnuDownload_->setEnabled(false);
    progress_.Show("Erasing", 0);
    idleFrame_->hide();
    progress_.frame->show();
    MSComm2.InBufferSize = EraseBufferSize;
    link::OpenCommPort(MSComm2, screen_);
    link::Send(MSComm2, link::EraseData());
    TimerErase.Enabled(true);
    pace_.Begin();
  }

  void TimerErase_Timer() {
    shared::Guarded(
        screen_, "TimerErase_Timer",
        [this] {
          const int count = MSComm2.InBufferCount();
          if (const auto text = QString::number(count); txtInBufferSize->text() != text) {
            txtInBufferSize->setText(text);
            pace_.Count();
          }
          progress_.Show("Erasing", count);
          emit screen_.ActivityChanged();
          if (count < CompleteAtBytes) return;
          StopWatching();
          screen_.MousePointer(platform::Pointer::Normal);
          platform::MsgBox("Erase completed!");
          BackToIdle();
        },
        [this] { screen_.MousePointer(platform::Pointer::Normal); });
  }

  // The logger goes on erasing by itself, and reports it.
  void Halt() {
    StopWatching();
    shared::Shared.HaltedEraseCommPort = shared::Shared.CurrentCommPort;
  }

  void StopWatching() {
    TimerErase.Enabled(false);
    link::CloseCommPort(MSComm2, screen_);
  }

  void BackToIdle() {
    progress_.Show("Erase Progress", 0);
    progress_.frame->hide();
    idleFrame_->show();
    mnuErase_->setChecked(false);
    txtInBufferSize->clear();
    mnuDownload_->setEnabled(true);
    screen_.MousePointer(platform::Pointer::Normal);
    emit screen_.ActivityChanged();
  }

  platform::Form& screen_;
  QAction* mnuErase_;
  QAction* mnuDownload_;
  QGroupBox* idleFrame_;
  platform::MSComm MSComm2{screen_, "MSComm2"};
  platform::Timer TimerErase{screen_, "TimerErase", 500};
  link::Pace pace_;  ///< of the bytes
  platform::Progress progress_ =
      platform::MakeProgress("fraErase", "PBarErase", "Erase Progress", CompleteAtBytes, &screen_);
  QLineEdit* txtInBufferSize = platform::MakeReadOnlyBox("txtInBufferSize", "InBufferCount", progress_.frame);
};

}  // namespace bexlow::download
