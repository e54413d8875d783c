// What a graph tells in words, to the eye and to screen readers.
#include <QAccessibleWidget>
#include <QLabel>

#include <algorithm>
#include <cmath>

#include "platform/graph/CWGraph.h"
#include "values/NumberText.h"

namespace bexlow::platform {

namespace {

constexpr std::size_t CursorsInWords = 10;  // more would take too long to read aloud

QString RangeWords(CWGraphRange range) {
  return QStringLiteral("%1 to %2").arg(CWGraphNumber(range.lower), CWGraphNumber(range.upper));
}

/// Role chart, a description that is made on request, and the lines of text as children; the plot has none.
class ChartAccess : public QAccessibleWidget {
 public:
  explicit ChartAccess(CWGraph& graph) : QAccessibleWidget(&graph, QAccessible::Chart), graph_(graph) {}

  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Description ? graph_.Description() : QAccessibleWidget::text(kind);
  }
  int childCount() const override { return static_cast<int>(graph_.WordsShown().size()); }
  QAccessibleInterface* child(int index) const override {
    return QAccessible::queryAccessibleInterface(graph_.WordsShown().value(index));
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child ? static_cast<int>(graph_.WordsShown().indexOf(child->object())) : -1;
  }

 private:
  const CWGraph& graph_;
};

}  // namespace

// A second time changes nothing.
void CWGraph::InstallAccess() {
  QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
    auto* graph = qobject_cast<CWGraph*>(object);
    return graph ? new ChartAccess(*graph) : nullptr;
  });
}

QString CWGraph::ReadOutText() const { return words_->text(); }

QList<QWidget*> CWGraph::WordsShown() const {
  QList<QWidget*> shown;
  for (auto* words : {numbers_, words_})
    if (words->isVisibleTo(this) && !words->text().isEmpty()) shown << words;
  return shown;
}

QString CWGraph::TitleX() const {
  if (!titleX_.isEmpty()) return titleX_;
  if (style_ == PlotStyle::Bin) return tr("Angle (degrees)");
  const bool hasRate = times_ && times_->rate > 0;
  const auto time = hasRate ? tr("Time since launch (h:mm:ss)") : tr("Sampling time (h:mm:ss)");
  const auto title = Clock() ? time : tr("Sample");
  return hasRate ? tr("%1, at %2 Hz").arg(title, CWGraphNumber(times_->rate)) : title;
}

QString CWGraph::TitleY() const {
  if (!titleY_.isEmpty()) return titleY_;
  return style_ == PlotStyle::Bin ? tr("Count") : tr("Angle (degrees)");
}

// A program that gives the axis a title of its own tells the unit there.
QString CWGraph::Unit() const { return titleY_.isEmpty() ? QStringLiteral("°") : QString(); }

// "Sample 1238, 2 min 45 s at 7.5 Hz: -12°", "Sample 1238, 0:00:03.34: -12.3°" or "Angle -30°: count 17".
QString CWGraph::PointText(std::size_t index) const {
  const auto x = CWGraphNumber(X(index));
  const auto note = NoteOf ? NoteOf(index) : QString();
  const auto number = std::isnan(values_[index]) ? QStringLiteral("-") : CWGraphNumber(values_[index]);
  const auto value = note.isEmpty() ? number + (style_ == PlotStyle::Bin ? QString() : Unit()) : note;
  if (style_ == PlotStyle::Bin) return QStringLiteral("Angle %1°: count %2").arg(x, value);
  if (!times_) return QStringLiteral("Sample %1: %2").arg(x, value);
  const double seconds = times_->secondsAt(X(index));
  const auto time = times_->rate > 0 ? tr("%1 at %2 Hz")
                                           .arg(QString::fromStdString(values::DurationWords(seconds)),
                                                CWGraphNumber(times_->rate))
                                     : QString::fromStdString(values::DurationClock(seconds, 2));
  return QStringLiteral("Sample %1, %2: %3").arg(x, time, value);
}

QString CWGraph::Description() const {
  QStringList words;
  words << (values_.empty() ? tr("No data")
                            : tr(values_.size() == 1 ? "%1 point" : "%1 points").arg(values_.size()));
  words << tr("%1 from %2").arg(TitleX(), XWords());
  words << tr("%1 from %2").arg(TitleY(), RangeWords(YView()));
  if (valueRange_)
    words << tr("least value %1, greatest value %2")
                 .arg(CWGraphNumber(valueRange_->lower), CWGraphNumber(valueRange_->upper));
  if (!numbers_->text().isEmpty()) words << numbers_->text();
  if (!cursors_.empty()) words << CursorWords();
  return words.join(QStringLiteral("; "));
}

QString CWGraph::XWords() const {
  if (!Clock()) return RangeWords(XView());
  const double seconds = times_->secondsAt(XView().upper) - times_->secondsAt(XView().lower);
  const auto clock = [=, this](double sample) {
    return values::DurationClock(times_->secondsAt(sample), seconds < 60 ? 2 : 0);
  };
  return QString::fromStdString(clock(XView().lower) + " to " + clock(XView().upper));
}

QString CWGraph::CursorWords() const {
  QStringList places;
  for (const double x : std::span(cursors_).first(std::min(cursors_.size(), CursorsInWords)))
    places << CWGraphNumber(x);
  const auto more = cursors_.size() > CursorsInWords ? tr(" and more") : QString();
  const auto count = cursors_.size() == 1 ? tr("1 cursor") : tr("%1 cursors").arg(cursors_.size());
  return tr("%1 at %2%3").arg(count, places.join(QStringLiteral(", ")), more);
}

}  // namespace bexlow::platform
