// The last 30 seconds of a reading.
#pragma once

#include <deque>
#include <limits>
#include <utility>

namespace bexlow::live {

class Strip {
 public:
  static constexpr double Seconds = 30;
  /// Samples further apart than this are not joined by a line.
  static constexpr double GapSeconds = 2;

  void Clear() { samples_.clear(); }
  /// @param seconds  from any zero point; must not decrease
  void Add(double seconds, double value) {
    if (!samples_.empty() && seconds - samples_.back().first > GapSeconds)
      samples_.emplace_back(seconds, std::numeric_limits<double>::quiet_NaN());
    samples_.emplace_back(seconds, value);
    while (samples_.front().first < seconds - Seconds) samples_.pop_front();
  }
  /// Times and values, the newest last; a value that is no number breaks the line.
  const std::deque<std::pair<double, double>>& Samples() const { return samples_; }

 private:
  std::deque<std::pair<double, double>> samples_;
};

}  // namespace bexlow::live
