// The erase of the Download screen: one command; the number of bytes that come back tells the progress.
#pragma once

#include "link/SamplingScreen.h"

namespace bexlow::download {

class Erase {
 public:
  explicit Erase(platform::Form& screen);

  /// The entry that starts and halts the erase; the entry that is disabled and the frame that is hidden
  /// meanwhile.
  void Attach(QAction* mnuErase, QAction* mnuDownload, QGroupBox* idleFrame);
  QGroupBox* Frame() const { return progress_.frame; }

  void mnuErase_Click();
  platform::Activity Activity() const;
  /// Stops watching without a message, when the screen is left.
  void End();

 private:
  void Start();
  void TimerErase_Timer();
  void Halt();
  void StopWatching();
  void BackToIdle();

  platform::Form& screen_;
  platform::MSComm MSComm2;
  platform::Timer TimerErase;
  link::Pace pace_;  ///< of the bytes
  QAction* mnuErase_ = nullptr;
  QAction* mnuDownload_ = nullptr;
  QGroupBox* idleFrame_ = nullptr;
  platform::Progress progress_;
  QLineEdit* txtInBufferSize;
};

}  // namespace bexlow::download
