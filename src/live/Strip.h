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
  /// A line needs 2.6 ms for a request and its reply. Where samples come faster than this, as on a
  /// pseudo-terminal, those between are left out.
  static constexpr double LeastSeconds = 0.002;

  void Clear() { samples_.clear(); }
  /// @param seconds  from any zero point; must not decrease
  void Add(double seconds, double value) {
    const double since = samples_.empty() ? LeastSeconds : seconds - samples_.back().first;
    if (since < LeastSeconds) return;
    if (since > GapSeconds) samples_.emplace_back(seconds, std::numeric_limits<double>::quiet_NaN());
    samples_.emplace_back(seconds, value);
    while (samples_.front().first < seconds - Seconds) samples_.pop_front();
  }
  /// Times and values, the newest last; a value that is no number breaks the line.
  const auto& Samples() const { return samples_; }

 private:
  std::deque<std::pair<double, double>> samples_;
};

}  // namespace bexlow::live
