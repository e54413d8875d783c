#include "link/Protocol.h"

#include <initializer_list>
#include <iterator>

#include "values/Conversions.h"

namespace bexlow::link {

namespace {

consteval bool CommandsAreDistinct() {
  for (std::size_t i = 0; i < std::size(Commands); ++i) {
    if (static_cast<std::size_t>(Commands[i].name) != i) return false;
    for (std::size_t k = 0; k < i; ++k) {
      if (Commands[k].letter == Commands[i].letter) return false;
    }
  }
  return true;
}
static_assert(std::size(Commands) == 10 && CommandsAreDistinct());

using values::Throw;

struct EepromRange {
  int first, last;
};

Block EepromBlock(int leadPauseMs, int pauseMs, std::initializer_list<EepromRange> cells) {
  Block block{leadPauseMs, pauseMs, {}, 0};
  for (const auto& [first, last] : cells) {
    for (int address = first; address <= last; ++address) block.requests.push_back(ReadEeprom(address));
  }
  block.reply = block.requests.size() * CommandOf(CommandName::ReadEeprom).reply;
  return block;
}

}  // namespace

Request MakeRequest(CommandName name, std::span<const int> operands) {
  const Command& command = CommandOf(name);
  if (operands.size() != command.operands) Throw(std::errc::invalid_argument, "Wrong number of operands");
  Request request{{static_cast<std::uint8_t>(command.letter), command.pauseBetweenMs}};
  for (const int operand : operands) {
    if (operand < 0 || operand > 255) Throw(std::errc::value_too_large, "Request byte outside 0 to 255");
    request.push_back({static_cast<std::uint8_t>(operand), command.pauseBetweenMs});
  }
  request.back().pauseMs = command.pauseAfterMs;
  request.back().reply = command.reply;
  return request;
}

Request ReadEeprom(int address) { return MakeRequest(CommandName::ReadEeprom, std::array{address}); }

Request WriteEeprom(int address, int value) {
  return MakeRequest(CommandName::WriteEeprom, std::array{address, value});
}

Request DownloadPage(int page) {
  // The low byte of a negative number would be in range, so the number itself is tested.
  if (page < 0) Throw(std::errc::value_too_large, "Page number below 0");
  return MakeRequest(CommandName::DownloadPage, std::array{HighByte(page), LowByte(page)});
}

Block TareBlock() { return EepromBlock(0, 250, {{14, 17}, {30, 30}}); }
Block ModeBlock() { return EepromBlock(250, 250, {{42, 43}}); }
Block IdentityBlock() { return EepromBlock(0, 100, {{100, 109}}); }
Block CalibrationBlock() { return EepromBlock(0, 100, {{2, 17}}); }

Block FirmwareBlock() {
  const auto version = MakeRequest(CommandName::ReadFirmwareVersion);
  return {0, 500, {version, MakeRequest(CommandName::ReadSamplingFrequency)}, 4};
}

std::optional<AnglePair> AngleWords(std::span<const std::uint8_t> reply) {
  if (reply.size() != CommandOf(CommandName::SampleAngles).reply) return std::nullopt;
  return AnglePair{values::Word(reply, 0), values::Word(reply, 2)};
}

std::optional<AxisReadings> AccelerometerReadings(std::span<const std::uint8_t> reply) {
  if (reply.size() != CommandOf(CommandName::SampleAccelerometers).reply) return std::nullopt;
  for (std::size_t high = 0; high < reply.size(); high += 2) {
    if (reply[high] >= 0x80) Throw(std::errc::result_out_of_range, "Accelerometer reading above 32767");
  }
  return AxisReadings{values::Word(reply, 0), values::Word(reply, 2), values::Word(reply, 4)};
}

}  // namespace bexlow::link
