// A timer whose ticks are events of the program's one thread. At most one tick waits.
#pragma once

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

class Timer {
 public:
  /// @param owner     the screen that the timer goes with
  /// @param name      as it appears in reports of failures
  /// @param interval  milliseconds between two ticks
  Timer(Form& owner, const std::string& name, int interval) : owner_(owner), interval_(interval) {
    alarm_ = Machine::Get().MakeAlarm([this, tick = name + "_Timer"] {
      EventGate::Get().Offer(this, {&owner_, tick}, [this] { Tick(); });
    });
    owner.AtUnload([this] { Enabled(false); });
  }
  ~Timer() { EventGate::Get().Withdraw(this); }
  Q_DISABLE_COPY(Timer)

  bool Enabled() const { return enabled_; }
  /// Enabling a timer that runs changes nothing; a disabled one starts with a whole interval.
  void Enabled(bool on) {
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

  std::function<void()> OnTimer;

 private:
  static constexpr std::chrono::milliseconds HeldUp{5};  // a busy machine is less late than this

  static std::int64_t Counts(std::chrono::milliseconds time) {
    return Machine::Get().QueryPerformanceFrequency() * time.count() / 1000;
  }

  // The machine's alarm ticks at fixed times. After a tick that a handler or an open box has delayed, the
  // next one comes a whole interval later, since the logger needs it.
  void Tick() {
    if (!enabled_) return;
    const auto now = Machine::Get().QueryPerformanceCounter();
    const bool heldUp = now > due_ + Counts(HeldUp);
    if (heldUp) alarm_->Start(interval_);
    due_ = (heldUp ? now : due_) + Counts(interval_);
    if (OnTimer) OnTimer();
  }

  Form& owner_;
  std::chrono::milliseconds interval_;
  std::int64_t due_ = 0;  ///< of the next tick, on the high-resolution counter
  bool enabled_ = false;
  std::unique_ptr<Alarm> alarm_;
};

}  // namespace bexlow::platform
