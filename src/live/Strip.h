// The last 30 seconds of a reading, reduced for drawing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace bexlow::live {

/// For each 1/20 s it keeps the least and the greatest value, so that a single outlier stays visible.
class Strip {
 public:
  static constexpr double Seconds = 30;
  static constexpr double PartsASecond = 20;
  static constexpr auto Parts = static_cast<std::size_t>(Seconds * PartsASecond);
  static constexpr std::size_t PointsAPart = 6;
  /// Samples further apart than this are not joined by a line.
  static constexpr double GapSeconds = 2;

  /// @param crossing  two samples in a row that differ by more are not joined: an angle has gone through
  ///                  +-180 then
  explicit Strip(double crossing = std::numeric_limits<double>::infinity()) : crossing_(crossing) { Clear(); }
  void Clear();
  /// @param seconds  from any zero point; must not decrease
  void Add(double seconds, double value);
  /// PointsAPart points for each part, the newest last; NaN where the line is broken.
  std::vector<double> Points() const;

 private:
  struct Part {
    double least, greatest;
    double below, above;   ///< the greatest below 0, the least of the others
    bool crossed = false;  ///< within the part
    bool broken = false;   ///< between this part and the one before
    void Add(double value);
  };
  Part& At(std::int64_t number) { return parts_[static_cast<std::size_t>(number) % Parts]; }
  void Join(std::int64_t number, double value);

  double crossing_;
  std::array<Part, Parts> parts_{};
  std::int64_t newest_ = 0;  ///< number of the part that was added to last
  double last_ = 0;          ///< the sample before; NaN for none
};

}  // namespace bexlow::live
