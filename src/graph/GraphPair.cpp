#include "graph/GraphPair.h"

#include <QLocale>
#include <QPushButton>

#include <algorithm>
#include <filesystem>

#include "files/Recording.h"
#include "graph/ViewNumbers.h"
#include "platform/controls/Controls.h"
#include "platform/graph/CWGraphTicks.h"
#include "values/NumberText.h"

namespace bexlow::graph {

using platform::CWGraph;

GraphPair::GraphPair(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  lblRun_ = platform::MakeLabel("lblRun", "", this);
  lblRun_->setWordWrap(true);
  lblRun_->hide();
  column->addWidget(lblRun_);
  CWGraph1 = AddGraph();
  CWGraph2 = AddGraph();
  PrepareLinear();
}

CWGraph* GraphPair::AddGraph() {
  const auto axis = graphs_.size();
  const auto number = QByteArray::number(axis + 1);
  auto* frame = platform::MakeFrame("fraGraph" + number, "", this);
  auto* graph = new CWGraph(frame);
  graph->setObjectName("CWGraph" + number);
  auto* column = new QVBoxLayout(frame);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(graph);
  static_cast<QVBoxLayout*>(layout())->addWidget(frame, 1);
  graph->Moved = [this, axis] { ShowNumbers(axis); };
  graph->NumbersToCopy = [this] { return NumbersText(); };
  if (axis > 0) CWGraph1->LinkXAxis(*graph);
  graphs_.push_back(graph);
  return graph;
}

void GraphPair::PrepareLinear(std::span<const files::Axis> axes) {
  for (; graphs_.size() > axes.size(); graphs_.pop_back()) delete graphs_.back()->parentWidget();
  while (graphs_.size() < axes.size()) AddGraph();
  MoveTogether(true);
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const auto& [name, unit, least, greatest, wraps] = axes[i];
    const auto title = QString::fromUtf8(name);
    auto* graph = graphs_[i];
    const bool isOther = graph->accessibleName() != title;
    static_cast<QGroupBox*>(graph->parentWidget())->setTitle(title);
    graph->setAccessibleName(title);
    graph->SetAxisTitles("", unit.empty() ? title + " (bits)" : "");
    graph->SetCrossing(wraps ? std::optional(greatest) : std::nullopt);
    graph->SetPlotStyle(platform::PlotStyle::Linear);
    graph->SetXAxis(true, 0, 10);
    graph->SetYAxis(false, least, greatest);
    if (isOther || !graph->Limit()) graph->SetLimit((least + greatest) / 2);
  }
}

void GraphPair::PrepareBin() {
  MoveTogether(false);
  CWGraph1->SetCrossing(std::nullopt);
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    auto* graph = graphs_[i];
    graph->SetPlotStyle(platform::PlotStyle::Bin);
    graph->SetXAxis(false, files::AngleAxes[i].least, files::AngleAxes[i].greatest);
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
  times_.reset();
  SetHeadings("");
  TellRun("");
  for (auto* graph : graphs_) graph->SetSampleTimes(std::nullopt);
}

void GraphPair::SetHeadings(const std::string& pages) {
  const auto launched = facts_.launch.empty() ? "" : ", launched " + facts_.launch;
  const auto heading = QString::fromStdString(fileName_ + launched + (pages.empty() ? "" : ", " + pages));
  const auto stem = QString::fromStdString(fileStem_ + (pages.empty() ? "" : " " + pages));
  for (auto* graph : graphs_) graph->SetHeading(heading, stem);
}

void GraphPair::TellRun(const std::string& words) {
  std::string line = fileName_ + ": ";
  if (!facts_.serialNumber.empty()) line += "logger " + facts_.serialNumber + ", ";
  if (!facts_.launch.empty()) line += "launched " + facts_.launch + ", ";
  lblRun_->setText(words.empty() ? QString() : QString::fromStdString(line + words));
  lblRun_->setVisible(!words.empty() && (hasRunLine_ || run_ == nullptr));
}

std::optional<platform::SampleTimes> GraphPair::TimesOf(const files::Run& run) const {
  if (!run.hundredths.empty()) {
    return platform::SampleTimes{0, [&run](double sample) { return files::SecondsAt(run, sample); },
                                 [&run](double seconds) { return files::SampleAtSecond(run, seconds); }};
  }
  if (!facts_.frequency || !files::PagesRise(run)) return std::nullopt;
  const double rate = *facts_.frequency;
  return platform::SampleTimes{rate,
                               [&run, rate](double sample) { return files::PeriodsAt(run, sample) / rate; },
                               [&run, rate](double seconds) { return files::SampleAt(run, seconds * rate); }};
}

void GraphPair::Show(const files::Run& run) {
  run_ = &run;
  times_ = TimesOf(run);
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    if (run.tenths[i].empty() && run.Size() > 0) continue;  // the channel that was not stored
    graphs_[i]->SetSampleTimes(times_);
    graphs_[i]->SetXAxis(false, 0, std::max(0.0, static_cast<double>(run.tenths[i].size()) - 1));
    Draw(i);
  }
  const auto remarks = files::PageRemarks(run) + run.remarks;
  TellRun(RunText() + (remarks.empty() ? "" : "; " + remarks));
}

void GraphPair::Draw(std::size_t axis) {
  auto* graph = graphs_[axis];
  if (run_->hundredths.empty()) return graph->PlotY(axis == 0 ? run_->XLinear : run_->YLinear);
  std::vector<double> values(run_->tenths[axis].begin(), run_->tenths[axis].end());
  for (auto& value : values) value /= 10;
  const auto [least, greatest] = std::ranges::minmax(values);
  const auto& scale = run_->axes[axis];
  graph->SetYAxis(false, std::min(scale.least, least), std::max(scale.greatest, greatest));
  graph->PlotY(std::span<const double>(values));
}

// "451 samples, 5 pushes, 72 zeros at the end, 1 min 18 s".
std::string GraphPair::RunText() const {
  if (run_->Size() == 0) return "no sample";
  const auto pushes = std::ssize(run_->pushes);
  const auto unwritten = static_cast<std::int64_t>(run_->UnwrittenEnd());
  const auto written = static_cast<std::int64_t>(run_->Size()) - unwritten;
  auto text = values::CountText(written - pushes) + (written - pushes == 1 ? " sample" : " samples");
  if (const auto leftOut = LeftOutText(pushes, unwritten); !leftOut.empty()) text += ", " + leftOut;
  // A sample of a run lasts until the next one; when a recording's first one began is not known.
  const auto last = static_cast<double>(written) - 1;
  const auto duration = run_->hundredths.empty()
                            ? TimeWords(last, 1)
                            : platform::DurationWords(times_->secondsAt(last) - times_->secondsAt(0));
  return duration.isEmpty() ? text : text + ", " + duration.toStdString();
}

QString GraphPair::TimeWords(double sample, double periodsBehind) const {
  if (!times_ || sample < 0) return {};
  return platform::DurationWords(times_->secondsAt(sample) + periodsBehind / times_->rate);
}

void GraphPair::Show(const files::DegreeArrays& degrees, int firstPage) {
  run_ = nullptr;
  times_.reset();
  CWGraph1->PlotY(std::span<const double>(degrees.XDegrees), files::AngleAxes[0].least, 1);
  CWGraph2->PlotY(std::span<const double>(degrees.YDegrees), files::AngleAxes[1].least, 1);
  const auto pages = "pages " + std::to_string(firstPage) + " and " + std::to_string(firstPage + 1);
  SetHeadings(pages);
  TellRun(pages);
}

void GraphPair::PageWith(QPushButton* back, QPushButton* forward) {
  for (auto* graph : graphs_) {
    graph->Paged = [back, forward](bool isForward) {
      auto* button = isForward ? forward : back;
      button->click();
      return back->isEnabled() || forward->isEnabled();
    };
  }
}

std::optional<ViewNumbers> GraphPair::NumbersOf(std::size_t axis) const {
  const auto& graph = *graphs_[axis];
  const auto drawn = graph.DrawnSamples();
  if (run_ == nullptr || !drawn || !graph.Limit()) return std::nullopt;
  return NumbersInView(*run_, axis, drawn->first, drawn->second, *graph.Limit());
}

void GraphPair::ShowNumbers(std::size_t axis) {
  const auto numbers = NumbersOf(axis);
  const auto limit = graphs_[axis]->Limit();
  graphs_[axis]->SetNumbers(numbers ? QString::fromStdString(NumbersLine(*numbers, *limit)) : QString());
}

QString GraphPair::NumbersText() const {
  auto text = lblRun_->text().toStdString() + "\n" + NumbersHead();
  const auto point = QLocale().decimalPoint().toLatin1();
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    const auto name = graphs_[i]->accessibleName().toStdString();
    if (const auto numbers = NumbersOf(i))
      text += NumbersRow(name, *numbers, *graphs_[i]->Limit(), point.at(0));
  }
  return QString::fromStdString(text);
}

}  // namespace bexlow::graph
