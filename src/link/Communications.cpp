#include "link/Communications.h"

#include "live/Conversions.h"
#include "shell/ErrorHandler.h"
#include "shell/General.h"
#include "shell/Records.h"

namespace bexlow::link {

using shell::GuardedIn;

void OpenCommPort(platform::MSComm& comm, const platform::Form& screen) {
  GuardedIn(screen.Name(), "OpenCommPort", [&] {
    if (comm.PortOpen()) return;
    comm.CommPort(shell::Shared.CurrentCommPort);
    comm.InputLen(0);
    comm.PortOpen(true);
  });
}

void CloseCommPort(platform::MSComm& comm, const platform::Form& screen) {
  GuardedIn(screen.Name(), "CloseCommPort", [&] {
    if (comm.PortOpen()) comm.PortOpen(false);
  });
}

void Send(platform::MSComm& comm, const Request& request) {
  for (const auto& [byte, pauseMs] : request) {
    comm.Output({&byte, 1});
    shell::WaitMilliseconds(pauseMs);
  }
}

std::optional<Bytes> ReadBlock(platform::MSComm& comm, const platform::Form& screen, const Block& block) {
  OpenCommPort(comm, screen);
  comm.Input();
  shell::WaitMilliseconds(block.leadPauseMs);
  for (const auto& request : block.requests) {
    Send(comm, request);
    shell::WaitMilliseconds(block.pauseMs);
  }
  Bytes reply = comm.Input();
  CloseCommPort(comm, screen);
  if (reply.size() != block.reply) return std::nullopt;
  return reply;
}

Bytes TakeReply(platform::MSComm& comm, std::size_t expected, std::int64_t silence) {
  constexpr int LongestWait = 50;  // a line that never falls silent is not a logger's
  int waiting = comm.InBufferCount();
  shell::WaitMicroseconds(silence);
  for (int i = 0; i < LongestWait; ++i) {
    const bool still = waiting == comm.InBufferCount();
    waiting = comm.InBufferCount();
    if (still && (waiting == static_cast<int>(expected) || i > 0)) break;
    shell::WaitMicroseconds(LateSilence);
  }
  return comm.Input();
}

std::int16_t ValueToMSB(std::int32_t& value) {
  std::int16_t high = 0;
  GuardedIn("Communications", "ValueToMSB", [&] { high = live::ToInt16(value / 256); });
  return high;
}

std::int16_t ValueToLSB(std::int32_t& value) {
  std::int16_t low = 0;
  GuardedIn("Communications", "ValueToLSB", [&] { low = live::ToInt16(value & 255); });
  return low;
}

}  // namespace bexlow::link
