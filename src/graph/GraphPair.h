// The two graphs of a run, X above Y, as Graph and GraphBP show them.
#pragma once

#include <QWidget>

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "files/BinPages.h"
#include "files/DataFile.h"
#include "files/Series.h"
#include "graph/ViewNumbers.h"
#include "platform/graph/CWGraph.h"

class QLabel;
class QPushButton;

namespace bexlow::graph {

class GraphPair : public QWidget {
  Q_OBJECT

 public:
  explicit GraphPair(QWidget* parent);

  /// Full scale of the y axes in degrees: 180 for X, 90 for Y.
  static constexpr double FullScaleX = 180, FullScaleY = 90;

  /// The Linear style: x axes auto-scaled, y axes at full scale.
  void PrepareLinear();
  /// The Bin style: x axes at full scale, y axes auto-scaled.
  void PrepareBin();
  /// Hands what the file's header says to the read-outs and to the titles of pictures. Call it first.
  void TellFile(const std::string& path, const files::RunFacts& facts);
  /// Draws a run, which must stay where it is: x axes from 0 to the last index of the series.
  void Show(const files::Run& run);
  /// Draws a pair of bin pages, and tells which.
  void Show(const files::DegreeArrays& degrees, int firstPage);
  /// Tells the run in no line of its own, where boxes do; which pair of bin pages is drawn it tells all the
  /// same.
  void HideRunLine() { hasRunLine_ = false; }
  /// When a sample of the run was taken, or so many sample times after it; empty where that is not known.
  QString TimeWords(double sample, double periodsBehind = 0) const;
  /// Page Up and Page Down in a graph press these buttons while either is enabled; else they move the view.
  void PageWith(QPushButton* back, QPushButton* forward);
  /// The x views of both graphs move together, or each by itself.
  void MoveTogether(bool together) { CWGraph1->SetXLinkActive(together); }

  platform::CWGraph* CWGraph1;
  platform::CWGraph* CWGraph2;

 private:
  std::array<std::pair<platform::CWGraph*, double>, 2> Scales() const {
    return {std::pair{CWGraph1, FullScaleX}, {CWGraph2, FullScaleY}};
  }
  void ShowNumbers(platform::CWGraph& graph);
  std::optional<ViewNumbers> NumbersOf(const platform::CWGraph& graph) const;
  QString NumbersText() const;
  void SetHeadings(const std::string& pages);
  void TellRun(const std::string& words);
  std::string RunText() const;

  QLabel* lblRun_;  ///< which file, logger and launch the curves belong to, and how long they are
  bool hasRunLine_ = true;
  std::string fileName_, fileStem_;
  files::RunFacts facts_;
  const files::Run* run_ = nullptr;
};

}  // namespace bexlow::graph
