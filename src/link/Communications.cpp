#include "link/Communications.h"

#include <cmath>

#include "shared/ErrorHandler.h"
#include "shared/General.h"
#include "shared/Records.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

using shared::GuardedIn;

void OpenCommPort(platform::MSComm& comm, const platform::Form& screen) {
  GuardedIn(screen.Name(), "OpenCommPort", [&] {
    if (comm.PortOpen()) return;
    comm.CommPort = shared::Shared.CurrentCommPort;
    comm.InputLen = 0;
    comm.PortOpen(true);
    shared::ForgetFailure(screen);
  });
}

void CloseCommPort(platform::MSComm& comm, const platform::Form& screen) {
  GuardedIn(screen.Name(), "CloseCommPort", [&] {
    if (comm.PortOpen()) comm.PortOpen(false);
  });
}

namespace {

// A byte of its progress, of which four and more come in 250 ms, would be taken for a reply.
bool HaltedEraseGoesOn() {
  constexpr int ListenMs = 500;
  const auto port = std::exchange(shared::Shared.HaltedEraseCommPort, std::int16_t{0});
  if (port == 0) return false;
  std::size_t count = 0;
  try {
    const auto line = platform::Machine::Get().OpenSerial(
        port, [&count](const platform::Bytes& bytes) { count += bytes.size(); });
    shared::WaitMilliseconds(ListenMs);
  } catch (const std::system_error&) {}  // there is no logger
  if (count > 0) shared::Shared.HaltedEraseCommPort = port;
  return count > 0;
}

}  // namespace

bool LoggerIsFree(const platform::Form& screen) {
  const auto* other = platform::Form::OtherEngaged(&screen);
  if (other == nullptr) {
    if (!HaltedEraseGoesOn()) return true;
    platform::MsgBox(
        "The logger is still erasing: the halted erase goes on in it.\r\nPlease try again later!");
    return false;
  }
  const bool canBeLeft = other->findChild<QAction*>("mnuReturn") != nullptr;
  platform::MsgBox("The screen \"" + other->windowTitle().toStdString() +
                   "\" is using the logger. Please wait until it has ended" +
                   (canBeLeft ? ", or stop it there! Return on that screen frees the logger at once." : "!"));
  return false;
}

void Send(platform::MSComm& comm, std::span<const Step> request) {
  for (const auto& [byte, pauseMs, reply] : request) {
    comm.Output({&byte, 1}, reply);
    shared::WaitMilliseconds(pauseMs);
  }
}

Bytes ReadBlock(platform::MSComm& comm, const platform::Form& screen, const Block& block) {
  OpenCommPort(comm, screen);
  comm.Input();
  shared::WaitMilliseconds(block.leadPauseMs);
  for (const auto& request : block.requests) {
    Send(comm, request);
    shared::WaitMilliseconds(block.pauseMs);
  }
  Bytes reply = comm.Input();
  CloseCommPort(comm, screen);
  return reply;
}

std::optional<platform::Activity> Halted(const platform::MSComm& comm, const std::string& exchange) {
  constexpr double SilentAfterSeconds = 2;
  if (comm.RThreshold() == 0 || comm.InBufferCount() > 0) return std::nullopt;
  if (!comm.AskedAt()) return platform::Activity{exchange + " has stopped", "", "", true};
  const double seconds = std::floor(platform::SecondsSince(*comm.AskedAt()));
  if (seconds < SilentAfterSeconds) return std::nullopt;
  return platform::Activity{
      "No reply from the logger",
      "silent for " + values::DurationText(seconds) + ", check the cable, return and open the screen again",
      ", ", true};
}

void EndReply(platform::MSComm& comm, Bytes& reply, std::size_t expected, std::span<const Step> firstSteps,
              std::int64_t silentUs) {
  constexpr int MostRounds = 20;  // of 20 ms: two pages take 14
  Send(comm, firstSteps);
  for (const auto& step : firstSteps) silentUs -= std::int64_t{1000} * step.pauseMs;
  shared::WaitMicroseconds(silentUs);
  for (int round = 0; round < MostRounds; ++round) {
    const Bytes more = comm.Input();
    reply.insert(reply.end(), more.begin(), more.end());
    if (!firstSteps.empty() || reply.size() == expected || (round > 0 && more.empty())) return;
    shared::WaitMicroseconds(LineSilenceUs);
  }
}

std::int16_t ValueToMSB(std::int32_t& value) {
  std::int16_t high = 0;
  const std::int32_t whole = value / 256;
  GuardedIn("Communications", "ValueToMSB", [&] { high = values::ToInt16(whole); });
  return high;
}

std::int16_t ValueToLSB(std::int32_t& value) {
  std::int16_t low = 0;
  GuardedIn("Communications", "ValueToLSB", [&] { low = values::ToInt16(value & 255); });
  return low;
}

}  // namespace bexlow::link
