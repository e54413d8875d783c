// The launch of a logging run, on Main: stamps the time, erases, tells the logger to log, follows the erase.
#pragma once

#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

namespace bexlow::link {

class Launch {
 public:
  /// @param main      the screen that holds the controls of the launch
  /// @param launched  called when the logger logs by itself and counts as disconnected; told the page at
  /// which
  ///                  it was heard last during the erase, nothing if it was not heard
  Launch(platform::Form& main, std::function<void(std::optional<int> page)> launched);

  QGroupBox* Frame() const { return progress_.frame; }

  void mnuLaunch_Click();

 private:
  bool WriteLaunchTime();
  void EraseAndLaunch();
  void Timer1_Timer();
  void HideProgress();
  void Finish();

  platform::Form& main_;
  std::function<void(std::optional<int> page)> launched_;
  platform::MSComm MSComm1;
  platform::Timer Timer1;
  platform::Progress progress_;
  double ErasedByteCount = 0;
  double ErasedPageCount = 0;  ///< 0 to 2047
  bool heard_ = false;
};

}  // namespace bexlow::link
