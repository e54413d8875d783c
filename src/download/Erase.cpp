#include "download/Erase.h"

#include "link/Communications.h"
#include "shared/ErrorHandler.h"
#include "shared/Records.h"

namespace bexlow::download {

using namespace platform;
using shared::Guarded;

namespace {

constexpr int CompleteAtBytes = 2050;
constexpr int EraseBufferSize = 2100;  // more than CompleteAtBytes: no byte is taken out during an erase

}  // namespace

Erase::Erase(platform::Form& screen)
    : screen_(screen),
      MSComm2(screen, "MSComm2"),
      TimerErase(screen, "TimerErase", 500),
      progress_(platform::MakeProgress("fraErase", "PBarErase", "Erase Progress", CompleteAtBytes, &screen)),
      txtInBufferSize(platform::MakeReadOnlyBox("txtInBufferSize", "InBufferCount", progress_.frame)) {
  progress_.line->addWidget(platform::MakeLabel("Label2", "InBufferCount", progress_.frame, txtInBufferSize));
  progress_.line->addWidget(txtInBufferSize);
  progress_.frame->hide();
  TimerErase.OnTimer = [this] { TimerErase_Timer(); };
}

void Erase::Attach(QAction* mnuErase, QAction* mnuDownload, QGroupBox* idleFrame) {
  mnuErase_ = mnuErase;
  mnuDownload_ = mnuDownload;
  idleFrame_ = idleFrame;
}

void Erase::mnuErase_Click() {
  Guarded(
      screen_, "mnuErase_Click",
      [this] {
        if (!mnuErase_->isChecked()) return Start();
        Halt();
        MsgBox("Erase halted by user! Erase may not be complete.");
        BackToIdle();
      },
      [this] { screen_.MousePointer(Pointer::Normal); });
}

void Erase::Start() {
  if (!link::LoggerIsFree(screen_)) return;
  if (!platform::AskToConfirm("All on-board data will be erased!\r\n"
                              "Click YES to proceed.\r\n"
                              "Click NO to cancel this operation."))
    return;
  screen_.MousePointer(Pointer::Busy);
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

void Erase::TimerErase_Timer() {
  Guarded(
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
        screen_.MousePointer(Pointer::Normal);
        MsgBox("Erase completed!");
        BackToIdle();
      },
      [this] { screen_.MousePointer(Pointer::Normal); });
}

// The number in the box, until which none is known.
platform::Activity Erase::Activity() const {
  if (!TimerErase.Enabled()) return {"The erase has stopped", ""};
  const auto count = txtInBufferSize->text().toStdString();
  const auto bytes = count.empty() ? "" : count + " of " + std::to_string(CompleteAtBytes) + " bytes";
  const auto silent = pace_.SilentSeconds();
  if (silent < link::SilentAfterSeconds) return {"Erasing", bytes};
  return {"Nothing heard of the erase", "for " + std::to_string(silent) + " s; " + bytes, " "};
}

// The logger goes on erasing by itself, and reports it.
void Erase::Halt() {
  StopWatching();
  shared::Shared.HaltedEraseCommPort = shared::Shared.CurrentCommPort;
}

void Erase::StopWatching() {
  TimerErase.Enabled(false);
  link::CloseCommPort(MSComm2, screen_);
}

void Erase::BackToIdle() {
  progress_.Show("Erase Progress", 0);
  progress_.frame->hide();
  idleFrame_->show();
  mnuErase_->setChecked(false);
  txtInBufferSize->clear();
  mnuDownload_->setEnabled(true);
  screen_.MousePointer(Pointer::Normal);
  emit screen_.ActivityChanged();
}

void Erase::End() {
  if (!mnuErase_->isChecked()) return;
  Halt();
  BackToIdle();
}

}  // namespace bexlow::download
