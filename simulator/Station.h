// The stand-in at work: carries bytes between the line and the logger at the pace of the line.
#pragma once
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "Faults.h"
#include "Logger.h"
#include "Options.h"
#include "Outbox.h"
#include "Pty.h"
#include "Recorder.h"

namespace bexlow::simulator {

class Station {
 public:
  /// @throws std::system_error where the line or a file can't be opened
  explicit Station(const Options& options);

  /// Works until SIGTERM, SIGINT or SIGHUP.
  void Run();

 private:
  void PlugIn();
  void Vanish(Time away, Time now);
  void ObeySignals(Time now);
  Time Wait();
  void LearnWakeLag(Time late);
  void FollowHolder(Time now);
  std::vector<std::uint8_t> Read();
  void Receive(std::span<const std::uint8_t> bytes, Time now);
  void Hear(std::uint8_t byte, Time now);
  void SendDue(Time now);
  void RecordChanges();
  std::optional<Time> NextWork() const;
  bool Connected() const { return line_ && !unplugged_; }

  Options options_;
  Recorder recorder_;
  Logger logger_;
  FaultPlan faults_;
  Outbox outbox_;
  std::unique_ptr<Pty> line_;      // none while it has vanished
  std::optional<Time> returnsAt_;  // when a vanished line comes back
  Time inputFree_{0};              // when the last received byte has passed the line
  Time wakeLag_{0};                // what this machine usually takes to wake a sleeping program
  bool unplugged_ = false;
};

}  // namespace bexlow::simulator
