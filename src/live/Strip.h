// The last half minute of a reading, as little as a curve of it needs.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace bexlow::live {

/// Keeps of each twentieth of a second the least and the greatest value, so that a sample that sticks out is
/// seen.
class Strip {
 public:
  static constexpr double Seconds = 30;
  static constexpr double PartsASecond = 20;
  static constexpr auto Parts = static_cast<std::size_t>(Seconds * PartsASecond);

  Strip() { Clear(); }
  void Clear();
  /// @param seconds  since a moment of the caller's, never falling
  void Add(double seconds, double value);
  /// Least and greatest of each part, 2 * Parts values, the newest last; no number where there was no sample.
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
