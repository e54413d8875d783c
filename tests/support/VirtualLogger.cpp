#include "support/VirtualLogger.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace bexlow::test {

using namespace std::chrono_literals;

Bytes BytesOf(int word) {
  return {static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word & 255)};
}

Spoil Instead(const Bytes& bytes, microseconds late) {
  return [=](Bytes& reply, microseconds& delay) { std::tie(reply, delay) = std::tie(bytes, late); };
}

VirtualLogger::VirtualLogger() {
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

void VirtualLogger::Receive(std::uint8_t byte) {
  request_.push_back(byte);
  const char letter = static_cast<char>(request_.front());
  const std::size_t operands = letter == 'r' ? 1 : letter == 'p' || letter == 'd' ? 2 : 0;
  if (request_.size() > operands) Answer(std::exchange(request_, {}));
  if (--bytesLeft_ == 0) machine->Unplug(comm);
}

void VirtualLogger::PlugFor(VirtualMachine& on, int port, int bytes) {
  bytesLeft_ = bytes;
  request_.clear();
  on.Plug(*this, port);
  if (bytes == 0) on.Unplug(port);
}

void VirtualLogger::Answer(const Bytes& request) {
  switch (request.front()) {
    case 'f':
      return Reply({'f'});
    case 'r':
      return Reply({eeprom[request[1]]});
    case 'p':
      eeprom[request[1]] = request[2];
      return;
    case 'a':
      return Reply(accelerometers);
    case 'A':
      return Reply(angles);
    case 'l':
      return Reply(BytesOf(3300));  // thousandths
    case 'm':
      return Reply(BytesOf(75));  // tenths of a hertz
    case 'e':
      return Erase();
    case 'X':
      return;
    case 'd': {
      const auto page = pages.find(request[1] * 256 + request[2]);
      return Reply(page == pages.end() ? Bytes(264, 0xFF) : page->second);
    }
    default:
      ADD_FAILURE() << "no such command: " << static_cast<int>(request.front());
  }
}

void VirtualLogger::Reply(Bytes reply) {
  ++replies;
  microseconds delay{0};
  if (spoil) spoil(reply, delay);
  if (replies == struck_) std::exchange(spoilOne_, {})(reply, delay);
  if (!silent) Send(reply, delay);
}

void VirtualLogger::Send(const Bytes& bytes, microseconds delay) {
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

void VirtualLogger::SpoilOne(int number, const Spoil& how) {
  struck_ = replies + number;
  spoilOne_ = how;
}

void VirtualLogger::Erase() {
  if (silent) return;
  for (int i = 0; i < eraseBytes; ++i)
    machine->At(machine->Time() + eraseStep * (i + 1), [this] { machine->Deliver(comm, {'.'}); });
}

}  // namespace bexlow::test
