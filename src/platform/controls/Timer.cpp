#include "platform/controls/Timer.h"

#include "platform/controls/EventGate.h"
#include "platform/controls/Form.h"

namespace bexlow::platform {

Timer::Timer(Form& owner, int interval) : interval_(interval) {
  alarm_ = Machine::Get().MakeAlarm([this] {
    EventGate::Get().Offer(this, [this] {
      if (enabled_ && OnTimer) OnTimer();
    });
  });
  owner.AtUnload([this] { Enabled(false); });
}

Timer::~Timer() {
  EventGate::Get().Withdraw(this);
}

void Timer::Enabled(bool on) {
  if (on == enabled_) return;
  enabled_ = on;
  if (on) {
    alarm_->Start(interval_);
  } else {
    alarm_->Stop();
    EventGate::Get().Withdraw(this);
  }
}

}  // namespace bexlow::platform
