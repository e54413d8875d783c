// A logger whose cable is pulled behind a given byte of what it hears.
#pragma once

#include "support/VirtualLogger.h"

namespace bexlow::test {

class CutLogger : public VirtualLogger {
 public:
  /// Plugs in; behind so many more bytes the device vanishes, at once for 0.
  void PlugFor(VirtualMachine& on, int port, int bytes) {
    left_ = bytes;
    on.Plug(*this, port);
    if (bytes == 0) on.Unplug(port);
  }

  void Receive(std::uint8_t byte) override {
    VirtualLogger::Receive(byte);
    if (--left_ == 0) machine->Unplug(comm);
  }

 private:
  int left_ = 0;
};

}  // namespace bexlow::test
