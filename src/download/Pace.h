// How long the pages of a download take, as measured.
#pragma once

#include <algorithm>
#include <deque>
#include <numeric>

#include "platform/machine/Machine.h"

namespace bexlow::download {

class Pace {
 public:
  static constexpr std::int64_t PageUs = 162'000;  // two pauses of 12 ms and 265 bytes at 19200 baud

  /// Page 0 is asked for. Its request takes 12 ms more than a later one, which begins within a reply.
  void Begin() {
    seconds_.clear();
    auto& machine = platform::Machine::Get();
    cameAt_ = machine.QueryPerformanceCounter() + machine.QueryPerformanceFrequency() * 12 / 1000;
  }
  void PageCame() {
    if (cameAt_) seconds_.push_back(platform::SecondsSince(*cameAt_));
    if (seconds_.size() > Pages) seconds_.pop_front();
    cameAt_ = platform::Machine::Get().QueryPerformanceCounter();
  }
  /// The time until the next page does not count: a user looks at a box meanwhile.
  void Interrupt() { cameAt_.reset(); }
  /// A reply that has waited for a box to be answered. Its bytes take 0.14 s from the first to the last.
  static bool HeldBack(std::int64_t firstByteAt) { return platform::SecondsSince(firstByteAt) > 1; }
  /// Of one page, not too short: the mean of the last pages, but never less than the line needs.
  double Seconds() const {
    const double sum = std::accumulate(seconds_.begin(), seconds_.end(), HeldSeconds);
    const double mean = seconds_.empty() ? 0 : sum / static_cast<double>(seconds_.size());
    return std::max(PageUs / 1e6, mean);
  }

 private:
  static constexpr std::size_t Pages = 64;      // those of some ten seconds
  static constexpr double HeldSeconds = 0.016;  // an adapter may hand over the last of them so much later

  std::optional<std::int64_t> cameAt_;  ///< reading of the high-resolution counter
  std::deque<double> seconds_;          ///< from page to page
};

}  // namespace bexlow::download
