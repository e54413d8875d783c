// A logger on a virtual line, written from the wire format alone; a test can spoil each of its replies.
#pragma once

#include "support/VirtualMachine.h"

namespace bexlow::test {

using Spoil = std::function<void(Bytes& reply, microseconds& delay)>;

/// Other bytes, or none, in place of the right ones.
inline Spoil Instead(const Bytes& bytes, microseconds late = 0us) {
  return [=](Bytes& reply, microseconds& delay) { std::tie(reply, delay) = std::tie(bytes, late); };
}

inline Bytes BytesOf(int word) {
  return {static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word & 255)};
}

class VirtualLogger : public Peer {
 public:
  VirtualLogger() {
    const std::map<std::ptrdiff_t, std::vector<int>> words{
        {2, {323, 408, 322, 323, 324, 322, 0xF1C7, 0, 0x8001, 0x7FFF, 0x8001, 0x7FFF}},
        {30, {0x0301, 0x0101, 0x0100}},
        {42, {0x0103}},
        {62, {512, 513, 514, 515}},
        {100, {417, 0x0F09, 2004, 0x0E05, 0x0703}}};
    for (const auto& [first, row] : words) {
      auto cell = eeprom.begin() + first;
      for (const int word : row) cell = std::ranges::copy(BytesOf(word), cell).out;
    }
  }

  std::array<std::uint8_t, 256> eeprom{};
  std::map<int, Bytes> pages;  ///< a page that is not in it is blank
  Bytes angles{0x0B, 0xB8, 0x03, 0xE8};
  Bytes accelerometers{0x01, 0x4A, 0x01, 0x98, 0x01, 0x42};
  bool silent = false;
  std::optional<microseconds> acknowledges;  ///< so long after each write it answers with a byte

  /// Sees each reply before it leaves: may change it, empty it, or delay it.
  Spoil spoil;
  /// Spoils one reply alone: 1 is the next.
  void SpoilOne(int number, const Spoil& how) {
    struck_ = replies + number;
    spoilOne_ = how;
  }
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
  void PlugFor(VirtualMachine& on, int port, int bytes) {
    bytesLeft_ = bytes;
    request_.clear();
    on.Plug(*this, port);
    if (bytes == 0) on.Unplug(port);
  }
  void Receive(std::uint8_t byte) override {
    request_.push_back(byte);
    const char letter = static_cast<char>(request_.front());
    const std::size_t operands = letter == 'r' ? 1 : letter == 'p' || letter == 'd' ? 2 : 0;
    if (request_.size() > operands) Answer(std::exchange(request_, {}));
    if (--bytesLeft_ == 0) machine->Unplug(comm);
  }
  /// Sends bytes behind all that is on its way, after a delay and the first byte's own time on the line.
  void Send(const Bytes& bytes, microseconds delay = 0us) {
    const auto& [chunk, timeOut, everyTick] = delivery;
    auto due = std::max(machine->Time() + delay + ByteTime, free_);
    free_ = due + ByteTime * static_cast<int>(bytes.size());
    for (std::size_t begin = 0; begin < bytes.size(); begin += chunk) {
      const Bytes part(bytes.data() + begin, bytes.data() + std::min(begin + chunk, bytes.size()));
      due += ByteTime * static_cast<int>(part.size());
      const auto handedOver = due + (part.size() < chunk ? timeOut : 0us) + everyTick - 1us;
      machine->At(handedOver / everyTick * everyTick, [this, part] { machine->Deliver(comm, part); });
    }
  }

 private:
  void Answer(const Bytes& request) {
    const auto letter = request.front();
    if (letter == 'f') return Reply({'f'});
    if (letter == 'r') return Reply({eeprom[request[1]]});
    if (letter == 'p') eeprom[request[1]] = request[2];
    if (letter == 'p' && acknowledges) return Send({'p'}, *acknowledges);
    if (letter == 'a') return Reply(accelerometers);
    if (letter == 'A') return Reply(angles);
    if (letter == 'l') return Reply(BytesOf(3300));  // thousandths
    if (letter == 'm') return Reply(BytesOf(75));    // tenths of a hertz
    if (letter == 'e') return Erase();
    EXPECT_TRUE(letter == 'p' || letter == 'X' || letter == 'd') << "no such command: " << int{letter};
    if (letter != 'd') return;
    const auto page = pages.find(request[1] * 256 + request[2]);
    Reply(page == pages.end() ? Bytes(264, 0xFF) : page->second);
  }
  void Reply(Bytes reply) {
    microseconds delay{0};
    if (spoil) spoil(reply, delay);
    if (++replies == struck_) std::exchange(spoilOne_, {})(reply, delay);
    if (!silent) Send(reply, delay);
  }
  void Erase() {
    if (silent) return;
    for (int i = 0; i < eraseBytes; ++i)
      machine->At(machine->Time() + eraseStep * (i + 1), [this] { machine->Deliver(comm, {'.'}); });
  }

  Bytes request_;
  int bytesLeft_ = -1;
  int struck_ = 0;
  Spoil spoilOne_;
  microseconds free_{0};  ///< when the line has carried all that was sent
};

}  // namespace bexlow::test
