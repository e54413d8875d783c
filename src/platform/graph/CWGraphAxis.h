// One axis of a graph: its whole, what is on show of it, the limits of zooming and panning.
#pragma once

#include <optional>

class QCPAxis;

namespace bexlow::platform {

/// The greatest number that the plot library can still scale.
inline constexpr double CWGraphLargest = 1e100;

/// From lower to upper, ends included.
struct CWGraphRange {
  double lower = 0;
  double upper = 0;

  double Size() const { return upper - lower; }
  double Middle() const { return lower / 2 + upper / 2; }
  bool Holds(double place) const { return place >= lower && place <= upper; }
  bool operator==(const CWGraphRange&) const = default;
};

/// What it shows lies within the whole and the data; the drawn axis has a little room beyond, so that points
/// at the ends do not hide under the frame.
class CWGraphAxis {
 public:
  /// @param room  share of the range on show that is drawn beyond each end
  CWGraphAxis(QCPAxis& axis, double room) : axis_(axis), room_(room) {}

  /// The whole as set by the program; shows it.
  void SetWhole(bool autoScale, CWGraphRange given);
  /// The range of the data, and the smallest range worth looking at. An auto-scaled axis shows its whole
  /// anew.
  void SetData(std::optional<CWGraphRange> data, double leastSize);

  CWGraphRange Whole() const;
  CWGraphRange View() const { return view_; }
  void Show(CWGraphRange wanted);
  void ShowExactly(CWGraphRange range);
  void ShowWhole() { ShowExactly(Whole()); }

  /// @param factor  below 1 zooms in
  /// @param anchor  the place that stays where it is
  void Zoom(double factor, double anchor);
  /// @param share  of what is on show; positive moves on to greater values
  void Pan(double share);
  /// Moves on, as far as needed, so that a place is in sight.
  void Include(double place);

 private:
  QCPAxis& axis_;
  double room_;
  bool autoScale_ = false;
  CWGraphRange given_{0, 10};
  std::optional<CWGraphRange> data_;
  double leastSize_ = 0;
  CWGraphRange view_{0, 10};
};

}  // namespace bexlow::platform
