#include "graph/GraphPair.h"

#include <QGroupBox>
#include <QVBoxLayout>

#include "platform/controls/Controls.h"

namespace bexlow::graph {

using platform::CWGraph;

namespace {

CWGraph* MakeGraph(const char* name, const QString& caption, QVBoxLayout* column, const char* frameName) {
  auto* frame = platform::MakeFrame(frameName, caption, column->parentWidget());
  auto* graph = new CWGraph(frame);
  graph->setObjectName(name);
  graph->setAccessibleName(caption);
  auto* layout = new QVBoxLayout(frame);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(graph);
  column->addWidget(frame, 1);
  return graph;
}

}  // namespace

GraphPair::GraphPair(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  CWGraph1 = MakeGraph("CWGraph1", "X", column, "fraGraph1");
  CWGraph2 = MakeGraph("CWGraph2", "Y", column, "fraGraph2");
  CWGraph1->LinkXAxis(*CWGraph2);
}

void GraphPair::PrepareLinear() {
  MoveTogether(true);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Linear);
    graph->SetXAxis(true, 0, 10);
    graph->SetYAxis(false, -fullScale, fullScale);
  }
}

void GraphPair::PrepareBin() {
  MoveTogether(false);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Bin);
    graph->SetXAxis(false, -fullScale, fullScale);
    graph->SetYAxis(true, 0, 1);
  }
}

void GraphPair::Plot(const DegreeArrays& degrees) {
  CWGraph1->PlotY(std::span<const double>(degrees.XDegrees), -FullScaleX, 1);
  CWGraph2->PlotY(std::span<const double>(degrees.YDegrees), -FullScaleY, 1);
}

void GraphPair::Plot(CWGraph& graph, const Samples& samples) {
  const double last = samples.empty() ? 0 : static_cast<double>(samples.size() - 1);
  graph.SetXAxis(false, 0, last);
  graph.PlotY(samples);
}

}  // namespace bexlow::graph
