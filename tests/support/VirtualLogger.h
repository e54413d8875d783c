// A logger on a virtual line, written from the wire format alone; a test can spoil each of its replies.
#pragma once

#include <array>
#include <map>

#include "support/VirtualMachine.h"

namespace bexlow::test {

using Spoil = std::function<void(Bytes& reply, microseconds& delay)>;

/// Other bytes, or none, in place of the right ones.
Spoil Instead(const Bytes& bytes, microseconds late = microseconds{0});

class VirtualLogger : public Peer {
 public:
  VirtualLogger();

  std::array<std::uint8_t, 256> eeprom{};
  std::map<int, Bytes> pages;  ///< a page that is not in it is blank
  int firmware = 3300;         ///< thousandths
  int frequency = 75;          ///< tenths of a hertz
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

  int replies = 0;  ///< replies so far, silent ones counted
  int launches = 0;
  int erases = 0;

  /// Plugs in; after the logger has received `bytes` bytes the device vanishes, at once for 0.
  void PlugFor(VirtualMachine& on, int port, int bytes);
  void Receive(std::uint8_t byte) override;

 private:
  std::size_t Operands() const;
  void Answer();
  void Reply(Bytes reply);
  void Erase();

  Bytes request_;
  int bytesLeft_ = -1;
};

/// A page of 264 bytes whose byte n is start + n.
Bytes RampPage(int start);

}  // namespace bexlow::test
