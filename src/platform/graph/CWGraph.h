// A graph of one series with cursors: zoomed, panned and read out by mouse and keyboard, saved as a picture.
#pragma once

#include <QImage>
#include <QPointer>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "platform/graph/CWGraphAccess.h"
#include "platform/graph/CWGraphSeries.h"

class QCustomPlot;
class QLabel;
class QMenu;
class QPrinter;

namespace bexlow::platform {

class CWGraphCursors;
class CWGraphCurve;
class CWGraphOverlay;
class CWGraphReadOut;
class CWGraphView;

/// Bin: separate counts over degrees. Linear: a run of samples.
using PlotStyle = CWGraphSeries::Style;

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

  /// What the whole of an axis is, and shows it. Auto-scaled it is the range of the data, and minimum to
  /// maximum while there is none. An axis without length gets some.
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

  void ShowAll();
  /// What is on show, for tests and for keeping a view.
  CWGraphRange XView() const;
  CWGraphRange YView() const;
  void SetXView(CWGraphRange range);

  /// The line under the plot: sample and degrees, or degree and count, at the pointer.
  QString ReadOutText() const;

  /// What the graph shows, in words: points, ranges, least and greatest value, cursors.
  QString Description() const override;
  QWidget* WordsShown() const override;

  /// The plot as seen, in device pixels.
  QImage Picture() const;
  /// Saves the plot by the file's extension: png, pdf or svg.
  /// @return false on failure, with the reason in plain words
  bool SavePicture(const QString& path, QString* reason = nullptr) const;
  void CopyPicture();
  /// Draws the plot on one page, as large as it fits, in the colours of paper.
  /// @return false when the printer cannot be drawn on
  bool Print(QPrinter& printer) const;

  /// Asks where to save a picture; gives an empty text when the user thinks better of it. Preset to a file
  /// dialog.
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
  void BuildInteraction();
  void BuildMenu();
  void AddEntry(const QString& caption, const QKeySequence& keys, void (CWGraph::*action)());
  void PresetQuestions();
  void TakeSeries(CWGraphSeries series);
  void ApplyColours(const QPalette& palette) const;
  void ApplyTitles();
  void DrawSoon();
  void PassXView();
  QString CursorWords() const;
  void SaveByUser();
  void PrintByUser();

  CWGraphSeries series_;
  PlotStyle style_ = PlotStyle::Linear;
  QString titleX_;
  QString titleY_;
  QCustomPlot* plot_ = nullptr;
  CWGraphCurve* curve_ = nullptr;
  CWGraphCursors* cursors_ = nullptr;
  QLabel* words_ = nullptr;
  QMenu* menu_ = nullptr;
  CWGraphOverlay* overlay_ = nullptr;
  std::unique_ptr<CWGraphView> view_;
  std::unique_ptr<CWGraphReadOut> readOut_;
  QPointer<CWGraph> linked_;
  bool linkActive_ = false;
};

}  // namespace bexlow::platform
