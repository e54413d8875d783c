// A logger on a virtual line, written from the wire format alone; a test can spoil each of its replies.
#pragma once

#include "support/VirtualMachine.h"

namespace bexlow::test {

using Spoil = std::function<void(Bytes& reply, microseconds& delay)>;

/// Other bytes, or none, in place of the right ones.
Spoil Instead(const Bytes& bytes, microseconds late = microseconds{0});

class VirtualLogger {
 public:
  VirtualLogger();

  VirtualMachine* machine = nullptr;  ///< and the port: those it is plugged into
  int comm = 0;
  std::array<std::uint8_t, 256> eeprom{};
  std::map<int, Bytes> pages;  ///< a page that is not in it is blank
  Bytes angles{0x0B, 0xB8, 0x03, 0xE8};
  Bytes accelerometers{0x01, 0x4A, 0x01, 0x98, 0x01, 0x42};
  bool silent = false;

  /// Sees each reply before it leaves: may change it, empty it, or delay it.
  Spoil spoil;
  /// Spoils one reply alone: 1 is the next.
  void SpoilOne(int number, const Spoil& how);
  /// How many progress bytes an erase sends, and the time between two.
  int eraseBytes = 0;
  microseconds eraseStep{1000};

  struct Delivery {
    std::size_t chunk = 8;      ///< bytes that the driver hands over at a time
    microseconds timeOut{0};    ///< after which it hands over fewer
    microseconds everyTick{1};  ///< it hands over at multiples of this time
  };
  Delivery delivery;

  int replies = 0;  ///< replies so far, silent ones counted

  /// Plugs in; after the logger has received `bytes` bytes the device vanishes, at once for 0.
  void PlugFor(VirtualMachine& on, int port, int bytes);
  /// Bytes reach the logger as they are written.
  void Receive(std::uint8_t byte);
  /// Sends bytes behind all that is on its way, after a delay and the first byte's own time on the line.
  void Send(const Bytes& bytes, microseconds delay = microseconds{0});

 private:
  void Answer(const Bytes& request);
  void Reply(Bytes reply);
  void Erase();

  Bytes request_;
  int bytesLeft_ = -1;
  int struck_ = 0;
  Spoil spoilOne_;
  microseconds free_{0};  ///< when the line has carried all that was sent
};

}  // namespace bexlow::test
