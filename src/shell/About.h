// Who made the program and which version this is.
#pragma once

#include "platform/controls/Form.h"

namespace bexlow::shell {

class About : public platform::Form {
  Q_OBJECT

 public:
  About();
};

}  // namespace bexlow::shell
