#include "link/SamplingScreen.h"

#include "link/Communications.h"
#include "shared/ErrorHandler.h"
#include "shared/Screens.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::link {

using platform::Machine;
using shared::Guarded;

namespace {

constexpr std::chrono::milliseconds ShownWithin{40};
constexpr double FrameSeconds = 0.03;
constexpr int DelayMs = 1000;
constexpr double SecondsAByte = 10 / 19200.0;
constexpr double Tolerance = 0.95;  // the two clocks differ by up to 5 %
// Below this many byte times the device is not paced (a pseudo-terminal), and the check is off.
constexpr double PseudoTerminalByteTimes = 1.5;
constexpr double LeastByteTimes = 2 * Tolerance;  // of the request and the first byte of its reply
constexpr double DoubtSeconds = 0.1;              // so long after a write its answer may come

}  // namespace

void Pace::Begin() {
  *this = {};
  lastAt_ = countedAt_ = Machine::Get().QueryPerformanceCounter();
}

void Pace::Count() {
  ++samples_;
  lastAt_ = Machine::Get().QueryPerformanceCounter();
}

std::int64_t Pace::PerSecond() {
  const double seconds = platform::SecondsSince(countedAt_);
  if (seconds < 1) return perSecond_;
  countedAt_ = Machine::Get().QueryPerformanceCounter();
  const auto samples = static_cast<double>(samples_ - std::exchange(counted_, samples_));
  const bool isRate = seconds < 1.5;  // else nobody has asked meanwhile
  return perSecond_ = isRate ? static_cast<std::int64_t>(values::RoundHalfEven(samples / seconds)) : 0;
}

std::int64_t Pace::SilentSeconds() const {
  return static_cast<std::int64_t>(platform::SecondsSince(lastAt_));
}

std::string SamplesText(std::int64_t count) {
  return values::CountText(count) + (count == 1 ? " sample" : " samples");
}

SamplingScreen::SamplingScreen(const char* name, const QString& caption, CommandName command)
    : Form(name, caption),
      MSComm1(*this, "MSComm1"),
      mnuData(AddMenu("mnuData", "&Data")),
      mnuSample(AddCheckEntry(
          mnuData, "mnuSample", "&Sample", [this] { mnuSample_Click(); }, shared::SampleKey)),
      threshold_(static_cast<int>(CommandOf(command).reply)),
      request_(MakeRequest(command)),
      showing_(Machine::Get().MakeAlarm([this] { ShowWhatWasTaken(); })),
      delaying_(*this, "TimerDelaying", DelayMs) {
  mnuData->addSeparator()->setObjectName("mnuSep");
  AddEntry(mnuData, "mnuReturn", "&Return", [this] { Unload(); });
  MSComm1.OnComm = [this] { MSComm1_OnComm(); };
  delaying_.OnTimer = [this] { Guarded(*this, "MSComm1_OnComm", [this] { SendRequest(); }); };
  OnActivity = [this] { return Activity(); };
}

void SamplingScreen::mnuSample_Click() {
  if (mnuSample->isChecked()) {
    delaying_.Enabled(false);
    ShowWhatWasTaken();
    CloseCommPort(MSComm1, *this);
    mnuSample->setChecked(false);
    return Stopped();
  }
  if (!LoggerIsFree(*this)) return;
  mnuSample->setChecked(true);
  Starting();
  pace_.Begin();
  MSComm1.RThreshold(threshold_);
  OpenCommPort(MSComm1, *this);
  SendRequest();
}

bool SamplingScreen::HasStopped() const {
  if (MSComm1.RThreshold() == 0) return true;
  return !MSComm1.AskedAt() && MSComm1.InBufferCount() < threshold_ && !delaying_.Enabled();
}

platform::Activity SamplingScreen::Activity() {
  if (HasStopped())
    return {"Sampling has stopped", "choose Sample to end it, and again to start anew", ", ", true};
  const auto silent = pace_.SilentSeconds();
  if (silent >= SilentAfterSeconds && MSComm1.InBufferCount() < threshold_)
    return {"No sample",
            "for " + values::DurationText(static_cast<double>(silent)) + ", check the cable and start again",
            " ", true};
  const auto rate = pace_.PerSecond();
  return {"Sampling", rate > 0 ? SamplesText(rate) + " a second" : ""};
}

void SamplingScreen::PauseSampling() {
  ShowWhatWasTaken();
  MSComm1.RThreshold(0);
}

void SamplingScreen::ResumeSampling() {
  MSComm1.Input();
  MSComm1.RThreshold(threshold_);
  resumedAt_ = Machine::Get().QueryPerformanceCounter();
  SendRequest();
}

void SamplingScreen::SendRequest() {
  delaying_.Enabled(false);
  requestedAt_ = Machine::Get().QueryPerformanceCounter();
  Send(MSComm1, request_);
  ShowIfDue();
}

void SamplingScreen::ShowSoon() {
  if (!std::exchange(showDue_, true)) showing_->Start(ShownWithin);
}

void SamplingScreen::ShowIfDue() {
  if (platform::SecondsSince(shownAt_) >= FrameSeconds) ShowWhatWasTaken();
}

// Painting each of some 370 samples a second would leave the line waiting, so boxes and dials are updated
// once a frame. Right after a request, they are painted while its reply is on the line.
void SamplingScreen::ShowWhatWasTaken() {
  showing_->Stop();
  shownAt_ = Machine::Get().QueryPerformanceCounter();
  if (std::exchange(showDue_, false)) Show();
}

// Waiting for the end of every reply would cost a third of the samples. If a reply was too long, its extra
// bytes start the next one, which is then complete too early, or begins before the logger can have
// answered. On a line that delivers in bursts the next one has a wrong length.
bool SamplingScreen::CameTooSoon(std::int64_t firstByteAt) const {
  const double whole = platform::SecondsSince(requestedAt_) / SecondsAByte;
  const double first = whole - platform::SecondsSince(firstByteAt) / SecondsAByte;
  if (whole < PseudoTerminalByteTimes) return false;
  return whole < (1 + threshold_) * Tolerance || first < LeastByteTimes;
}

Bytes SamplingScreen::TakeReply() {
  const auto expected = static_cast<std::size_t>(threshold_);
  const auto firstByteAt = MSComm1.FirstByteAt();
  Bytes reply = MSComm1.Input();
  const bool isDoubtful = platform::SecondsSince(resumedAt_) < DoubtSeconds || CameTooSoon(firstByteAt);
  if (isDoubtful || reply.size() != expected) EndReply(MSComm1, reply, expected);
  return reply;
}

void SamplingScreen::MSComm1_OnComm() {
  const auto step = [this] {
    if (MSComm1.CommEvent() != platform::ReceiveEvent) return;
    const Bytes reply = TakeReply();
    if (std::ssize(reply) == threshold_) {
      Take(reply);
      pace_.Count();
      ShowSoon();
    }
    if (!std::exchange(delayed_, false)) return SendRequest();
    delaying_.Enabled(true);
  };
  Guarded(*this, "MSComm1_OnComm", step, [this] { ShowWhatWasTaken(); });
}

}  // namespace bexlow::link
