// Reads or writes any one cell of the logger's EEPROM, without a warning.
#pragma once

#include <functional>

#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

class QPushButton;

namespace bexlow::platform {
class CWNumEdit;
}

namespace bexlow::config {

class ValueBox;

class EEPROM : public platform::Form {
  Q_OBJECT

 public:
  EEPROM();

 private:
  void Build();
  void cmdRead_Click();
  void cmdWrite_Click();
  void cmdOK_Click();
  void TimerEEPROM_Timer();

  /// Runs a procedure of the screen; after a reported failure the screen is usable again.
  void Operate(const char* procedure, const std::function<void()>& body);
  void EndOperation();
  void EnableControls(bool enabled);
  int Address() const;

  platform::MSComm MSComm1;
  platform::Timer TimerEEPROM;
  platform::CWNumEdit* NumEditAddress;
  ValueBox* txtValue;
  QPushButton* cmdRead;
  QPushButton* cmdWrite;
  QPushButton* cmdOK;
};

}  // namespace bexlow::config
