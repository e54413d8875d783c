// A full two-channel file: reading, opening and drawing it, and writing its CSV, each compared with the bare
// work. The cases take turns, so that a busy machine slows both sides of a ratio.
#include <QApplication>

#include <benchmark/benchmark.h>
#include <charconv>
#include <filesystem>
#include <iostream>
#include <map>

#include "Figure.h"
#include "FullFile.h"
#include "files/LinearCsv.h"
#include "files/Series.h"
#include "graph/DataScreen.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Screens.h"

namespace {

using namespace bexlow;
namespace fs = std::filesystem;

/// What the cases work on: the file as text and on disk, and the real screen in the real outer window.
struct Bench {
  explicit Bench(const fs::path& folder);
  void Open();

  fs::path dataFile, csvFile, plainFile, recordingFile;
  std::string text, csv, recordingText;
  rig::AnsweredMachine machine;
  rig::Program program;
  graph::DataScreen &recording, &screen;
  platform::CWGraph* graphs[2] = {};
  double last = 0;  ///< last sample of a series
};

Bench::Bench(const fs::path& folder)
    : dataFile(folder / "full.qbx"),
      csvFile(folder / "full.csv"),
      plainFile(folder / "plain.csv"),
      recordingFile(folder / "hour.qbx"),
      text(bench::FullDataFile()),
      recordingText(bench::HourRecording()),
      machine(folder),
      recording(static_cast<graph::DataScreen&>(program.Show(review::MakeRecording()))),
      screen(static_cast<graph::DataScreen&>(program.Show(graph::MakeGraph()))) {
  platform::WriteWhole(dataFile, text);
  platform::WriteWhole(recordingFile, recordingText);
  files::AppendLinearCsv(text, csv);
  graphs[0] = screen.findChild<platform::CWGraph*>("CWGraph1");
  graphs[1] = screen.findChild<platform::CWGraph*>("CWGraph2");
  Open();
  last = graphs[0]->XView().upper;
}

// Opens the file without a dialog, as after a download.
void Bench::Open() {
  screen.Open(dataFile.string());
  for (auto* graph : graphs) graph->DrawNow();
}

void FromCharsPass(benchmark::State& state, const Bench& bench) {
  for (auto _ : state) {
    double sum = 0;
    const char* at = bench.text.data();
    const char* const end = at + bench.text.size();
    while (at < end) {
      double value = 0;
      const auto [behind, error] = std::from_chars(at, end, value);
      sum += value;
      at = error == std::errc{} ? behind : at + 1;
      while (at < end && (*at == ',' || *at == '\r' || *at == '\n')) ++at;
    }
    benchmark::DoNotOptimize(sum);
  }
}

void ReadSeries(benchmark::State& state, const Bench& bench) {
  for (auto _ : state) {
    files::Run series;
    benchmark::DoNotOptimize(files::ReadRun(bench.text, 3, series));
  }
}

void ReadRecording(benchmark::State& state, const Bench& bench) {
  for (auto _ : state) {
    files::Run run;
    benchmark::DoNotOptimize(files::ReadRecording(bench.recordingText, run));
  }
}

void OpenRecording(benchmark::State& state, Bench& bench) {
  bench.program.outer.ShowChild(&bench.recording);
  for (auto _ : state) {
    bench.recording.Open(bench.recordingFile.string());
    for (auto* graph : bench.recording.findChildren<platform::CWGraph*>()) graph->DrawNow();
  }
  bench.program.outer.ShowChild(&bench.screen);
}

void OpenInGraph(benchmark::State& state, Bench& bench) {
  for (auto _ : state) bench.Open();
}

void DrawViews(benchmark::State& state, Bench& bench, double share) {
  double from = 0;
  const double width = share * bench.last;
  for (auto _ : state) {
    from = from + width + 97 > bench.last ? 0 : from + 97;  // samples that are dragged a frame
    bench.graphs[0]->SetXView({from, from + width});        // the other follows
    for (auto* graph : bench.graphs) graph->DrawNow();
  }
}

// What MakeLinearCSV of the Download screen does.
void WriteCsv(benchmark::State& state, const Bench& bench) {
  for (auto _ : state) {
    std::string csv;
    files::AppendLinearCsv(platform::ReadWhole(bench.dataFile), csv);
    platform::WriteWhole(bench.csvFile, csv);
  }
}

void ReadAndWriteAsMuch(benchmark::State& state, const Bench& bench) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(platform::ReadWhole(bench.dataFile));
    platform::WriteWhole(bench.plainFile, bench.csv);
  }
}

/// Keeps the median times in ms, and shows the library's own table on the error output.
class Medians : public benchmark::ConsoleReporter {
 public:
  Medians() : ConsoleReporter(OO_Tabular) {
    SetOutputStream(&std::cerr);
    SetErrorStream(&std::cerr);
  }
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      if (run.aggregate_name == "median") times_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double Of(const std::string& name) const { return times_.at(name); }

 private:
  std::map<std::string, double> times_;
};

void Register(Bench& bench) {
  const std::pair<const char*, std::function<void(benchmark::State&)>> cases[] = {
      {"FromCharsPass", [&](auto& state) { FromCharsPass(state, bench); }},
      {"ReadSeries", [&](auto& state) { ReadSeries(state, bench); }},
      {"ReadRecording", [&](auto& state) { ReadRecording(state, bench); }},
      {"OpenRecording", [&](auto& state) { OpenRecording(state, bench); }},
      {"OpenInGraph", [&](auto& state) { OpenInGraph(state, bench); }},
      {"DrawWhole", [&](auto& state) { DrawViews(state, bench, 1); }},
      {"DrawTenth", [&](auto& state) { DrawViews(state, bench, 0.1); }},
      {"WriteCsv", [&](auto& state) { WriteCsv(state, bench); }},
      {"ReadAndWriteAsMuch", [&](auto& state) { ReadAndWriteAsMuch(state, bench); }}};
  for (const auto& [name, run] : cases) {
    benchmark::RegisterBenchmark(name, run)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->MinTime(0.05)
        ->Repetitions(11)
        ->ReportAggregatesOnly();
  }
}

void PrintRatio(const Medians& medians, const std::string& name, const char* ours, const char* bare,
                bench::Limit limit) {
  bench::PrintFigure(
      name, medians.Of(ours) / medians.Of(bare), limit, "",
      bench::Fixed(medians.Of(ours), 2) + " ms over " + bench::Fixed(medians.Of(bare), 2) + " ms");
}

void PrintFigures(const Medians& medians) {
  const std::string views = "both graphs, " + QApplication::platformName().toStdString();
  PrintRatio(medians, "Reading a full file into both series, over one from_chars pass", "ReadSeries",
             "FromCharsPass", 2);
  PrintRatio(medians, "Graph's Open of a full file, first frame included, over the same pass", "OpenInGraph",
             "FromCharsPass", bench::NoLimit);
  bench::PrintFigure("Drawing the whole run", medians.Of("DrawWhole"), 10, " ms", views);
  bench::PrintFigure("Dragging a tenth of the run, a frame", medians.Of("DrawTenth"), 4, " ms", views);
  bench::PrintFigure("Reading an hour's recording, 1,332,000 samples", medians.Of("ReadRecording"),
                     bench::NoLimit, " ms", "Angles");
  bench::PrintFigure("Opening an hour's recording, first frame included", medians.Of("OpenRecording"), 1500,
                     " ms", views);
  PrintRatio(medians, "MakeLinearCSV of a full file, over reading it and writing as many bytes", "WriteCsv",
             "ReadAndWriteAsMuch", 3);
}

}  // namespace

int main(int argc, char** argv) {
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  char interleave[] = "--benchmark_enable_random_interleaving=true";
  char* arguments[] = {argv[0], interleave, nullptr};
  int count = 2;
  benchmark::Initialize(&count, arguments);
  Medians medians;
  Bench bench(scratch.Path());
  Register(bench);
  benchmark::RunSpecifiedBenchmarks(&medians);
  PrintFigures(medians);
}
