// The two graphs of a run, X above Y, as Graph and GraphBP show them.
#pragma once

#include <QWidget>

#include <array>
#include <string>
#include <utility>

#include "files/BinPages.h"
#include "files/RunFacts.h"
#include "files/Series.h"
#include "platform/graph/CWGraph.h"

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
  /// Draws a pair of bin pages.
  void Plot(const files::DegreeArrays& degrees);
  /// Draws a run: x axis from 0 to the last index of the series.
  void Plot(platform::CWGraph& graph, const files::Samples& samples);
  /// Hands what the file's header says to the read-outs and to the titles of pictures.
  void TellFile(const std::string& path, const files::RunFacts& facts);
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
  QString NumbersText() const;

  QString heading_;
};

}  // namespace bexlow::graph
