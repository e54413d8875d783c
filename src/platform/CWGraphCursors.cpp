#include "platform/CWGraphCursors.h"

#include <algorithm>
#include <cmath>

namespace bexlow::platform {

namespace {

constexpr int MarkSize = 4;          // half of a diamond, in pixels
constexpr int DenseDistance = 3;     // columns between neighbours below which lines would form a wall
constexpr float DenseOpacity = 0.3F;

}  // namespace

void CWGraphCursors::SetColours(const QColor& plain, const QColor& marked) {
  plain_ = plain;
  marked_ = marked;
}

// Cursor 1 wins its column, then marked ones, then the first.
std::vector<const CWGraphCursors::Cursor*> CWGraphCursors::OneInEachColumn(int left, int columns) const {
  std::vector<const Cursor*> chosen(static_cast<std::size_t>(std::max(columns, 0)), nullptr);
  const auto view = mKeyAxis->range();
  const double first = mKeyAxis->coordToPixel(view.lower);
  const double perUnit = (mKeyAxis->coordToPixel(view.upper) - first) / view.size();
  for (const auto& cursor : cursors_) {
    if (!(cursor.x >= view.lower && cursor.x <= view.upper)) continue;
    const int column = qRound(first + (cursor.x - view.lower) * perUnit) - left;
    if (column < 0 || column >= columns) continue;
    auto& place = chosen[static_cast<std::size_t>(column)];
    if (!place || (place->look == Look::Plain && cursor.look == Look::Marked)) place = &cursor;
  }
  return chosen;
}

void CWGraphCursors::draw(QCPPainter* painter) {
  if (cursors_.empty() || !mKeyAxis || !mValueAxis) return;
  const auto area = clipRect();
  const auto chosen = OneInEachColumn(area.left(), area.width());
  const auto used = std::ranges::count_if(chosen, [](const Cursor* cursor) { return cursor != nullptr; });
  const bool isDense = used * DenseDistance > static_cast<std::ptrdiff_t>(chosen.size());
  int lastMark = -MarkSize;
  painter->setAntialiasing(false);
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (!chosen[i]) continue;
    const int column = static_cast<int>(i);
    auto colour = chosen[i]->look == Look::Marked ? marked_ : plain_;
    if (isDense) colour.setAlphaF(DenseOpacity);
    const bool hasRoom = column - lastMark >= MarkSize;
    if (hasRoom) lastMark = column;
    DrawCursor(*painter, *chosen[i], area.left() + column, colour, hasRoom);
  }
  const auto& first = cursors_.front();
  if (!mKeyAxis->range().contains(first.x)) return;
  DrawCursor(*painter, first, qRound(mKeyAxis->coordToPixel(first.x)), first.look == Look::Marked ? marked_ : plain_, true);
}

void CWGraphCursors::DrawCursor(QCPPainter& painter, const Cursor& cursor, int column, const QColor& colour,
                                bool withMark) const {
  const auto area = clipRect();
  painter.setPen(QPen(colour, 1));
  painter.setBrush(colour);
  painter.drawLine(QLine(column, area.top(), column, area.bottom()));
  if (!withMark || !mValueAxis->range().contains(cursor.y)) return;
  const int y = qRound(mValueAxis->coordToPixel(cursor.y));
  const QPoint diamond[] = {{column - MarkSize, y}, {column, y - MarkSize}, {column + MarkSize, y}, {column, y + MarkSize}};
  painter.drawPolygon(diamond, 4);
}

}  // namespace bexlow::platform
