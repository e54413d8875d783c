#include "graph/GraphPair.h"

#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>

#include "graph/ViewNumbers.h"
#include "platform/controls/Controls.h"
#include "platform/graph/CWGraphTicks.h"
#include "values/NumberText.h"

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
  lblRun_ = platform::MakeLabel("lblRun", "", this);
  lblRun_->setWordWrap(true);
  lblRun_->hide();
  column->addWidget(lblRun_);
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
  CWGraph1->SetCrossing(180);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Linear);
    graph->SetXAxis(true, 0, 10);
    graph->SetYAxis(false, -fullScale, fullScale);
    if (!graph->Limit()) graph->SetLimit(0);
  }
}

void GraphPair::PrepareBin() {
  MoveTogether(false);
  CWGraph1->SetCrossing(std::nullopt);
  for (const auto& [graph, fullScale] : Scales()) {
    graph->SetPlotStyle(platform::PlotStyle::Bin);
    graph->SetXAxis(false, -fullScale, fullScale);
    graph->SetYAxis(true, 0, 1);
    graph->SetLimit(std::nullopt);
  }
}

void GraphPair::TellFile(const std::string& path, const files::RunFacts& facts) {
  const std::filesystem::path file(path);
  fileName_ = file.filename().string();
  fileStem_ = file.stem().string();
  facts_ = facts;
  run_ = nullptr;
  SetHeadings("");
  TellRun("");
  for (auto* graph : {CWGraph1, CWGraph2}) graph->SetSampleTimes(std::nullopt);
}

void GraphPair::SetHeadings(const std::string& pages) {
  const auto launched = facts_.launch.empty() ? "" : ", launched " + facts_.launch;
  const auto heading = QString::fromStdString(fileName_ + launched + (pages.empty() ? "" : ", " + pages));
  const auto stem = QString::fromStdString(fileStem_ + (pages.empty() ? "" : " " + pages));
  for (auto* graph : {CWGraph1, CWGraph2}) graph->SetHeading(heading, stem);
}

void GraphPair::TellRun(const std::string& words) {
  std::string line = fileName_ + ": ";
  if (!facts_.serialNumber.empty()) line += "logger " + facts_.serialNumber + ", ";
  if (!facts_.launch.empty()) line += "launched " + facts_.launch + ", ";
  lblRun_->setText(words.empty() ? QString() : QString::fromStdString(line + words));
  lblRun_->setVisible(!words.empty() && (hasRunLine_ || run_ == nullptr));
}

void GraphPair::Show(const files::Run& run) {
  run_ = &run;
  std::optional<platform::SampleTimes> times;
  if (facts_.frequency && files::PagesRise(run)) {
    const double rate = *facts_.frequency;
    times = {rate, [&run, rate](double sample) { return files::PeriodsAt(run, sample) / rate; },
             [&run, rate](double seconds) { return files::SampleAt(run, seconds * rate); }};
  }
  for (const auto& [graph, series] : {std::pair{CWGraph1, &run.XLinear}, {CWGraph2, &run.YLinear}}) {
    if (series->empty() && run.Size() > 0) continue;  // the channel that was not stored
    graph->SetSampleTimes(times);
    graph->SetXAxis(false, 0, std::max(0.0, static_cast<double>(series->size()) - 1));
    graph->PlotY(*series);
  }
  const auto remarks = files::PageRemarks(run);
  TellRun(RunText() + (remarks.empty() ? "" : "; " + remarks));
}

// "451 samples, 5 pushes, 72 zeros at the end, 1 min 18 s".
std::string GraphPair::RunText() const {
  if (run_->Size() == 0) return "no sample";
  const auto pushes = std::ssize(run_->pushes);
  const auto unwritten = static_cast<std::int64_t>(run_->UnwrittenEnd());
  const auto written = static_cast<std::int64_t>(run_->Size()) - unwritten;
  auto text = values::CountText(written - pushes) + (written - pushes == 1 ? " sample" : " samples");
  if (const auto leftOut = LeftOutText(pushes, unwritten); !leftOut.empty()) text += ", " + leftOut;
  // A sample lasts until the next one.
  const auto duration = TimeWords(static_cast<double>(written) - 1, 1);
  return duration.isEmpty() ? text : text + ", " + duration.toStdString();
}

QString GraphPair::TimeWords(double sample, double periodsBehind) const {
  if (run_ == nullptr || !facts_.frequency || !files::PagesRise(*run_) || sample < 0) return {};
  return platform::DurationWords((files::PeriodsAt(*run_, sample) + periodsBehind) / *facts_.frequency);
}

void GraphPair::Show(const files::DegreeArrays& degrees, int firstPage) {
  run_ = nullptr;
  CWGraph1->PlotY(std::span<const double>(degrees.XDegrees), -FullScaleX, 1);
  CWGraph2->PlotY(std::span<const double>(degrees.YDegrees), -FullScaleY, 1);
  const auto pages = "pages " + std::to_string(firstPage) + " and " + std::to_string(firstPage + 1);
  SetHeadings(pages);
  TellRun(pages);
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

std::optional<ViewNumbers> GraphPair::NumbersOf(const CWGraph& graph) const {
  const auto drawn = graph.DrawnSamples();
  if (run_ == nullptr || !drawn || !graph.Limit()) return std::nullopt;
  const auto& tenths = &graph == CWGraph1 ? run_->XTenths : run_->YTenths;
  return NumbersInView(*run_, tenths, drawn->first, drawn->second, *graph.Limit());
}

void GraphPair::ShowNumbers(CWGraph& graph) {
  const auto numbers = NumbersOf(graph);
  graph.SetNumbers(numbers ? QString::fromStdString(NumbersLine(*numbers, *graph.Limit())) : QString());
}

QString GraphPair::NumbersText() const {
  auto text = lblRun_->text().toStdString() + "\n" + NumbersHead();
  const auto point = QLocale().decimalPoint().toLatin1();
  for (const auto* graph : {CWGraph1, CWGraph2}) {
    if (const auto numbers = NumbersOf(*graph))
      text += NumbersRow(graph->accessibleName().toStdString(), *numbers, *graph->Limit(), point.at(0));
  }
  return QString::fromStdString(text);
}

}  // namespace bexlow::graph
