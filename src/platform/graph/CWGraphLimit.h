// A level line across a graph that the user drags up and down, with its value in the right margin.
#pragma once

#include <QColor>

#include <optional>

class QCPItemStraightLine;
class QCPItemText;
class QCustomPlot;

namespace bexlow::platform {

class CWGraphAxis;

class CWGraphLimit {
 public:
  CWGraphLimit(QCustomPlot& plot, const CWGraphAxis& yAxis);

  /// std::nullopt removes the line.
  void Set(std::optional<double> value);
  std::optional<double> Value() const { return value_; }

  /// @param y  pixels of the plot
  bool IsNear(double y) const;
  /// Moves to the whole number nearest to y, within the view and the full scale.
  void DragTo(double y);
  /// Moves by `units`, within the view and the full scale.
  void Step(double units);

  void SetColours(const QColor& line, const QColor& paper);

 private:
  void Place(double value);
  /// Hides the label while the line is out of view.
  void FollowView();

  QCustomPlot& plot_;
  const CWGraphAxis& yAxis_;
  QCPItemStraightLine* line_;
  QCPItemText* label_;
  std::optional<double> value_;
};

}  // namespace bexlow::platform
