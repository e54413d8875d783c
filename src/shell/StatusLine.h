// The line at the foot of the window: the logger, what a screen is doing with it, and the last failure.
#pragma once

#include "platform/machine/Machine.h"

class QLabel;
class QStatusBar;

namespace bexlow::shell {

class StatusLine {
 public:
  explicit StatusLine(QStatusBar& bar);
  ~StatusLine();
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;

  /// What is known of the logger, such as "Connected on Comm 5".
  void Connection(const std::string& text);
  /// Asks the engaged screen what it is doing. Happens of itself four times a second.
  void Refresh();

 private:
  void TellConnection();

  QStatusBar& bar_;
  QLabel* lblConnection;
  QLabel* lblActivity;
  QLabel* lblFailure;
  std::string phase_, connection_, failure_;
  std::unique_ptr<platform::Alarm> alarm_;
};

}  // namespace bexlow::shell
