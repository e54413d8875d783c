// A graph of one series with cursors: zoomed, panned and read out by mouse and keyboard, saved as a picture.
#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/graph/CWGraphAccess.h"
#include "platform/graph/CWGraphSeries.h"

class QAction;
class QCustomPlot;
class QLabel;
class QMenu;
class QPrinter;

namespace bexlow::platform {

class CWGraphCursors;
class CWGraphCurve;
class CWGraphInteraction;
class CWGraphLimit;
class CWGraphOverlay;
class CWGraphReadOut;
class CWGraphView;

/// Bin: separate counts over degrees. Linear: a run of samples.
using PlotStyle = CWGraphSeries::Style;

/// When the samples of a run were taken, in seconds since its launch. A page that is missing is a jump.
struct SampleTimes {
  double rate = 1;  // samples a second
  std::function<double(double sample)> secondsAt;
  std::function<double(double seconds)> sampleAt;
};

class CWGraph : public QWidget, public DescribedChart {
  Q_OBJECT

 public:
  using PlotStyle = platform::PlotStyle;

  explicit CWGraph(QWidget* parent = nullptr);
  ~CWGraph() override;

  void ClearData();

  /// Draws a series: values[i] stands at firstX + i * stepX. Empty empties the plot. Auto-scaled axes fit
  /// themselves, the others keep what is on show. A value that is no finite number leaves a gap.
  void PlotY(std::span<const double> values, double firstX = 0, double stepX = 1);
  void PlotY(std::span<const std::int16_t> values, double firstX = 0, double stepX = 1);

  void SetPlotStyle(PlotStyle style);

  /// Sets the whole range of an axis and shows it. Auto-scaled, it is the range of the data, and minimum to
  /// maximum while there is none. An empty range is widened.
  void SetXAxis(bool autoScale, double minimum, double maximum);
  void SetYAxis(bool autoScale, double minimum, double maximum);

  /// Titles with units; an empty one stands for the style's own ("Sample", "Angle (degrees)", "Count").
  void SetAxisTitles(const QString& x, const QString& y);

  /// Gives the graph its first cursor, at 0, 0.
  void EnableCursors();
  int CursorCount() const;
  /// A cursor at 0, 0 in the plain look of a new one.
  void AddCursor();
  void RemoveAllCursors();
  /// Draws the cursor at x thicker, if there are several.
  void StressCursor(std::optional<double> x);
  /// The look of the first cursor, red, for cursor n, counted from 1.
  /// @throws std::system_error (invalid argument) where there is no cursor n; so do the next three
  void SetCursorLook(int n);
  void SetCursorPosition(int n, double x, double y);
  double CursorX(int n) const;
  double CursorY(int n) const;

  /// Couples the x views of two graphs, so that what the user does to one happens to both. At most one other.
  void LinkXAxis(CWGraph& other);
  /// Switches the coupling, for both; it is on after LinkXAxis.
  void SetXLinkActive(bool active);

  /// When the samples of the series were taken, where it is known: the read-out tells times, and the user
  /// may have them on the x axis.
  void SetSampleTimes(std::optional<SampleTimes> times);
  void SetSampleRate(std::optional<double> rate);
  /// Times in place of samples on the x axis, also of the linked graph; only where the rate is known.
  void ShowTime(bool time);

  /// A level line that the user drags up and down; std::nullopt removes it.
  void SetLimit(std::optional<double> value);
  std::optional<double> Limit() const;
  /// Two neighbouring samples further apart than this are not joined by a line; std::nullopt joins all.
  void SetCrossing(std::optional<double> degrees);
  /// First and last index of the samples whose points lie in the plot now; nothing where there are none.
  std::optional<std::pair<std::size_t, std::size_t>> DrawnSamples() const;
  /// A line of text over the plot; an empty text removes it.
  void SetNumbers(const QString& words);
  /// The series on show.
  std::span<const double> Values() const { return series_.Values(); }
  /// Called after a redraw when series, x view or limit have changed.
  std::function<void()> Moved;
  /// The text that the menu copies, while there are numbers.
  std::function<QString()> NumbersToCopy;

  /// Text after the graph's name in the title of a picture, as file and launch, and before it in the name
  /// suggested for one.
  void SetHeading(const QString& heading, const QString& fileStem);

  /// Whether the user can zoom, move and read out, and has a menu; a graph has all this at first.
  void SetInteractive(bool interactive);
  /// The user has clicked the plot, or pressed Space where the graph is not interactive.
  std::function<void()> Clicked;
  /// The user has clicked a cursor, which stands at x.
  std::function<void(double x)> CursorClicked;
  /// Page Up or Page Down was pressed; false leaves it to the view.
  std::function<bool(bool forward)> Paged;

  void ShowAll();
  /// Moves the x view, as far as needed, so that x is in sight.
  void BringIntoView(double x);
  /// What is on show, for tests and for keeping a view.
  CWGraphRange XView() const;
  CWGraphRange YView() const;
  void SetXView(CWGraphRange range);

  /// The line under the plot: sample and degrees, or degree and count, at the pointer.
  QString ReadOutText() const;

  /// What the graph shows, in words: points, ranges, least and greatest value, cursors.
  QString Description() const override;
  QWidget* WordsShown() const override;

  /// Asks where to save a picture; gives an empty text when the user cancels. Preset to a file dialog.
  std::function<QString(const QString& suggestedName)> AskPicturePath;
  /// Asks for a printer and its settings; false for none. Preset to a print dialog.
  std::function<bool(QPrinter&)> AskPrinter;
  /// Tells the user why a picture could not be saved. Preset to a message box.
  std::function<void(const QString& reason)> TellFailure;

  /// Draws at once instead of at the next turn of the event loop.
  void DrawNow();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void BuildPlot();
  void FitMargins();
  void FitToSize();
  void BuildInteraction();
  void BuildMenu();
  QAction* AddEntry(const QString& caption, const QKeySequence& keys, std::function<void()> action);
  void RenewMenu();
  void PresetQuestions();
  void TakeSeries(CWGraphSeries series);
  void ApplyColours(const QPalette& palette) const;
  void ApplyStyle();
  QString TitleX() const;
  QString TitleY() const;
  void DrawSoon();
  void PassXView();
  void TellMoved();
  void ClickAt(QPoint place);
  std::optional<double> ClockRate() const;
  QString CursorWords() const;
  QString XWords() const;

  /// This graph, or both of a linked pair, in the order in which they stand.
  enum class Extent { This, Both };
  std::vector<const CWGraph*> Graphs(Extent extent) const;
  /// "X", "X and Y".
  QString NamesOf(Extent extent) const;
  /// Calls `draw` with the plots, titled and in the colours for paper.
  template <class Draw>
  auto OnPaper(Extent extent, Draw draw) const;
  void CopyPicture(Extent extent) const;
  void SaveByUser(Extent extent);
  void PrintByUser(Extent extent);
  void CopyNumbers() const;

  CWGraphSeries series_;
  PlotStyle style_ = PlotStyle::Linear;
  QString titleX_;
  QString titleY_;
  QCustomPlot* plot_ = nullptr;
  CWGraphCurve* curve_ = nullptr;
  CWGraphCursors* cursors_ = nullptr;
  QLabel* words_ = nullptr;
  QLabel* numbers_ = nullptr;
  QMenu* menu_ = nullptr;
  QAction* timeEntry_ = nullptr;
  QAction* numbersEntry_ = nullptr;
  std::vector<QAction*> pairEntries_;
  CWGraphOverlay* overlay_ = nullptr;
  std::unique_ptr<CWGraphView> view_;
  std::unique_ptr<CWGraphReadOut> readOut_;
  std::unique_ptr<CWGraphLimit> limit_;
  CWGraphInteraction* interaction_ = nullptr;
  std::optional<SampleTimes> times_;
  std::optional<double> crossing_;
  std::optional<double> rate_;
  bool timeShown_ = false;
  std::optional<std::pair<CWGraphRange, std::optional<double>>> told_;  // view and limit of the last Moved
  QString heading_, fileStem_;
  QPointer<CWGraph> linked_;
  bool isSecond_ = false;
  bool linkActive_ = false;
};

}  // namespace bexlow::platform
