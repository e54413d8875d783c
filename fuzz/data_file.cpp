// Data files in their readers. What two of them read from one file must be the same.
#include <cmath>

#include "Target.h"
#include "files/LinearCsv.h"
#include "files/Lines.h"
#include "files/RunEntry.h"
#include "files/Series.h"
#include "values/NumberText.h"

namespace bexlow::fuzz {

constexpr std::size_t HeaderLines = 12;

/// The last line needs no end.
std::size_t LinesIn(std::string_view text) {
  const auto ends = static_cast<std::size_t>(std::ranges::count(text, '\n'));
  return text.empty() || text.back() == '\n' ? ends : ends + 1;
}

void TryGraph(std::string_view text, files::Run& series) {
  const auto &x = series.XLinear, &y = series.YLinear;
  const auto &xTenths = series.tenths[0], &yTenths = series.tenths[1];
  const auto& pushes = series.pushes;
  const auto channel = files::CheckFile(text).channel;
  Require(channel >= 0 && channel <= 9, "a channel is a digit");
  const auto frequency = files::ReadRunFacts(text).frequency.value_or(1);
  Require(frequency > 0 && frequency < 6554, "a frequency is one");
  files::Run single;
  const auto& points = single.XLinear;
  bool whole = false, read = false;
  const bool taken = Takes([&] { read = files::ReadRun(text, 1, single); });
  Require(Takes([&] { whole = files::ReadRun(text, 3, series); }) == taken, "both take the same files");
  Require(read == whole, "both read the same files");
  Require(!taken || whole == (LinesIn(text) >= HeaderLines), "the header has 12 lines");
  const auto pairs = whole ? files::PairsInRecord * (LinesIn(text) - HeaderLines) : 0;
  Require(x.size() == pairs && y.size() == pairs, "132 pairs a record, and none after a failure");
  Require(!whole || points.size() == 2 * pairs, "a pair is two points");
  for (std::size_t i = 0; i < pairs; ++i)
    Require(x[i] == points[2 * i] && y[i] == points[2 * i + 1], "X and Y take turns");
  Require(xTenths.size() == pairs && yTenths.size() == pairs, "each sample has its tenths");
  for (std::size_t i = 0; i < pairs; ++i)
    Require(std::abs(xTenths[i] - 10 * x[i]) <= 5, "whole degrees and tenths are one sample's");
  Require(!files::PagesRise(series) || files::PageRemarks(series).find("twice") == std::string::npos,
          "numbers that rise stand once");
  if (files::PagesRise(series))
    for (std::size_t i = 0; i < pairs; ++i) {
      const auto sample = static_cast<double>(i);
      Require(files::SampleAt(series, files::PeriodsAt(series, sample)) == sample, "a time leads back");
    }
  Require(series.UnwrittenEnd() <= std::min(pairs, files::PairsInRecord), "the end lies in the last record");
  for (std::size_t i = 0; whole && i < pushes.size(); ++i) {
    Require(pushes[i] > (i == 0 ? -1 : pushes[i - 1]) && pushes[i] < static_cast<double>(pairs),
            "pushes rise and stand on the run");
    Require(x[static_cast<std::size_t>(pushes[i])] == 0, "a push stands at 0");
  }
}

void TryBins(std::string_view text, int page) {
  files::BinPair pair;
  if (!Takes([&] { pair = files::FindPair(text, page); })) return;
  const bool found = pair.result == files::PairResult::Found;
  const std::size_t pages = found ? 2 : pair.result == files::PairResult::NoPartner ? 1 : 0;
  Require(LinesIn(text) >= pages, "a page is a line");
  for (std::size_t i = 0; i < files::BinCount; ++i) {
    const double x = pair.XPoints[i], y = pair.YPoints[i];
    Require(std::isfinite(x) && std::isfinite(y), "counts are finite");
    Require((x == 0 || pages > 0) && (y == 0 || pages > 1), "no page, no counts");
  }
}

/// Where each record has its 132 pairs and no more, they are the lines of the CSV file.
void TryCsv(std::string_view text, const files::Run& series) {
  std::string csv;
  const bool made = Takes([&] { files::AppendLinearCsv(text, csv); });
  Require(made == (LinesIn(text) >= HeaderLines), "a whole header is enough for a CSV file");
  files::LineReader lines(csv);
  if (!lines.Skip(HeaderLines) || LinesIn(csv) != HeaderLines + series.XLinear.size()) return;
  for (std::size_t i = 0; i < series.XLinear.size(); ++i) {
    const auto line = *lines.Next();
    const auto isOf = [i](const auto& field, const auto& tenths) {
      return field && values::FieldToDegrees(*field)->tenths == tenths[i];
    };
    Require(isOf(files::BeforeFirstComma(line), series.tenths[0]), "the X of a CSV line is the run's");
    Require(isOf(files::AfterFirstComma(line), series.tenths[1]), "the Y of a CSV line is the run's");
  }
}

void TryRecording(std::string_view text) {
  files::Run run;
  if (!files::ReadRecording(text, run)) return;
  const auto samples = run.hundredths.size(), lines = files::RecordingHeaderLines + samples;
  Require(LinesIn(text) >= lines, "a sample is a line");
  Require(LinesIn(text) == lines || !run.remarks.empty(), "what is left out is told");
  Require(std::ranges::is_sorted(run.hundredths), "times do not run back");
  for (std::size_t axis = 0; axis < run.axes.size(); ++axis)
    Require(run.tenths[axis].size() == samples, "a sample has all axes");
  for (const auto hundredths : run.hundredths) {
    const double sample = files::SampleAtSecond(run, hundredths / 100.0);
    Require(std::abs(files::SecondsAt(run, sample) - hundredths / 100.0) < 1e-4, "a time leads back");
  }
}

/// From shorter ends less is known, but nothing else.
void TryEntry(std::string_view text) {
  const auto entryOf = [text](std::size_t head, std::size_t tail) {
    const auto begin = text.size() - std::min(tail, text.size());
    return files::ReadRunEntry(text.substr(0, head), text.substr(begin), text.size());
  };
  const auto whole = entryOf(files::HeadBytes, files::TailBytes), ends = entryOf(512, 2048);
  Require(whole.lastPage >= 0 && whole.lastPage <= files::LastPage, "a page is one of the memory's");
  Require(whole.seconds.value_or(0) >= 0 && std::isfinite(whole.seconds.value_or(0)), "a duration is one");
  Require(ends.lastPage == 0 || ends.lastPage == whole.lastPage, "both ends see the same last page");
  Require(!whole.seconds || !ends.seconds || *whole.seconds == *ends.seconds, "and the same duration");
}

void Try(std::string_view text) {
  files::Run series;
  TryGraph(text, series);
  const auto check = files::CheckReviewFile(text);
  Require((check == files::ReviewCheck::Empty) == text.empty(), "an empty file is told");
  Require(check != files::ReviewCheck::Ok || LinesIn(text) >= HeaderLines, "its whole header was checked");
  for (const int page : {-1, 1, 3}) TryBins(text, page);
  TryCsv(text, series);
  TryEntry(text);
  TryRecording(text);
}

}  // namespace bexlow::fuzz
