// A graph of one series with cursors: zoomed, panned and read out by mouse and keyboard, saved as a picture.
#pragma once

#include <QPointF>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <span>
#include <utility>
#include <vector>

class QCPAxis;
class QCPGraph;
class QCPItemLine;
class QCPItemRect;
class QCPItemStraightLine;
class QCPItemText;
class QCPItemTracer;
class QCPPainter;
class QCustomPlot;
class QLabel;

namespace bexlow::platform {

/// Bin: separate counts over degrees. Linear: a run of samples.
enum class PlotStyle { Bin, Linear };

/// When the samples of a run were taken, in seconds since its launch, or since sampling was started. A page
/// that is missing is a jump.
struct SampleTimes {
  double rate = 1;  // samples a second; 0 where they came unevenly, to hundredths of a second
  std::function<double(double sample)> secondsAt;
  std::function<double(double seconds)> sampleAt;
};

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

/// One axis of a graph: its whole, what is on show of it, the limits of zooming and panning. What it shows
/// lies within the whole and the data; the drawn axis has a little room beyond, so that points
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

class CWGraph : public QWidget {
  Q_OBJECT

 public:
  explicit CWGraph(QWidget* parent = nullptr);
  ~CWGraph() override;

  void ClearData() { TakeSeries({}, 0, 1); }

  /// Draws a series: values[i] stands at firstX + i * stepX. Empty empties the plot. Auto-scaled axes fit
  /// themselves, the others keep what is on show. A value that is no finite number leaves a gap.
  void PlotY(const auto& values, double firstX = 0, double stepX = 1) {
    places_.clear();
    TakeSeries({values.begin(), values.end()}, firstX, stepX);
  }
  /// The same where values[i] stands at x[i], in rising order. Such a graph must not be interactive.
  void PlotXY(std::vector<double> x, std::vector<double> values);

  void SetPlotStyle(PlotStyle style);

  /// Sets the whole range of an axis and shows it. Auto-scaled, it is the range of the data, and min to max
  /// while there is none. An empty range is widened.
  void SetXAxis(bool autoScale, double min, double max) { x_.SetWhole(autoScale, {min, max}); }
  void SetYAxis(bool autoScale, double min, double max) { y_.SetWhole(autoScale, {min, max}); }

  /// Titles with units; an empty one stands for the style's own ("Sample", "Angle (degrees)", "Count").
  void SetAxisTitles(const QString& x, const QString& y);

  /// Cursors at these x, with a mark at y 0 each; one at a place that is no finite number is not drawn.
  void SetCursors(std::vector<double> places);
  const std::vector<double>& Cursors() const { return cursors_; }
  /// Draws the cursor at x thicker, if there are several.
  void StressCursor(std::optional<double> x);

  /// Couples the x views of graphs, so that what the user does to one happens to all: the other joins those
  /// that this one is linked with, and stands below them.
  void LinkXAxis(CWGraph& other);
  /// Switches the coupling, for all; it is on after LinkXAxis.
  void SetXLinkActive(bool active);

  /// When the samples of the series were taken, where it is known: the read-out tells times, and the user
  /// may have them on the x axis.
  void SetSampleTimes(std::optional<SampleTimes> times);
  /// Times in place of samples on the x axis, also of linked graphs; only where times are known.
  void ShowTime(bool time);
  bool TimeShown() const { return timeShown_; }
  bool HasTimes() const { return times_.has_value(); }

  /// A level line that the user drags up and down; std::nullopt removes it.
  void SetLimit(std::optional<double> value);
  std::optional<double> Limit() const { return limit_; }
  /// Two neighbouring samples further apart than this are not joined by a line; std::nullopt joins all.
  void SetCrossing(std::optional<double> degrees);
  /// No line leads to these samples, in rising order: what came before each is missing. Takes effect with the
  /// next series.
  void SetBreaks(std::vector<std::size_t> samples) { breaks_ = std::move(samples); }
  /// What the read-out tells of a sample in place of its value; empty for most.
  std::function<QString(std::size_t sample)> NoteOf;
  /// First and last index of the samples whose points lie in the plot now; nothing where there are none.
  std::optional<std::pair<std::size_t, std::size_t>> DrawnSamples() const;
  /// The line of text over the plot, which is there while there is a limit, or if the graph is not
  /// interactive, a text.
  void SetNumbers(const QString& words);
  /// The series on show.
  std::span<const double> Values() const { return values_; }
  /// Called before a redraw when series, x view or limit have changed.
  std::function<void()> Moved;
  /// The user asks for a menu at a place on the screen.
  std::function<void(QPoint place)> MenuAsked;

  /// Text after the graph's name in the title of a picture, as file and launch.
  void SetHeading(const QString& heading) { heading_ = heading; }
  /// As large as on the screen, with a title.
  QSize PictureSize() const;
  /// Draws the graph in the light palette, whatever the screen uses, and without the read-out.
  void PaintPicture(QCPPainter& painter, QSize size) const;

  /// Whether the user can zoom, move, read out and ask for a menu; all this is so at first.
  void SetInteractive(bool interactive);
  /// The user has clicked the plot, or pressed Space where the graph is not interactive.
  std::function<void()> Clicked;
  /// The user has clicked a cursor, which stands at x.
  std::function<void(double x)> CursorClicked;
  /// Page Up or Page Down was pressed; false leaves it to the view.
  std::function<bool(bool forward)> Paged;

  void ShowAll();
  /// Moves the x view, as far as needed, so that x is in sight.
  void BringIntoView(double x) { x_.Include(x); }
  /// What is on show, for tests and for keeping a view.
  CWGraphRange XView() const { return x_.View(); }
  CWGraphRange YView() const { return y_.View(); }
  void SetXView(CWGraphRange range) { x_.Show(range); }

  /// The line under the plot: sample and degrees, or degree and count, at the pointer.
  QString ReadOutText() const;

  /// What the graph shows, in words: points, ranges, least and greatest value, cursors.
  QString Description() const;
  /// The lines of text around the plot that are on show: numbers, read-out.
  QList<QWidget*> WordsShown() const;

  /// Draws at once instead of at the next turn of the event loop.
  void DrawNow();

  QSize sizeHint() const override { return {640, 260}; }
  QSize minimumSizeHint() const override { return {160, 90}; }

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  // CWGraph.cpp
  void BuildPlot();
  void BuildWords();
  void TakeSeries(std::vector<double> values, double firstX, double stepX);
  void RenewCurve();
  void RenewTimes();  // CWGraphTicks.cpp
  void ApplyColours(const QPalette& palette) const;
  void FitMargins();
  void FitTitles(QSize plot) const;
  int TitleHeight() const;
  void FitToView();
  void DrawSoon();
  void FollowView();
  double X(std::size_t index) const {
    return index < places_.size() ? places_[index] : firstX_ + static_cast<double>(index) * stepX_;
  }
  const std::optional<SampleTimes>& Clock() const;

  // CWGraphCurve.cpp
  /// The plot library's graph, but a value that is no number is a gap, and where several samples share a
  /// column of pixels it is drawn from the least to the greatest, so that no spike is lost.
  static QCPGraph* MakeCurve(QCPAxis* x, QCPAxis* y);

  // CWGraphMarks.cpp: cursors, limit, read-out
  void BuildCursors();
  void BuildMarks();
  void ColourMarks(const QPalette& palette) const;
  void FitCursors() const;
  std::optional<double> CursorNear(double pixel) const;
  bool IsOnLimit(QPoint place) const;
  void MoveLimit(double value);
  void StepLimit(double degrees);
  bool Counts(std::ptrdiff_t index) const;
  std::size_t Nearest(double x) const;
  std::size_t Beyond(std::size_t index, std::ptrdiff_t points) const;
  QString PointText(std::size_t index) const;
  std::optional<QPointF> PointRead() const;
  void Read(std::optional<std::size_t> index);
  void ShowPoint(std::optional<std::size_t> index);
  void PointAt(QPoint place);
  void Step(std::ptrdiff_t points);
  void ReadInSight(std::size_t index);

  // CWGraphInput.cpp: mouse and keys
  struct Key;
  static const Key* Find(Qt::KeyboardModifiers modifiers, int key);
  QPoint PlotPlace(QPointF place) const;
  void ClickAt(QPoint place);
  void CancelDrag();
  void DragTo(QPoint place);
  void ZoomIntoRectangle();
  void ZoomByKey(CWGraphAxis& axis, double factor);
  void Page(bool forward);
  void AskMenu(QPoint place) const;

  // CWGraphWords.cpp
  static void InstallAccess();
  QString TitleX() const;
  QString TitleY() const;
  QString Unit() const;
  QString XWords() const;
  QString CursorWords() const;

  std::vector<double> values_, places_;  // the x of each; empty where they are steps
  double firstX_ = 0, stepX_ = 1;
  std::optional<CWGraphRange> valueRange_;
  PlotStyle style_ = PlotStyle::Linear;
  QString titleX_, titleY_;
  std::optional<double> crossing_;
  std::vector<std::size_t> breaks_;
  std::optional<SampleTimes> times_;
  bool timeShown_ = false;
  QString heading_;

  QCustomPlot* plot_;
  CWGraphAxis x_, y_;
  QCPGraph* curve_ = nullptr;
  QLabel *numbers_ = nullptr, *words_ = nullptr;

  std::vector<double> cursors_;  // in the order given
  std::vector<double> placed_;   // in order of x, those that can be drawn
  std::optional<double> stressed_;
  QCPGraph *cursorLines_ = nullptr, *cursorMarks_ = nullptr;
  QCPItemLine* stressedLine_ = nullptr;
  std::optional<double> limit_;
  QCPItemStraightLine* limitLine_ = nullptr;
  QCPItemText* limitLabel_ = nullptr;
  std::optional<std::size_t> read_;
  QCPItemStraightLine* pointLine_ = nullptr;
  QCPItemTracer* pointMark_ = nullptr;
  QCPItemText* notice_ = nullptr;
  QCPItemRect* rectangle_ = nullptr;

  enum class Drag { None, Pan, Rectangle, Limit };
  bool interactive_ = true;
  Drag drag_ = Drag::None;
  QPoint from_, last_;

  std::optional<std::pair<CWGraphRange, std::optional<double>>> told_;  // view and limit of the last Moved
  std::vector<QPointer<CWGraph>> linked_{this};                         // from top to bottom
  bool linkActive_ = false;
};

/// A number in plain digits with a point and no grouping, as short as it can be.
QString CWGraphNumber(double value);

}  // namespace bexlow::platform
