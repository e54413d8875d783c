#include "graph/GraphPair.h"

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <filesystem>

#include "graph/ViewNumbers.h"
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

// Of a run without missing pages.
std::optional<platform::SampleTimes> TimesAt(std::optional<double> rate) {
  if (!rate) return std::nullopt;
  return platform::SampleTimes{*rate, [rate](double sample) { return sample / *rate; },
                               [rate](double seconds) { return seconds * *rate; }};
}

}  // namespace

GraphPair::GraphPair(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  CWGraph1 = MakeGraph("CWGraph1", "X", column, "fraGraph1");
  CWGraph2 = MakeGraph("CWGraph2", "Y", column, "fraGraph2");
  CWGraph1->LinkXAxis(*CWGraph2);
  for (auto* graph : {CWGraph1, CWGraph2}) {
    graph->Moved = [this, graph] { ShowNumbers(*graph); };
    graph->NumbersToCopy = [this] { return NumbersText(); };
  }
}

void GraphPair::PrepareLinear() {
  MoveTogether(true);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Linear);
    graph->SetXAxis(true, 0, 10);
    graph->SetYAxis(false, -fullScale, fullScale);
    if (!graph->Limit()) graph->SetLimit(0);
  }
}

void GraphPair::PrepareBin() {
  MoveTogether(false);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Bin);
    graph->SetXAxis(false, -fullScale, fullScale);
    graph->SetYAxis(true, 0, 1);
    graph->SetLimit(std::nullopt);
  }
}

void GraphPair::Plot(const files::DegreeArrays& degrees) {
  CWGraph1->PlotY(std::span<const double>(degrees.XDegrees), -FullScaleX, 1);
  CWGraph2->PlotY(std::span<const double>(degrees.YDegrees), -FullScaleY, 1);
}

void GraphPair::TellFile(const std::string& path, const files::RunFacts& facts) {
  const std::filesystem::path file(path);
  heading_ = QString::fromStdString(file.filename().string());
  if (!facts.launch.empty()) heading_ += tr(", launched %1").arg(QString::fromStdString(facts.launch));
  for (auto* graph : {CWGraph1, CWGraph2}) {
    graph->SetHeading(heading_, QString::fromStdString(file.stem().string()));
    graph->SetSampleTimes(TimesAt(facts.frequency));
  }
}

void GraphPair::PageWith(QPushButton* back, QPushButton* forward) {
  for (auto* graph : {CWGraph1, CWGraph2}) {
    graph->Paged = [back, forward](bool isForward) {
      auto* button = isForward ? forward : back;
      button->click();
      return back->isEnabled() || forward->isEnabled();
    };
  }
}

void GraphPair::ShowNumbers(CWGraph& graph) {
  const auto limit = graph.Limit();
  const auto view = graph.XView();
  const auto numbers = limit ? NumbersInView(graph.Values(), view.lower, view.upper, *limit) : std::nullopt;
  graph.SetNumbers(numbers ? QString::fromStdString(NumbersLine(*numbers, *limit)) : QString());
}

QString GraphPair::NumbersText() const {
  auto text = heading_.toStdString() + "\n" + NumbersHead();
  for (const auto* graph : {CWGraph1, CWGraph2}) {
    const auto view = graph->XView();
    const double limit = graph->Limit().value_or(0);
    if (const auto numbers = NumbersInView(graph->Values(), view.lower, view.upper, limit))
      text += NumbersRow(graph->accessibleName().toStdString(), *numbers, limit);
  }
  return QString::fromStdString(text);
}

void GraphPair::Plot(CWGraph& graph, const files::Samples& samples) {
  const double last = samples.empty() ? 0 : static_cast<double>(samples.size() - 1);
  graph.SetXAxis(false, 0, last);
  graph.PlotY(samples);
}

}  // namespace bexlow::graph
