// The last 30 seconds of a reading, reduced for drawing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace bexlow::live {

/// For each 1/20 s it keeps the least and the greatest value, so that a single outlier stays visible.
class Strip {
 public:
  static constexpr double Seconds = 30;
  static constexpr double PartsASecond = 20;
  static constexpr auto Parts = static_cast<std::size_t>(Seconds * PartsASecond);

  Strip() { Clear(); }
  void Clear();
  /// @param seconds  from any zero point; must not decrease
  void Add(double seconds, double value);
  /// Least and greatest of each part, 2 * Parts values, the newest last; NaN for a part without a sample.
  std::vector<double> Values() const;

 private:
  struct Extremes {
    double least, greatest;
  };
  Extremes& Part(std::int64_t number) { return parts_[static_cast<std::size_t>(number) % Parts]; }

  std::array<Extremes, Parts> parts_{};
  std::int64_t newest_ = 0;  ///< number of the part that was added to last
};

}  // namespace bexlow::live
