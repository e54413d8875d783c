// Drawn over a plot without redrawing it: the focus frame, the rectangle being drawn, the point read out.
#pragma once

#include <QWidget>

#include <optional>

namespace bexlow::platform {

class CWGraphOverlay : public QWidget {
 public:
  explicit CWGraphOverlay(QWidget& graph);

  /// In the graph's coordinates; std::nullopt removes it.
  void ShowRectangle(std::optional<QRect> rectangle);
  /// The point read out, a line through it as tall as the area.
  void ShowPoint(std::optional<QPointF> point, QRect area);
  /// Words in the middle of the plot, "No data".
  void ShowNotice(const QString& words, QRect area);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<QRect> rectangle_;
  std::optional<QPointF> point_;
  QRect area_;
  QString notice_;
};

}  // namespace bexlow::platform
