// Linear data files as Graph opens them.
#include <optional>

#include "Target.h"
#include "graph/RunFacts.h"
#include "graph/Series.h"

namespace bexlow::fuzz {

namespace {

constexpr std::size_t HeaderLines = 12;

void RequireSamePoints(const graph::Samples& points, const graph::DoubleSeries& series) {
  Require(points.size() == 2 * series.x.size(), "a pair is two points");
  for (std::size_t i = 0; i < series.x.size(); ++i) {
    Require(series.x[i] == points[2 * i] && series.y[i] == points[2 * i + 1], "X and Y take turns");
  }
}

void RequirePushes(const graph::DoubleSeries& series) {
  double last = -1;
  for (const double push : series.pushes) {
    Require(push > last && push < static_cast<double>(series.x.size()), "pushes rise and stand on the run");
    Require(series.x[static_cast<std::size_t>(push)] == 0, "a push stands at 0");
    last = push;
  }
}

void RequireKnownFacts(const graph::RunFacts& facts, graph::FileKind kind) {
  using graph::FileKind;
  const bool isRefused = kind == FileKind::Empty || kind == FileKind::WrongKind;
  Require(!isRefused || (facts.launch.empty() && !facts.frequency), "nothing is known of another file");
  Require(kind != FileKind::Bin || !facts.frequency, "bins have no frequency");
  Require(!facts.frequency || (*facts.frequency > 0 && *facts.frequency < 6554), "a frequency is one");
}

}  // namespace

void Try(std::string_view text) {
  const auto check = graph::CheckFile(text);
  Require(check.channel >= 0 && check.channel <= 9, "a channel is a digit");
  RequireKnownFacts(graph::ReadRunFacts(text), check.kind);
  std::optional<graph::Samples> points;
  graph::DoubleSeries series;
  bool whole = false;
  const bool taken = Takes([&] { points = graph::ReadSingle(text); });
  Require(Takes([&] { whole = graph::ReadDouble(text, series); }) == taken,
          "both readers take the same files");
  Require(series.x.size() == series.y.size(), "X and Y are equally long");
  if (!taken) return Require(series.x.empty(), "a failure leaves the series empty");
  Require(points.has_value() == whole, "both readers need the whole header");
  Require(whole == (LinesOf(text) >= HeaderLines), "the header has 12 lines");
  if (!whole) return;
  Require(points->size() == graph::FieldsInRecord * (LinesOf(text) - HeaderLines), "264 points a record");
  RequireSamePoints(*points, series);
  RequirePushes(series);
}

}  // namespace bexlow::fuzz
