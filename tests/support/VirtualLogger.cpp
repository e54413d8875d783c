#include "support/VirtualLogger.h"

#include <gtest/gtest.h>

namespace bexlow::test {

namespace {

std::uint8_t High(int word) {
  return static_cast<std::uint8_t>(word >> 8);
}
std::uint8_t Low(int word) {
  return static_cast<std::uint8_t>(word & 255);
}

}  // namespace

Bytes RampPage(int start) {
  Bytes page(264);
  for (std::size_t n = 0; n < page.size(); ++n)
    page[n] = static_cast<std::uint8_t>(start + static_cast<int>(n));
  return page;
}

Spoil Instead(const Bytes& bytes, microseconds late) {
  return [=](Bytes& reply, microseconds& delay) { std::tie(reply, delay) = std::tie(bytes, late); };
}

VirtualLogger::VirtualLogger() {
  const std::map<int, int> words{{2, 323},     {4, 408},     {6, 322},   {8, 323},     {10, 324},
                                 {12, 322},    {14, 0xF1C7}, {16, 0},    {18, 0x8001}, {20, 0x7FFF},
                                 {22, 0x8001}, {24, 0x7FFF}, {62, 512},  {64, 513},    {66, 514},
                                 {68, 515},    {100, 417},   {104, 2004}};
  for (const auto& [address, word] : words) {
    eeprom[static_cast<std::size_t>(address)] = High(word);
    eeprom[static_cast<std::size_t>(address) + 1] = Low(word);
  }
  const std::map<int, int> cells{{30, 3},   {31, 1},  {32, 1},   {33, 1},  {34, 1},  {42, 1}, {43, 3},
                                 {102, 15}, {103, 9}, {106, 14}, {107, 5}, {108, 7}, {109, 3}};
  for (const auto& [address, value] : cells) eeprom[static_cast<std::size_t>(address)] = Low(value);
}

std::size_t VirtualLogger::Operands() const {
  switch (request_.front()) {
    case 'r':
      return 1;
    case 'p':
    case 'd':
      return 2;
    default:
      return 0;
  }
}

void VirtualLogger::Receive(std::uint8_t byte) {
  request_.push_back(byte);
  if (request_.size() > Operands()) {
    Answer();
    request_.clear();
  }
  if (--bytesLeft_ == 0) machine->Unplug(comm);
}

void VirtualLogger::PlugFor(VirtualMachine& on, int port, int bytes) {
  bytesLeft_ = bytes;
  on.Plug(*this, port);
  if (bytes == 0) on.Unplug(port);
}

void VirtualLogger::Answer() {
  switch (request_.front()) {
    case 'f':
      return Reply({'f'});
    case 'r':
      return Reply({eeprom[request_[1]]});
    case 'p':
      eeprom[request_[1]] = request_[2];
      return;
    case 'a':
      return Reply(accelerometers);
    case 'A':
      return Reply(angles);
    case 'l':
      return Reply({High(firmware), Low(firmware)});
    case 'm':
      return Reply({High(frequency), Low(frequency)});
    case 'e':
      return Erase();
    case 'X':
      ++launches;
      return;
    case 'd': {
      const auto page = pages.find(request_[1] * 256 + request_[2]);
      return Reply(page == pages.end() ? Bytes(264, 0xFF) : page->second);
    }
    default:
      ADD_FAILURE() << "no such command: " << static_cast<int>(request_.front());
  }
}

void VirtualLogger::Reply(Bytes reply) {
  ++replies;
  microseconds delay{0};
  if (spoil) spoil(reply, delay);
  if (!silent) Send(reply, delay);
}

void VirtualLogger::SpoilOne(int number, const Spoil& how) {
  spoil = [this, how, struck = replies + number](Bytes& reply, microseconds& delay) {
    if (replies == struck) how(reply, delay);
  };
}

void VirtualLogger::Erase() {
  ++erases;
  if (silent) return;
  for (int i = 0; i < eraseBytes; ++i)
    machine->At(machine->Time() + eraseStep * (i + 1), [this] { machine->Deliver(comm, {'.'}); });
  pages.clear();
}

}  // namespace bexlow::test
