// A timer whose ticks are events of the program's one thread. At most one tick waits.
#pragma once

#include "platform/machine/Machine.h"

namespace bexlow::platform {

class Form;

class Timer {
 public:
  /// @param owner     the screen that the timer goes with
  /// @param name      as it appears in reports of failures
  /// @param interval  milliseconds between two ticks
  Timer(Form& owner, const std::string& name, int interval);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  bool Enabled() const { return enabled_; }
  /// Enabling a timer that runs changes nothing; a disabled one starts with a whole interval.
  void Enabled(bool on);

  std::function<void()> OnTimer;

 private:
  void Tick();

  Form& owner_;
  std::chrono::milliseconds interval_;
  std::int64_t due_ = 0;  ///< of the next tick, on the high-resolution counter
  bool enabled_ = false;
  std::unique_ptr<Alarm> alarm_;
};

}  // namespace bexlow::platform
