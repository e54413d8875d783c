#include "graph/GraphPair.h"

#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QLocale>
#include <QMenu>
#include <QPushButton>

#include <cmath>
#include <numeric>

#include "graph/Pictures.h"
#include "platform/controls/Controls.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"
#include "platform/machine/System.h"
#include "values/NumberText.h"

namespace bexlow::graph {

using namespace platform;

namespace {

char DecimalPoint() { return QLocale().decimalPoint() == "," ? ',' : '.'; }

void CopyPicture(const Graphs& graphs) { QGuiApplication::clipboard()->setImage(PictureOf(graphs)); }

void Copy(const std::string& text) { QGuiApplication::clipboard()->setText(QString::fromStdString(text)); }

std::unique_ptr<CWGraph> MakeHistogram(const View& view, std::size_t axis) {
  const auto& [name, unit, least, greatest, wraps] = view.run.axes[axis];
  const auto [step, first, shares] = HistogramInView(view, axis);
  const double last = first + step * (static_cast<double>(shares.size()) - 1);
  const bool isAngle = !unit.empty();
  auto graph = std::make_unique<CWGraph>();
  graph->setAccessibleName(QString::fromUtf8(name) + QString(", steps of %1").arg(step) +
                           (isAngle ? QString::fromUtf8(unit) : " bits"));
  graph->SetAxisTitles(isAngle ? "" : "Bits", "Samples (%)");
  graph->SetPlotStyle(platform::PlotStyle::Bin);
  graph->SetXAxis(!isAngle, std::min(least, first), std::max(greatest, last));
  graph->SetYAxis(true, 0, 1);
  graph->PlotY(shares, first, step);
  graph->DrawNow();
  return graph;
}

}  // namespace

GraphPair::GraphPair(QWidget* parent) : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  lblRun_ = platform::MakeLabel("lblRun",
                                "Choose Open from the File menu, or drop a data file on the window.", this);
  lblRun_->setWordWrap(true);
  lblRun_->setMinimumWidth(1);  // the name of a file may be one long word
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
  graph->NoteOf = [this](std::size_t sample) { return NoteOf(sample); };
  if (axis > 0) CWGraph1->LinkXAxis(*graph);
  graphs_.push_back(graph);
  BuildMenu(axis);
  return graph;
}

void GraphPair::PrepareLinear(std::span<const files::Axis> axes) {
  if (graphs_.size() > axes.size() && focusWidget()) CWGraph1->setFocus();  // else the keys go to a text box
  for (; graphs_.size() > axes.size(); graphs_.pop_back()) delete graphs_.back()->parentWidget();
  while (graphs_.size() < axes.size()) AddGraph();
  MoveTogether(true);
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const auto& [name, unit, least, greatest, wraps] = axes[i];
    const auto title = QString::fromUtf8(name);
    auto* graph = graphs_[i];
    const bool isOther = graph->accessibleName() != title;
    graph->setMinimumHeight(axes.size() > 2 ? 150 : 0);  // a page of three scrolls in a small window
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
  file_ = path;
  facts_ = facts;
  run_ = nullptr;
  times_.reset();
  SetHeadings("");
  TellRun("");
  for (auto* graph : graphs_) graph->SetSampleTimes(std::nullopt);
}

void GraphPair::SetHeadings(const std::string& pages) {
  const auto launched = facts_.launch.empty() ? "" : ", launched " + facts_.launch;
  const auto heading =
      QString::fromStdString(file_.filename().string() + launched + (pages.empty() ? "" : ", " + pages));
  stem_ = file_.stem().string() + (pages.empty() ? "" : " " + pages);
  for (auto* graph : graphs_) graph->SetHeading(heading);
}

void GraphPair::HideRunLine() {
  hasRunLine_ = false;
  lblRun_->hide();
}

void GraphPair::TellRun(const std::string& words) {
  words_ = words;
  std::string line = file_.filename().string() + ": ";
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
  writtenEnd_ = run.Size() - run.UnwrittenEnd();
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    if (run.tenths[i].empty() && run.Size() > 0) continue;  // the channel that was not stored
    graphs_[i]->SetSampleTimes(times_);
    graphs_[i]->SetBreaks(files::BreaksOf(run));
    graphs_[i]->SetXAxis(false, 0, std::max(0.0, static_cast<double>(run.tenths[i].size()) - 1));
    Draw(i);
  }
  const auto isEmpty = [](const auto* graph) { return graph->Values().empty(); };
  const auto focused = std::ranges::find(graphs_, focusWidget()),
             shown = std::ranges::find_if_not(graphs_, isEmpty);
  if (focused != graphs_.end() && isEmpty(*focused) && shown != graphs_.end()) (*shown)->setFocus();
  const auto remarks = files::PageRemarks(run);
  TellRun(RunText() + (remarks.empty() ? "" : "; " + remarks) + run.remarks);
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
  const auto written = static_cast<std::int64_t>(writtenEnd_);
  const auto unwritten = static_cast<std::int64_t>(run_->Size()) - written;
  auto text = values::CountText(written - pushes) + (written - pushes == 1 ? " sample" : " samples");
  if (const auto leftOut = LeftOutText(pushes, unwritten); !leftOut.empty()) text += ", " + leftOut;
  if (!times_ || written == 0) return text;
  // A sample of a run lasts until the next one; a recording is told from its first sample to its last.
  const double begin = times_->rate > 0 ? -1 / times_->rate : times_->secondsAt(0);
  const double end = times_->secondsAt(static_cast<double>(written) - 1);
  return text + ", " + values::DurationWords(end - begin);
}

QString GraphPair::TimeWords(double sample) const {
  return times_ ? QString::fromStdString(values::DurationWords(times_->secondsAt(sample))) : QString();
}

void GraphPair::Show(const files::DegreeArrays& degrees, int firstPage, int secondPage) {
  run_ = nullptr;
  times_.reset();
  CWGraph1->PlotY(std::span<const double>(degrees.XDegrees), files::AngleAxes[0].least, 1);
  CWGraph2->PlotY(std::span<const double>(degrees.YDegrees), files::AngleAxes[1].least, 1);
  const auto next = std::to_string(firstPage + 1);
  const auto pages = "pages " + std::to_string(firstPage) + " and " + std::to_string(secondPage);
  SetHeadings(pages);
  TellRun(secondPage == firstPage + 1
              ? pages
              : pages + "; page " + next + ", which belongs to the first, does not follow it");
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

QString GraphPair::NoteOf(std::size_t sample) const {
  if (run_ == nullptr) return {};
  if (run_->IsPush(sample)) return "push";
  return sample < writtenEnd_ ? QString() : "not written";
}

void GraphPair::BuildMenu(std::size_t axis) {
  auto* graph = graphs_[axis];
  auto* menu = new QMenu(graph);
  graph->MenuAsked = [menu](QPoint place) { menu->popup(place); };
  const auto add = [=, this](const char* caption, const auto& action,
                             const std::function<bool()>& applies = {}, const QKeySequence& keys = {}) {
    auto* entry = menu->addAction(caption);
    entry->setShortcut(keys);
    entry->setShortcutContext(Qt::WidgetShortcut);  // of two graphs, the one with the focus
    graph->addAction(entry);
    connect(entry, &QAction::triggered, this, [=] {
      if (!applies || applies())  // a screen reader presses what is not on show, too
        EventGate::Get().Click(graph, action);
    });
    if (applies) connect(menu, &QMenu::aboutToShow, entry, [=] { entry->setVisible(applies()); });
    return entry;
  };
  const auto hasView = [this] { return InView().has_value(); };
  add("&Whole Run", [graph] { graph->ShowAll(); });
  auto* time = add(
      "&Time on the Axis", [graph] { graph->ShowTime(!graph->TimeShown()); },
      [graph] { return graph->HasTimes(); });
  time->setCheckable(true);
  connect(menu, &QMenu::aboutToShow, time, [=] { time->setChecked(graph->TimeShown()); });
  menu->addSeparator();
  add(
      "Copy &Numbers", [this] { Copy(NumbersText()); }, [this, axis] { return NumbersOf(axis).has_value(); });
  add(
      "Copy P&ushes", [this] { Copy(PushTable(*InView(), DecimalPoint())); },
      [this] { return InView() && !InView()->Pushes().empty(); });
  add(
      "Save What &Is in View...", [this] { SaveView(); }, hasView);
  add(
      "&Report...", [this] { Report(); },
      [=, this] { return hasView() || (run_ == nullptr && !CWGraph1->Values().empty()); });
  const Graphs one{graph};
  menu->addSeparator();
  add(
      "&Copy Picture", [one] { CopyPicture(one); }, {}, QKeySequence::Copy);
  add(
      "&Save Picture As...", [=, this] { SavePicture(one, NameOf(one)); }, {}, QKeySequence::Save);
  add(
      "&Print...", [=, this] { Print(NameOf(one), SheetOf(one), false); }, {}, QKeySequence::Print);
  menu->addSeparator();
  const auto all = [this] { return Graphs(graphs_.begin(), graphs_.end()); };
  const auto entries = {add("C&opy Both", [=] { CopyPicture(all()); }),
                        add("Sa&ve Both As...", [=, this] { SavePicture(all(), NameOf(all())); }),
                        add("Print &Both...", [=, this] { Print(NameOf(all()), SheetOf(all()), false); })};
  connect(menu, &QMenu::aboutToShow, menu, [this, entries = std::vector(entries)] {
    const bool areTwo = graphs_.size() == 2;
    for (auto* entry : entries)
      entry->setText(entry->text().replace(areTwo ? "All" : "Both", areTwo ? "Both" : "All"));
  });
}

// "run1 X", "run1 X and Y".
std::string GraphPair::NameOf(const Graphs& graphs) const {
  QStringList names;
  for (const auto* graph : graphs) names << graph->accessibleName();
  return QString::fromStdString(stem_ + " ").append(names.join(" and ")).trimmed().toStdString();
}

// Graphs of a run of several axes have the same view.
std::optional<View> GraphPair::InView() const {
  for (const auto* graph : graphs_) {
    const auto drawn = graph->DrawnSamples();
    if (run_ == nullptr || !drawn) continue;
    View view{*run_, drawn->first, drawn->second};
    if (!times_) return view;
    view.rate = times_->rate;
    view.secondsAt = times_->secondsAt;
    view.lengthText = [](double seconds) { return values::DurationClock(seconds, 1); };
    auto launch = QDateTime::fromString(QString::fromStdString(facts_.launch), "yyyy-MM-dd HH:mm:ss");
    launch.setTimeSpec(Qt::UTC);  // the logger's clock knows no summer time
    if (launch.isValid())
      view.clockText = [launch](double seconds) {
        return launch.addSecs(std::llrint(seconds)).toString("yyyy-MM-dd HH:mm:ss").toStdString();
      };
    return view;
  }
  return std::nullopt;
}

std::string GraphPair::NumbersText() const {
  auto text = lblRun_->text().toStdString() + "\n" + NumbersHead();
  for (std::size_t i = 0; i < graphs_.size(); ++i) {
    const auto name = graphs_[i]->accessibleName().toStdString();
    if (const auto numbers = NumbersOf(i))
      text += NumbersRow(name, *numbers, *graphs_[i]->Limit(), DecimalPoint());
  }
  return text;
}

void GraphPair::SaveView() {
  const auto view = *InView();
  const auto path =
      AskWhereToSave("CSV Files (*.csv)|*.csv", "csv",
                     stem_ + " " + std::to_string(view.first) + " to " + std::to_string(view.LastWritten()));
  if (path.empty()) return;
  std::error_code unknown;
  const auto reason = std::filesystem::equivalent(path, file_, unknown)
                          ? "it is the data file that is on show"
                      : !path.ends_with(".csv") ? "the name of a table ends in .csv"
                                                : platform::Replace(path, SamplesCsv(view));
  if (!reason.empty()) MsgBox("The table cannot be saved as " + path + ": " + reason);
}

void GraphPair::Report() const {
  const auto view = InView();
  Sheet rows;
  const auto add = [&](const std::string& text) { rows.push_back({QString::fromStdString(text), {}}); };
  const auto safe = [](const std::string& text) {
    return QString::fromStdString(text).toHtmlEscaped().toStdString();
  };
  add(HeadText(safe(file_.filename().string()), facts_, safe(words_), view ? &*view : nullptr));
  std::vector<double> limits;
  std::string totals;
  std::vector<std::unique_ptr<CWGraph>> histograms;
  for (std::size_t axis = 0; axis < graphs_.size(); ++axis) {
    const auto* each = graphs_[axis];
    limits.push_back(each->Limit().value_or(0));
    if (each->Values().empty()) continue;
    rows.push_back({{}, {each}});
    if (view) histograms.push_back(MakeHistogram(*view, axis));
    const auto total = std::accumulate(each->Values().begin(), each->Values().end(), 0.0);
    totals += (totals.empty() ? ": " : ", ") + each->accessibleName().toStdString() + " " +
              values::PlainNumberText(total);
  }
  add(view ? FiguresText(*view, limits) : "Counts in all" + totals);
  rows.push_back({});
  for (const auto& histogram : histograms) rows.back().graphs.push_back(histogram.get());
  add(view ? PushesText(*view) : "");
  add("<br>Bexlow " + platform::ProgramVersion());
  const auto shown = CWGraph1->Cursors();  // maybe those of an earlier file
  for (auto* each : graphs_) each->SetCursors(view ? view->run.pushes : std::vector<double>());
  Print(stem_ + " report", rows);
  for (auto* each : graphs_) each->SetCursors(shown);
}

}  // namespace bexlow::graph
