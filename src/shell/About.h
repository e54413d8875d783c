// Who made the program and which version this is.
#pragma once

#include "platform/controls/Form.h"

namespace bexlow::shell {

class About : public platform::Form {
  Q_OBJECT

 public:
  About();

 private:
  void cmdOK_Click();
};

}  // namespace bexlow::shell
