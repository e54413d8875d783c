#include "platform/graph/CWGraphCursors.h"

#include <algorithm>
#include <cmath>
#include <system_error>

namespace bexlow::platform {

namespace {

constexpr int MarkSize = 4;       // half of a diamond, in pixels
constexpr int DenseDistance = 3;  // columns; below this mean distance of cursors their lines are drawn faint
constexpr double ClickReach = 5;  // greatest distance of a click from a cursor, in pixels
constexpr float DenseOpacity = 0.3F;

}  // namespace

CWGraphCursors::Cursor& CWGraphCursors::Numbered(int n) {
  if (n >= 1 && n <= std::ssize(cursors_)) return cursors_[static_cast<std::size_t>(n - 1)];
  throw std::system_error(std::make_error_code(std::errc::invalid_argument), "No such cursor");
}

void CWGraphCursors::SetColours(const QColor& plain, const QColor& marked) {
  plain_ = plain;
  marked_ = marked;
}

// Of several cursors in a column a marked one is chosen, else the first.
std::vector<const CWGraphCursors::Cursor*> CWGraphCursors::OneInEachColumn(int left, int columns) const {
  std::vector<const Cursor*> chosen(static_cast<std::size_t>(std::max(columns, 0)), nullptr);
  const auto view = mKeyAxis->range();
  const auto x = ScaleOf(*mKeyAxis);
  for (const auto& cursor : cursors_) {
    if (!(cursor.x >= view.lower && cursor.x <= view.upper)) continue;
    const int column = qRound(x.At(cursor.x)) - left;
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
  const bool isDense = used * DenseDistance > std::ssize(chosen);
  painter->setAntialiasing(false);
  for (const auto look : {Look::Plain, Look::Marked}) {
    auto colour = ColourOf(look);
    if (isDense) colour.setAlphaF(DenseOpacity);
    DrawAll(*painter, chosen, look, colour);
  }
  if (stressed_ && cursors_.size() > 1 && mKeyAxis->range().contains(*stressed_)) DrawStressed(*painter);
}

void CWGraphCursors::DrawStressed(QCPPainter& painter) const {
  const int column = qRound(mKeyAxis->coordToPixel(*stressed_));
  DrawLines(painter, {column - 1, column, column + 1}, marked_);
  DrawMark(painter, {*stressed_, 0, Look::Marked}, column);
}

std::optional<double> CWGraphCursors::Near(double pixel) const {
  std::optional<double> nearest;
  double least = ClickReach;
  for (const auto& cursor : cursors_) {
    const double distance = std::abs(mKeyAxis->coordToPixel(cursor.x) - pixel);
    if (!(distance <= least)) continue;
    least = distance;
    nearest = cursor.x;
  }
  return nearest;
}

void CWGraphCursors::DrawAll(QCPPainter& painter, const std::vector<const Cursor*>& chosen, Look look,
                             const QColor& colour) const {
  const int left = clipRect().left();
  std::vector<int> columns;
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (chosen[i] && chosen[i]->look == look) columns.push_back(left + static_cast<int>(i));
  }
  DrawLines(painter, columns, colour);
  int room = left - MarkSize;
  for (const int column : columns) {
    if (column - room < MarkSize) continue;
    room = column;
    DrawMark(painter, *chosen[static_cast<std::size_t>(column - left)], column);
  }
}

void CWGraphCursors::DrawLines(QCPPainter& painter, const std::vector<int>& columns,
                               const QColor& colour) const {
  const auto area = clipRect();
  QVector<QLine> lines;
  for (const int column : columns) lines.append({column, area.top(), column, area.bottom()});
  painter.setPen(QPen(colour, 1));
  painter.setBrush(colour);
  painter.drawLines(lines);
}

void CWGraphCursors::DrawMark(QCPPainter& painter, const Cursor& cursor, int column) const {
  if (!mValueAxis->range().contains(cursor.y)) return;
  const int y = qRound(mValueAxis->coordToPixel(cursor.y));
  const QPoint diamond[] = {
      {column - MarkSize, y}, {column, y - MarkSize}, {column + MarkSize, y}, {column, y + MarkSize}};
  painter.drawPolygon(diamond, 4);
}

}  // namespace bexlow::platform
