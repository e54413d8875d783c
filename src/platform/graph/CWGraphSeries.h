// The series of a graph: equally spaced points, what is known of them, and how a point reads in words.
#pragma once

#include <QString>

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace bexlow::platform {

/// The greatest number that the plot library can still scale.
inline constexpr double CWGraphLargest = 1e100;

/// From lower to upper, ends included.
struct CWGraphRange {
  double lower = 0;
  double upper = 0;

  double Size() const { return upper - lower; }
  double Middle() const { return lower / 2 + upper / 2; }
  bool operator==(const CWGraphRange&) const = default;
};

class CWGraphSeries {
 public:
  enum class Style { Bin, Linear };

  CWGraphSeries() = default;
  /// A point whose value or x is not finite is a gap.
  CWGraphSeries(std::vector<double> values, double firstX, double stepX);

  std::span<const double> Values() const { return values_; }
  bool IsEmpty() const { return values_.empty(); }
  std::size_t Size() const { return values_.size(); }
  double X(std::size_t index) const { return firstX_ + static_cast<double>(index) * stepX_; }
  double StepX() const { return stepX_; }

  /// Ranges of the points; nothing where there is none.
  std::optional<CWGraphRange> XRange() const;
  std::optional<CWGraphRange> YRange() const { return yRange_; }

  /// The point nearest to x, nothing in an empty series. A bin with a count is preferred to empty neighbours.
  std::optional<std::size_t> Nearest(double x, Style style) const;

  /// The point `points` further on, at most the last or first. Bins without a count are skipped.
  std::size_t Beyond(std::size_t index, std::ptrdiff_t points, Style style) const;

  /// "Sample 1234: -12°" or "Angle -30°: count 17".
  /// @param rate  samples a second, where they are known: "Sample 1238, 2 min 45 s at 7.5 Hz: -12°"
  QString PointText(std::size_t index, Style style, std::optional<double> rate = {}) const;

 private:
  bool Counts(std::ptrdiff_t index) const;

  std::vector<double> values_;
  double firstX_ = 0;
  double stepX_ = 1;
  std::optional<CWGraphRange> yRange_;
};

/// A number in plain digits with a point and no grouping, as short as it can be.
QString CWGraphNumber(double value);

/// "1 h 2 min 45 s", whole seconds; leading zero units are omitted.
QString DurationWords(double seconds);
/// "1:02:45" or "2:45", with as many decimals as asked for.
QString DurationClock(double seconds, int decimals = 0);

}  // namespace bexlow::platform
