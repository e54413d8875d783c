// All cursors of a graph as one plottable: a hundred thousand of them cost no more than a curve.
#pragma once

#include <optional>
#include <vector>

#include "platform/graph/CWGraphPlottable.h"

namespace bexlow::platform {

class CWGraphCursors : public CWGraphPlottable {
 public:
  enum class Look : char { Plain, Marked };
  struct Cursor {
    double x = 0;
    double y = 0;
    Look look = Look::Plain;
  };

  CWGraphCursors(QCPAxis* x, QCPAxis* y) : CWGraphPlottable(x, y) {}

  std::vector<Cursor>& All() { return cursors_; }
  /// @param n  from 1
  /// @throws std::system_error (invalid argument) where there is no cursor n
  Cursor& Numbered(int n);
  /// Draws the cursor at x with a thicker line, if there are several cursors.
  void Stress(std::optional<double> x) { stressed_ = x; }
  /// The x of the cursor nearest to a pixel column; nothing if none is close.
  std::optional<double> Near(double pixel) const;
  void SetColours(const QColor& plain, const QColor& marked);

 protected:
  void draw(QCPPainter* painter) override;

 private:
  std::vector<const Cursor*> OneInEachColumn(int left, int columns) const;
  const QColor& ColourOf(Look look) const { return look == Look::Marked ? marked_ : plain_; }
  void DrawAll(QCPPainter& painter, const std::vector<const Cursor*>& chosen, Look look,
               const QColor& colour) const;
  void DrawLines(QCPPainter& painter, const std::vector<int>& columns, const QColor& colour) const;
  /// Uses the pen and brush that DrawLines has set.
  void DrawMark(QCPPainter& painter, const Cursor& cursor, int column) const;

  void DrawStressed(QCPPainter& painter) const;

  std::vector<Cursor> cursors_;
  std::optional<double> stressed_;
  QColor plain_ = Qt::gray;
  QColor marked_ = Qt::red;
};

}  // namespace bexlow::platform
