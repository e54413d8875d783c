#include "files/Series.h"

#include <cmath>
#include <iterator>
#include <utility>

#include "files/Lines.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

constexpr std::size_t CheckedLines = 11;
constexpr std::size_t UncheckedLines = 9;  // of a review
constexpr std::size_t HeaderLines = 12;

[[noreturn]] void ThrowRecord(std::errc code, std::size_t record, const std::string& fault) {
  values::Throw(code, "Record " + std::to_string(record) + ": " + fault);
}

std::string PagesText(std::int32_t first, std::int32_t last) {
  const auto text = std::to_string(first);
  if (first == last) return "page " + text + " is missing";
  return "pages " + text + (last == first + 1 ? " and " : " to ") + std::to_string(last) + " are missing";
}

/// Samples of a record, as all but the last one have.
std::size_t SamplesInRecord(const Run& run) {
  return run.XLinear.empty() || run.YLinear.empty() ? FieldsInRecord : PairsInRecord;
}

int ChannelOf(std::string_view line) {
  const bool digit = !line.empty() && line.back() >= '0' && line.back() <= '9';
  return digit ? line.back() - '0' : 0;
}

constexpr std::int32_t PauseHundredths = 200;           // longer ones are told
constexpr double MostSize = 32768;                      // of a value
constexpr std::int32_t MostHundredths = 1'000'000'000;  // 115 days; twice that still fits 32 bits

/// Hundredths of a second and the tenths of each axis; nothing for a line that no live screen writes.
std::optional<std::array<std::int32_t, 4>> FieldsOf(std::string_view line, std::size_t axes) {
  std::array<std::int32_t, 4> fields{};
  for (std::size_t i = 0; i <= axes; ++i) {
    const std::size_t end = std::min(line.find(','), line.size());
    const auto number = values::WholeNumber(line.substr(0, end));
    const bool isLast = end == line.size();
    if (!number || isLast != (i == axes)) return std::nullopt;
    const double least = i == 0 ? 0 : -MostSize, most = i == 0 ? MostHundredths / 100.0 : MostSize;
    if (*number < least || *number > most) return std::nullopt;
    fields[i] = static_cast<std::int32_t>(values::RoundHalfEven(*number * (i == 0 ? 100 : 10)));
    line.remove_prefix(isLast ? end : end + 1);
  }
  return fields;
}

/// "; line 20 is damaged", "; 3 lines are damaged, the first is line 20"; empty for no line.
std::string LinesText(const std::vector<std::size_t>& lines, const char* one, const char* more) {
  if (lines.empty()) return {};
  const auto first = "line " + std::to_string(lines.front());
  if (lines.size() == 1) return "; " + first + one;
  return "; " + values::CountText(std::ssize(lines)) + " lines" + more + ", the first is " + first;
}

}  // namespace

FileCheck CheckFile(std::string_view text) {
  if (text.empty()) return {FileKind::Empty};
  std::string_view header[CheckedLines];
  LineReader lines(text);
  for (auto& kept : header) {
    const auto line = lines.Next();
    if (!line) return {FileKind::TooShort};
    kept = *line;
  }
  const auto mode = After(ModeLabel, header[9]);
  if (header[1] != KindText(DataFileKind::DownloadPages)) return {FileKind::WrongKind};
  if (mode == "0") return {FileKind::Bin};
  if (mode == "1") return {FileKind::Linear, ChannelOf(header[10])};
  return {FileKind::OtherMode};
}

ReviewCheck CheckReviewFile(std::string_view text) {
  if (text.empty()) return ReviewCheck::Empty;
  LineReader lines(text);
  if (!lines.Skip(UncheckedLines)) return ReviewCheck::TooShort;
  std::optional<std::string_view> mode, channel, heads;
  for (auto* line : {&mode, &channel, &heads}) {
    *line = lines.Next();
    if (!*line) return ReviewCheck::TooShort;
  }
  const bool supported =
      After(ModeLabel, *mode) == "1" && After(ChannelLabel, *channel) == "3" && heads == ColumnHeads(1, 3);
  return supported ? ReviewCheck::Ok : ReviewCheck::NotSupported;
}

bool HoldsPushes(std::string_view text) {
  return CheckReviewFile(text) == ReviewCheck::Ok && text.find(",BP,") != std::string_view::npos;
}

std::size_t Run::UnwrittenEnd() const {
  if (records.empty()) return 0;
  std::size_t end = Size();
  const auto isZero = [&](std::size_t i) {
    const auto isZeroOn = [i](const Tenths& axis) { return axis.empty() || axis[i] == 0; };
    return std::ranges::all_of(tenths, isZeroOn) && !IsPush(i);
  };
  while (end > records.back().first && isZero(end - 1)) --end;
  return Size() - end;
}

bool Run::IsPush(std::size_t sample) const {
  return std::ranges::binary_search(pushes, static_cast<double>(sample));
}

void AppendRecord(Run& run, std::string_view line, int channel) {
  const std::size_t record = run.records.size() + 1;
  run.records.push_back({PageOf(line), run.Size()});
  std::string_view rest = AfterFirstComma(line).value_or(std::string_view());
  for (std::size_t place = 0; place < FieldsInRecord; ++place) {
    const bool last = place + 1 == FieldsInRecord;
    const std::size_t end = last ? rest.size() : rest.find(',');
    if (end == std::string_view::npos)
      ThrowRecord(std::errc::no_message_available, record, "fewer than 264 fields");
    const std::string_view field = rest.substr(0, end);
    const auto degrees = values::FieldToDegrees(field);
    if (!degrees) {
      ThrowRecord(std::errc::result_out_of_range, record,
                  "field " + std::to_string(place + 1) + " does not fit 16 bits");
    }
    const bool isX = channel == 1 || (channel == 3 && place % 2 == 0);
    if (channel == 3 && isX && field == "BP") run.pushes.push_back(static_cast<double>(run.XLinear.size()));
    (isX ? run.XLinear : run.YLinear).push_back(degrees->whole);
    run.tenths[isX ? 0 : 1].push_back(degrees->tenths);
    if (!last) rest.remove_prefix(end + 1);
  }
}

bool ReadRun(std::string_view text, int channel, Run& run) {
  run = {};
  LineReader lines(text);
  if (!lines.Skip(HeaderLines)) return false;
  try {
    while (const auto line = lines.Next()) AppendRecord(run, *line, channel);
  } catch (...) {
    Run damaged;
    damaged.pushes = std::move(run.pushes);
    damaged.remarks = "; record " + std::to_string(run.records.size()) + " is damaged";
    run = std::move(damaged);
    throw;
  }
  return true;
}

bool PagesRise(const Run& run) {
  std::int32_t before = 0;
  for (const auto& record : run.records) {
    if (record.page <= before) return false;
    before = record.page;
  }
  return !run.records.empty();
}

std::string PageRemarks(const Run& run, std::int32_t before) {
  constexpr int MostGaps = 3;  // told one by one
  std::string remarks;
  int gaps = 0;
  std::int64_t missing = 0;
  for (const auto& record : run.records) {
    if (record.page == 0) return "a record has no page number from 1 to " + std::to_string(LastPage);
    const auto page = "page " + std::to_string(record.page);
    if (record.page == before) return page + " is there twice";
    if (record.page < before) return page + " stands after page " + std::to_string(before);
    if (record.page > before + 1) {
      missing += record.page - before - 1;
      if (++gaps <= MostGaps)
        remarks += (remarks.empty() ? "" : ", ") + PagesText(before + 1, record.page - 1);
    }
    before = record.page;
  }
  return gaps <= MostGaps ? remarks : values::CountText(missing) + " pages are missing";
}

std::vector<std::size_t> BreaksOf(const Run& run) {
  std::vector<std::size_t> breaks;
  for (std::size_t i = 1; i < run.hundredths.size(); ++i)
    if (run.hundredths[i] - run.hundredths[i - 1] > PauseHundredths) breaks.push_back(i);
  for (std::size_t i = 1; i < run.records.size(); ++i) {
    if (run.records[i].page != run.records[i - 1].page + 1) breaks.push_back(run.records[i].first);
  }
  return breaks;
}

double PeriodsAt(const Run& run, double sample) {
  if (run.records.empty()) return 0;
  const auto next = std::ranges::upper_bound(
      run.records, sample, {}, [](const Run::Record& record) { return static_cast<double>(record.first); });
  const auto& record = next == run.records.begin() ? *next : *std::prev(next);
  return static_cast<double>(record.page - 1) * static_cast<double>(SamplesInRecord(run)) + sample -
         static_cast<double>(record.first);
}

double SampleAt(const Run& run, double periods) {
  const auto size = static_cast<double>(SamplesInRecord(run));
  const auto next = std::ranges::upper_bound(
      run.records, periods, {}, [&](const Run::Record& record) { return (record.page - 1) * size; });
  if (next == run.records.begin()) return 0;
  const auto& record = *std::prev(next);
  const double within = periods - (record.page - 1) * size;
  const bool isMissing = next != run.records.end() && within > size;
  return static_cast<double>(record.first) + (isMissing ? size : within);
}

std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point) {
  const auto found = std::ranges::lower_bound(pushes, point);
  if (found == pushes.end() || *found != point) return std::nullopt;
  return static_cast<std::size_t>(found - pushes.begin());
}

std::optional<DataFileKind> RecordingKind(std::string_view text) {
  LineReader lines(text);
  lines.Next();
  const auto kind = lines.Next();
  for (const auto recording : {DataFileKind::Angles, DataFileKind::Accelerometers})
    if (kind == KindText(recording)) return recording;
  return std::nullopt;
}

bool ReadRecording(std::string_view text, Run& run) {
  run = {};
  const auto kind = RecordingKind(text);
  const auto whole = text.substr(0, text.rfind('\n') + 1);
  LineReader lines(whole);
  if (!kind || !lines.Skip(RecordingHeaderLines)) return false;
  if (kind == DataFileKind::Accelerometers) run.axes = AccelerometerAxes;
  const auto most = static_cast<std::size_t>(std::ranges::count(whole, '\n'));
  run.hundredths.reserve(most);
  for (std::size_t i = 0; i < run.axes.size(); ++i) run.tenths[i].reserve(most);
  std::vector<std::size_t> damaged, starts, pauses;
  std::int32_t start = 0, before = 0;
  while (const auto line = lines.Next()) {
    const auto fields = FieldsOf(*line, run.axes.size());
    const bool startsAgain = fields && fields->front() < before;
    const auto from = startsAgain ? run.hundredths.back() : start;
    if (!fields || from + fields->front() > MostHundredths) {
      damaged.push_back(lines.LinesRead());
      continue;
    }
    if (startsAgain) starts.push_back(lines.LinesRead());
    if (!startsAgain && !run.hundredths.empty() && fields->front() - before > PauseHundredths)
      pauses.push_back(lines.LinesRead());
    start = from;
    before = fields->front();
    run.hundredths.push_back(start + before);
    for (std::size_t i = 0; i < run.axes.size(); ++i) run.tenths[i].push_back((*fields)[i + 1]);
  }
  run.remarks = LinesText(damaged, " is damaged", " are damaged") +
                LinesText(starts, " starts the time again", " start the time again") +
                LinesText(pauses, " comes after a pause", " come after a pause") +
                (whole.size() < text.size() ? "; the last line is torn" : "");
  return true;
}

double SecondsAt(const Run& run, double sample) {
  const auto last = run.hundredths.size() - 1;
  const double place = std::clamp(sample, 0.0, static_cast<double>(last));
  const auto before = static_cast<std::size_t>(place), after = std::min(before + 1, last);
  const double way = run.hundredths[after] - run.hundredths[before];
  return (run.hundredths[before] + (place - static_cast<double>(before)) * way) / 100;
}

double SampleAtSecond(const Run& run, double seconds) {
  const auto& times = run.hundredths;
  const auto after = std::ranges::lower_bound(times, seconds * 100);
  if (after == times.end()) return static_cast<double>(times.size() - 1);
  if (after == times.begin()) return 0;
  const double way = *after - *std::prev(after);
  return static_cast<double>(after - times.begin()) - (*after - seconds * 100) / way;
}

}  // namespace bexlow::files
