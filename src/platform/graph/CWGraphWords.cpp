// Descriptions for screen readers.
#include <QLabel>
#include <qcustomplot.h>

#include <algorithm>

#include "platform/graph/CWGraph.h"

namespace bexlow::platform {

namespace {

constexpr int CursorsInWords = 10;  // more would take too long to read aloud

QString RangeWords(CWGraphRange range) {
  return QStringLiteral("%1 to %2").arg(CWGraphNumber(range.lower), CWGraphNumber(range.upper));
}

}  // namespace

QString CWGraph::ReadOutText() const {
  return words_->text();
}

QWidget* CWGraph::WordsShown() const {
  return words_->isVisibleTo(this) ? words_ : nullptr;
}

QString CWGraph::Description() const {
  QStringList words;
  const auto range = series_.YRange();
  words << (series_.IsEmpty() ? tr("No data") : tr("%1 points").arg(series_.Size()));
  words << tr("%1 from %2").arg(TitleX(), XWords());
  words << tr("%1 from %2").arg(TitleY(), RangeWords(YView()));
  if (range)
    words << tr("least value %1, greatest value %2")
                 .arg(CWGraphNumber(range->lower), CWGraphNumber(range->upper));
  if (!numbers_->text().isEmpty()) words << numbers_->text();
  if (CursorCount() > 0) words << CursorWords();
  return words.join(QStringLiteral("; "));
}

QString CWGraph::XWords() const {
  const auto rate = ClockRate();
  if (!rate) return RangeWords(XView());
  return tr("%1 to %2").arg(DurationClock(XView().lower / *rate), DurationClock(XView().upper / *rate));
}

QString CWGraph::CursorWords() const {
  QStringList places;
  for (int n = 1; n <= std::min(CursorCount(), CursorsInWords); ++n) places << CWGraphNumber(CursorX(n));
  const auto more = CursorCount() > CursorsInWords ? tr(" and more") : QString();
  const auto count = CursorCount() == 1 ? tr("1 cursor") : tr("%1 cursors").arg(CursorCount());
  return tr("%1 at %2%3").arg(count, places.join(QStringLiteral(", ")), more);
}

}  // namespace bexlow::platform
