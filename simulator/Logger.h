// The logger itself: settings cells, data memory, and the ten commands, taken byte by byte from a line
// without frames. It has no device and no clock: every call passes the time.
#pragma once
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "DataMemory.h"
#include "Eeprom.h"
#include "Live.h"
#include "Reply.h"
#include "Run.h"
#include "Time.h"

namespace bexlow::simulator {

struct LoggerSetup {
  RunPlan stored;             // what the memory holds at the start
  std::size_t runPages = 12;  // length of the run that a launch logs
  Time eraseTime = std::chrono::seconds(8);
  Time byteTime = ByteTime;  // 0 = unpaced; an erase lasts at least as long as its stream takes on the line
  Motion motion = Motion::Sway;
};

/// Bytes of the progress stream of an erase: three a page, and two more for each quarter of a second, because
/// a reader that looks four times a second may lose two at each look and still expects to count 3 x
/// 2047.
std::size_t EraseStreamSize(Time eraseTime);

/// What the erase really takes: the wanted time, or that of its stream on the line where this is longer.
Time EraseTime(Time wanted, Time byteTime);

class Logger {
 public:
  Logger(const LoggerSetup& setup, Time start);

  /// One byte from the line, complete at `now`. Gives the reply when the byte ends a request that has one.
  /// Unknown letters, pages outside the memory and requests broken off for more than a second give nothing.
  std::optional<Reply> Take(std::uint8_t byte, Time now);

  /// Brings a running erase up to `now`, and logs the launched run when its time has come.
  void Advance(Time now);

  /// Whether somebody holds the other end of the cable. A launched logger logs its run while nobody does.
  void SetLineOpen(bool open, Time now);

  /// When Advance has something to do next.
  std::optional<Time> NextEvent() const;

  const DataMemory& Memory() const { return memory_; }
  const Eeprom& Cells() const { return cells_; }

  /// Whether a finished change (an erase, a logged run; a written cell) waits to be recorded; asking clears
  /// it.
  bool TakeMemoryChange() { return std::exchange(memoryChanged_, false); }
  bool TakeEepromChange() { return std::exchange(eepromChanged_, false); }

 private:
  using Operands = std::span<const std::uint8_t>;
  using Answer = std::optional<Reply> (Logger::*)(Operands operands, Time now);
  struct Command {
    char letter;
    std::size_t operands;
    Answer answer;
  };
  static const Command Commands[];
  static const Command* Find(std::uint8_t letter);

  std::optional<Reply> Ping(Operands operands, Time now);
  std::optional<Reply> ReadEeprom(Operands operands, Time now);
  std::optional<Reply> WriteEeprom(Operands operands, Time now);
  std::optional<Reply> SampleAccelerometers(Operands operands, Time now);
  std::optional<Reply> SampleAngles(Operands operands, Time now);
  std::optional<Reply> DownloadPage(Operands operands, Time now);
  std::optional<Reply> EraseData(Operands operands, Time now);
  std::optional<Reply> LaunchLogging(Operands operands, Time now);
  std::optional<Reply> ReadFirmwareVersion(Operands operands, Time now);
  std::optional<Reply> ReadSamplingFrequency(Operands operands, Time now);

  void WritePageZero();
  void LogLaunchedRun();

  LoggerSetup setup_;
  Time start_;
  Eeprom cells_;
  DataMemory memory_;
  std::vector<std::uint8_t> pending_;  // an incomplete request
  Time lastByte_;
  std::optional<Time> eraseStart_;
  std::size_t erasedPages_ = 0;
  bool launched_ = false;
  bool lineOpen_ = true;
  std::uint64_t launches_ = 0;
  bool memoryChanged_ = false;
  bool eepromChanged_ = false;
};

}  // namespace bexlow::simulator
