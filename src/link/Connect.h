// The modal screen that picks the serial port, finds the logger, and reads what the program needs at first.
#pragma once

#include <functional>
#include <string>

#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"

class QLabel;

namespace bexlow::platform {
class CWNumEdit;
}

namespace bexlow::link {

class Connect : public platform::Form {
  Q_OBJECT

 public:
  /// @param reached  told whether the on-board parameters were retrieved; not called for port 0
  explicit Connect(std::function<void(bool)> reached);

 private:
  void Build();
  void ShowDevice();

  void cmdOK_Click();
  void cmdAutoDetect_Click();
  void EnableButtons(bool enabled);

  bool CommPortExists(std::int16_t port);
  bool LoggerAnswers(std::int16_t port, const std::string& baud);
  bool RetrieveOnBoardParameters();

  std::function<void(bool)> reached_;
  std::int16_t DetectedCommPort = 0;
  platform::MSComm MSComm1;
  platform::MSComm MSCommTare;
  platform::CWNumEdit* NumEditCommPort;
  QLabel* lblDevice;
  QPushButton* cmdOK;
  QPushButton* cmdAutoDetect;
};

}  // namespace bexlow::link
