#include "platform/controls/Timer.h"

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {

constexpr std::chrono::milliseconds HeldUp{5};  // a busy machine is less late than this

std::int64_t Counts(std::chrono::milliseconds time) {
  return Machine::Get().QueryPerformanceFrequency() * time.count() / 1000;
}

}  // namespace

Timer::Timer(Form& owner, const std::string& name, int interval) : owner_(owner), interval_(interval) {
  alarm_ = Machine::Get().MakeAlarm([this, tick = name + "_Timer"] {
    EventGate::Get().Offer(this, {&owner_, tick}, [this] { Tick(); });
  });
  owner.AtUnload([this] { Enabled(false); });
}

Timer::~Timer() { EventGate::Get().Withdraw(this); }

// The machine's alarm ticks at fixed times. After a tick that a handler or an open box has delayed, the next
// one comes a whole interval later, since the logger needs it.
void Timer::Tick() {
  if (!enabled_) return;
  const auto now = Machine::Get().QueryPerformanceCounter();
  const bool heldUp = now > due_ + Counts(HeldUp);
  if (heldUp) alarm_->Start(interval_);
  due_ = (heldUp ? now : due_) + Counts(interval_);
  if (OnTimer) OnTimer();
}

void Timer::Enabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  owner_.Engage(on ? 1 : -1);
  if (on) {
    due_ = Machine::Get().QueryPerformanceCounter() + Counts(interval_);
    alarm_->Start(interval_);
  } else {
    alarm_->Stop();
    EventGate::Get().Withdraw(this);
  }
}

}  // namespace bexlow::platform
