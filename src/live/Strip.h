// The last 30 seconds of a reading.
#pragma once

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <utility>

namespace bexlow::live {

class Strip {
 public:
  static constexpr double Seconds = 30;
  /// Samples further apart than this are not joined by a line.
  static constexpr double GapSeconds = 2;
  /// Of three samples within this time the least and the greatest are kept; a pixel is some 0.06 s.
  static constexpr double DenseSeconds = 0.01;

  void Clear() { samples_.clear(); }
  /// @param seconds  from any zero point; must not decrease
  void Add(double seconds, double value) {
    if (!samples_.empty() && seconds - samples_.back().first > GapSeconds)
      samples_.emplace_back(seconds, std::numeric_limits<double>::quiet_NaN());
    samples_.emplace_back(seconds, value);
    if (samples_.size() > 2) Thin(*(samples_.end() - 3), *(samples_.end() - 2));
    while (samples_.front().first < seconds - Seconds) samples_.pop_front();
  }
  /// Times and values, the newest last; a value that is no number breaks the line.
  const auto& Samples() const { return samples_; }

 private:
  using Sample = std::pair<double, double>;

  // On a line without a pace there are ten thousand samples a second.
  void Thin(Sample& first, Sample& second) {
    const auto [seconds, value] = samples_.back();
    if (seconds - first.first > DenseSeconds || std::isnan(first.second) || std::isnan(second.second)) return;
    const auto [least, greatest] = std::minmax({first.second, second.second, value});
    first.second = least;
    second.second = greatest;
    samples_.pop_back();
  }

  std::deque<Sample> samples_;
};

}  // namespace bexlow::live
