#include "link/SamplingChain.h"

#include <utility>

#include "link/Communications.h"
#include "platform/controls/FramePace.h"
#include "platform/machine/Machine.h"
#include "shared/ErrorHandler.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

using platform::Machine;

namespace {

constexpr int ShownWithinMs = 50;
constexpr int RestMs = 1000;
constexpr double SecondsAByte = 10 / 19200.0;
constexpr double Tolerance = 0.95;  // the two clocks differ by up to 5 %
// Below this many byte times the device is not paced (a pseudo-terminal), and the check is off.
constexpr double PseudoTerminalByteTimes = 1.5;
constexpr double LeastByteTimes = 1.5;  // the request and the first byte of its reply take 2

}  // namespace

SamplingChain::SamplingChain(platform::Form& screen, platform::MSComm& comm, link::CommandName command,
                             Take take, Show show)
    : screen_(screen),
      comm_(comm),
      threshold_(static_cast<int>(link::CommandOf(command).reply)),
      request_(link::MakeRequest(command)),
      take_(std::move(take)),
      show_(std::move(show)),
      showing_(screen, "TimerShowing", ShownWithinMs),
      resting_(screen, "TimerResting", RestMs) {
  comm_.OnComm = [this] { MSComm1_OnComm(); };
  showing_.OnTimer = [this] { ShowWhatWasTaken(); };
  resting_.OnTimer = [this] { shared::Guarded(screen_, "MSComm1_OnComm", [this] { Request(); }); };
}

void SamplingChain::Toggle(QAction& mnuSample, const std::function<void()>& prepare,
                           const std::function<void()>& finish) {
  shared::Guarded(screen_, "mnuSample_Click", [&] {
    if (mnuSample.isChecked()) {
      Stop();
      mnuSample.setChecked(false);
      return finish();
    }
    if (!link::LoggerIsFree(screen_)) return;
    mnuSample.setChecked(true);
    prepare();
    Start();
  });
}

void SamplingChain::Start() {
  rate_ = 0;
  countedSamples_ = samples_;
  countedAt_ = Machine::Get().QueryPerformanceCounter();
  comm_.RThreshold(threshold_);
  link::OpenCommPort(comm_, screen_);
  Request();
}

void SamplingChain::Stop() {
  resting_.Enabled(false);
  ShowWhatWasTaken();
  link::CloseCommPort(comm_, screen_);
}

platform::Activity SamplingChain::Activity() {
  const auto halted = link::Halted(comm_, "Sampling");
  if (halted && !resting_.Enabled()) return *halted;
  const auto rate = static_cast<std::int64_t>(values::RoundHalfEven(Rate()));
  return {"Sampling", rate > 0 ? values::CountText(rate) + " samples a second" : ""};
}

double SamplingChain::Rate() {
  auto& machine = Machine::Get();
  const auto now = machine.QueryPerformanceCounter();
  const auto frequency = machine.QueryPerformanceFrequency();
  if (now - countedAt_ < frequency) return rate_;
  const double seconds = static_cast<double>(now - countedAt_) / static_cast<double>(frequency);
  rate_ = static_cast<double>(samples_ - std::exchange(countedSamples_, samples_)) / seconds;
  countedAt_ = now;
  return rate_;
}

void SamplingChain::Pause() {
  ShowWhatWasTaken();
  comm_.RThreshold(0);
}

void SamplingChain::Resume() {
  comm_.Input();
  comm_.RThreshold(threshold_);
  Request();
}

void SamplingChain::Request() {
  resting_.Enabled(false);
  requestedAt_ = Machine::Get().QueryPerformanceCounter();
  link::Send(comm_, request_);
  platform::FramePace::PaintWhileWaiting(screen_, [this] { ShowWhatWasTaken(); });
  if (unshown_) showing_.Enabled(true);
}

// Updating boxes and dials takes about 50 us, 2 % of a sample's time on the line, so they are updated once
// a frame.
void SamplingChain::ShowWhatWasTaken() {
  showing_.Enabled(false);
  if (std::exchange(unshown_, false) && show_) show_();
}

// Waiting for the end of every reply would cost a third of the samples. If a reply was too long, its extra
// bytes start the next one, which is then complete too early, or begins before the logger can have
// answered. On a line that delivers in bursts the next one has a wrong length.
bool SamplingChain::CameTooSoon(std::int64_t firstByteAt) const {
  auto& machine = Machine::Get();
  const auto byteTimes = [&](std::int64_t at) {
    const auto counts = static_cast<double>(at - requestedAt_);
    return counts / static_cast<double>(machine.QueryPerformanceFrequency()) / SecondsAByte;
  };
  const double whole = byteTimes(machine.QueryPerformanceCounter());
  if (whole < PseudoTerminalByteTimes) return false;
  return whole < (1 + threshold_) * Tolerance || byteTimes(firstByteAt) < LeastByteTimes;
}

link::Bytes SamplingChain::TakeReply() {
  const auto expected = static_cast<std::size_t>(threshold_);
  const auto firstByteAt = comm_.FirstByteAt();
  link::Bytes reply = comm_.Input();
  if (reply.size() != expected || CameTooSoon(firstByteAt)) link::EndReply(comm_, reply, expected);
  return reply;
}

void SamplingChain::MSComm1_OnComm() {
  const auto step = [this] {
    if (comm_.CommEvent() != platform::ReceiveEvent) return;
    const link::Bytes reply = TakeReply();
    if (static_cast<int>(reply.size()) == threshold_) {
      take_(reply);
      ++samples_;
      unshown_ = true;
    }
    if (!std::exchange(restWanted_, false)) return Request();
    resting_.Enabled(true);
  };
  shared::Guarded(screen_, "MSComm1_OnComm", step, [this] { ShowWhatWasTaken(); });
}

}  // namespace bexlow::link
