// The wire format between program and logger: ten one-letter commands; only its length identifies a reply.
#pragma once

#include <optional>
#include <vector>

#include "files/Pages.h"

namespace bexlow::link {

using Bytes = std::vector<std::uint8_t>;

/// One byte of a request and the pause after it. The logger needs the pauses, so each byte is sent alone.
struct Step {
  std::uint8_t byte = 0;
  int pauseMs = 0;
  std::size_t reply = 0;  ///< bytes that the logger answers once it has this byte
  bool operator==(const Step&) const = default;
};
using Request = std::vector<Step>;

enum class CommandName {
  Ping,
  ReadEeprom,
  WriteEeprom,
  SampleAccelerometers,
  SampleAngles,
  DownloadPage,
  EraseData,
  LaunchLogging,
  ReadFirmwareVersion,
  ReadSamplingFrequency
};

struct Command {
  CommandName name;
  char letter;
  std::size_t operands;  ///< operand bytes after the letter
  int pauseBetweenMs;    ///< between two bytes of the request
  int pauseAfterMs;      ///< after its last byte
  std::size_t reply;     ///< bytes of the reply; 0 for none, or for a stream
};

inline constexpr std::size_t PageSize = files::PageBytes;
inline constexpr int PingWaitMs = 500;

inline constexpr Command Commands[] = {
    {CommandName::Ping, 'f', 0, 0, 0, 1},
    {CommandName::ReadEeprom, 'r', 1, 12, 0, 1},
    {CommandName::WriteEeprom, 'p', 2, 12, 0, 0},
    {CommandName::SampleAccelerometers, 'a', 0, 0, 0, 6},
    {CommandName::SampleAngles, 'A', 0, 0, 0, 4},
    {CommandName::DownloadPage, 'd', 2, 12, 12, PageSize},
    {CommandName::EraseData, 'e', 0, 0, 0, 0},
    {CommandName::LaunchLogging, 'X', 0, 0, 0, 0},
    {CommandName::ReadFirmwareVersion, 'l', 0, 0, 0, 2},
    {CommandName::ReadSamplingFrequency, 'm', 0, 0, 0, 2},
};

constexpr const Command& CommandOf(CommandName name) { return Commands[static_cast<std::size_t>(name)]; }

/// The bytes of a command with their pauses.
/// @throws std::system_error value_too_large for an operand outside 0 to 255, invalid_argument for too many
/// or too few
Request MakeRequest(CommandName name, std::span<const int> operands = {});

inline Request Ping() { return MakeRequest(CommandName::Ping); }
Request ReadEeprom(int address);
Request WriteEeprom(int address, int value);
Request DownloadPage(int page);  ///< page 0 to 65535, sent high byte first
inline Request EraseData() { return MakeRequest(CommandName::EraseData); }

/// value / 256, truncated toward zero.
constexpr int HighByte(int value) { return value / 256; }
/// value AND 255.
constexpr int LowByte(int value) { return value & 255; }

/// Several requests whose replies collect in the receive buffer and are taken by one Input.
struct Block {
  int leadPauseMs = 0;            ///< between the flush and the first request
  int pauseMs = 0;                ///< after each request
  std::vector<Request> requests;  ///< in order
  std::size_t reply = 0;          ///< exact number of bytes expected
};

Block TareBlock();         ///< XTare, YTare, UpdateTimeIncrement
Block ModeBlock();         ///< BinLinearMode, LinearChannels
Block FirmwareBlock();     ///< the version word, the sampling frequency word
Block IdentityBlock();     ///< cells 100 to 109
Block CalibrationBlock();  ///< cells 2 to 17

/// Angle words of a sample, unsigned.
struct AnglePair {
  double x = 0, y = 0;
};
/// The words of a SampleAngles reply; nothing unless it has exactly 4 bytes.
std::optional<AnglePair> AngleWords(std::span<const std::uint8_t> reply);

/// Readings of the three axes in bits.
struct AxisReadings {
  double x = 0, y = 0, z = 0;
};
/// The readings of a SampleAccelerometers reply; nothing unless it has exactly 6 bytes.
/// @throws std::system_error result_out_of_range for a high byte of 0x80 or more
std::optional<AxisReadings> AccelerometerReadings(std::span<const std::uint8_t> reply);

}  // namespace bexlow::link
