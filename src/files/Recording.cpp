#include "files/Recording.h"

#include <algorithm>
#include <cmath>

#include "files/Lines.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

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
    const double least = i == 0 ? 0 : -MostSize, most = i == 0 ? MostHundredths / 100 : MostSize;
    if (*number < least || *number > most) return std::nullopt;
    fields[i] = static_cast<std::int32_t>(values::RoundHalfEven(*number * (i == 0 ? 100 : 10)));
    line.remove_prefix(isLast ? end : end + 1);
  }
  return fields;
}

/// Lines of one kind: how many, and the number of the first.
struct Lines {
  std::size_t count = 0, first = 0;

  void Add(std::size_t line) {
    if (count++ == 0) first = line;
  }
  /// "line 20 is damaged", "3 lines are damaged, the first is line 20".
  std::string Words(const std::string& one, const std::string& more) const {
    const auto line = "line " + std::to_string(first);
    if (count < 2) return count == 0 ? "" : line + one;
    return values::CountText(static_cast<std::int64_t>(count)) + " lines" + more + ", the first is " + line;
  }
};

}  // namespace

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
  if (!kind || !lines.Skip(RecordingHeaderLines - 1) || lines.Next() != RecordingHeads(*kind)) return false;
  if (kind == DataFileKind::Accelerometers) run.axes = AccelerometerAxes;
  const auto most = static_cast<std::size_t>(std::ranges::count(whole, '\n'));
  run.hundredths.reserve(most);
  for (std::size_t i = 0; i < run.axes.size(); ++i) run.tenths[i].reserve(most);
  Lines damaged, starts;
  std::int32_t start = 0, before = 0;
  while (const auto line = lines.Next()) {
    const auto fields = FieldsOf(*line, run.axes.size());
    const bool startsAgain = fields && fields->front() < before;
    const auto from = startsAgain ? run.hundredths.back() : start;
    if (!fields || from + fields->front() > MostHundredths) {
      damaged.Add(lines.LinesRead());
      continue;
    }
    if (startsAgain) starts.Add(lines.LinesRead());
    start = from;
    before = fields->front();
    run.hundredths.push_back(start + before);
    for (std::size_t i = 0; i < run.axes.size(); ++i) run.tenths[i].push_back((*fields)[i + 1]);
  }
  for (const auto& words : {damaged.Words(" is damaged", " are damaged"),
                            starts.Words(" starts the time again", " start the time again"),
                            std::string(whole.size() < text.size() ? "the last line is torn" : "")})
    if (!words.empty()) run.remarks.append(run.remarks.empty() ? "" : ", ").append(words);
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
