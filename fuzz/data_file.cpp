// Data files in their four readers: Graph, its pairs of Bin pages, GraphBP, and MakeLinearCSV,
// whose text is also made in a plain way.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Target.h"
#include "download/LinearCsv.h"
#include "graph/BinPages.h"
#include "graph/RunFacts.h"
#include "graph/Series.h"
#include "review/ButtonPushes.h"

namespace bexlow::fuzz {

namespace {

constexpr std::size_t HeaderLines = 12;

std::vector<std::string> Split(std::string_view text, char mark) {
  std::vector<std::string> parts{""};
  for (const char c : text) {
    if (c == mark) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::vector<std::string> Lines(std::string_view text) {
  auto lines = Split(text, '\n');
  if (lines.back().empty()) lines.pop_back();
  for (auto& line : lines) {
    if (line.ends_with('\r')) line.pop_back();
  }
  return lines;
}

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

/// @returns whether the two-channel reader takes the file
bool TryGraph(std::string_view text, std::size_t lines, graph::DoubleSeries& series) {
  const auto check = graph::CheckFile(text);
  Require(check.channel >= 0 && check.channel <= 9, "a channel is a digit");
  RequireKnownFacts(graph::ReadRunFacts(text), check.kind);
  std::optional<graph::Samples> points;
  bool whole = false;
  const bool taken = Takes([&] { points = graph::ReadSingle(text); });
  Require(Takes([&] { whole = graph::ReadDouble(text, series); }) == taken,
          "both readers take the same files");
  Require(taken || (series.x.empty() && series.y.empty()), "a failure leaves the series empty");
  if (!taken) return false;
  Require(points.has_value() == whole && whole == (lines >= HeaderLines), "the header has 12 lines");
  if (!whole) return true;
  Require(points->size() == graph::FieldsInRecord * (lines - HeaderLines), "264 points a record");
  Require(series.x.size() == series.y.size(), "X and Y are equally long");
  RequireSamePoints(*points, series);
  RequirePushes(series);
  return true;
}

void TryReview(std::string_view text, bool readable, const graph::DoubleSeries& series) {
  const auto check = review::CheckReviewFile(text);
  Require((check == review::ReviewCheck::Empty) == text.empty(), "an empty file is told");
  if (check != review::ReviewCheck::Ok) return;
  review::ReviewSeries review;
  bool whole = false;
  const bool taken = Takes([&] { whole = review::ReadReview(text, review); });
  Require(taken == readable && whole == taken, "a checked file is read where Graph reads it");
  Require(review.XLinear == series.x && review.YLinear == series.y, "both screens show the same series");
  Require(review.ButtonPushes == (series.pushes.empty() ? std::vector{0.0} : series.pushes),
          "both screens show the same pushes");
  std::size_t last = 0, steps = 1;
  while (const auto next = review::StepForward(last, review.ButtonPushes.size())) {
    Require(review::StepBack(*next) == last, "a step back is a step forward undone");
    last = *next;
    ++steps;
  }
  Require(steps == review.ButtonPushes.size(), "every push is reached");
}

std::vector<double> WithoutZeros(std::span<const double> values) {
  std::vector<double> others;
  std::ranges::copy_if(values, std::back_inserter(others), [](double value) { return value != 0; });
  Require(std::ranges::all_of(others, [](double value) { return std::isfinite(value); }),
          "counts are finite");
  return others;
}

void TryBins(std::string_view text, std::size_t lines, std::int16_t page) {
  graph::BinPair pair;
  if (!Takes([&] { pair = graph::FindPair(text, page); })) return;
  if (pair.result == graph::PairResult::NoPage)
    return Require(WithoutZeros(pair.XPoints).empty(), "no page, no counts");
  Require(lines >= (pair.result == graph::PairResult::Found ? 2U : 1U), "a pair is two lines");
  const auto degrees = graph::SpreadOverDegrees(pair.XPoints, pair.YPoints);
  Require(WithoutZeros(degrees.XDegrees) == WithoutZeros(pair.XPoints), "every X count stands on its axis");
  Require(WithoutZeros(degrees.YDegrees) == WithoutZeros(pair.YPoints), "every Y count stands on its axis");
}

std::string SampleLines(const std::string& record, bool pairs) {
  const std::size_t comma = record.find(',');
  if (comma == std::string::npos || comma + 1 == record.size()) return {};
  const auto fields = Split(std::string_view(record).substr(comma + 1), ',');
  std::string text;
  for (std::size_t i = 0; i + (pairs ? 1 : 0) < fields.size(); i += pairs ? 2 : 1) {
    text += fields[i] + (pairs ? "," + fields[i + 1] : "") + "\r\n";
  }
  return text;
}

std::string PlainCsv(const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < 11 && i < lines.size(); ++i) text += lines[i] + "\r\n";
  if (lines.size() < HeaderLines || lines[10].empty()) return text;
  const char channel = lines[10].back();
  if (channel < '1' || channel > '3') return text;
  text += channel == '1' ? "X angle\r\n" : channel == '2' ? "Y angle\r\n" : "X angle,Y angle\r\n";
  for (std::size_t i = HeaderLines; i < lines.size(); ++i) text += SampleLines(lines[i], channel == '3');
  return text;
}

}  // namespace

void Try(std::string_view text) {
  const auto lines = Lines(text);
  graph::DoubleSeries series;
  const bool readable = TryGraph(text, LinesOf(text), series);
  TryReview(text, readable, series);
  for (const int page : {-1, 1, 3}) TryBins(text, LinesOf(text), static_cast<std::int16_t>(page));
  std::string csv;
  const bool made = Takes([&] { download::AppendLinearCsv(text, csv); });
  Require(made == (lines.size() >= HeaderLines), "a whole header is enough for a CSV file");
  Require(csv == PlainCsv(lines), "the CSV text is what the plain way makes");
}

}  // namespace bexlow::fuzz
