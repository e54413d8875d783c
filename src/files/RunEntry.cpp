#include "files/RunEntry.h"

#include <system_error>

#include "files/Lines.h"
#include "files/Series.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

constexpr int HeaderLines = 12;

/// The whole lines after the header, or of those the last.
struct Records {
  std::string_view first;  ///< begins with the first record
  std::vector<std::string_view> lines;
  bool all = false, torn = false;  ///< torn: the last line has no end
};

std::optional<Records> FindRecords(std::string_view head, std::string_view tail, std::uintmax_t size) {
  std::size_t begin = 0;
  for (int line = 0; line < HeaderLines; ++line) {
    const auto end = head.find('\n', begin);
    if (end == std::string_view::npos) return std::nullopt;
    begin = end + 1;
  }
  const auto unread = size - std::min<std::uintmax_t>(size, tail.size());
  Records records{head.substr(begin), {}, unread <= begin};
  // Where the two parts do not meet, the tail begins with the rest of a line.
  const auto from = records.all ? begin - unread : std::min(tail.find('\n'), tail.size() - 1) + 1;
  LineReader lines(tail.substr(std::min<std::size_t>(from, tail.size())));
  while (const auto line = lines.Next()) records.lines.push_back(*line);
  records.torn = !records.lines.empty() && tail.back() != '\n';
  return records;
}

void Remark(RunEntry& entry, std::string_view words) {
  if (!words.empty() && entry.remark.find(words) == std::string::npos)
    entry.remark.append(entry.remark.empty() ? "" : ", ").append(words);
}

/// Whether a line is a whole record; the samples of a Linear one are appended to the run.
bool TakeRecord(std::string_view line, const FileCheck& check, Run& run) {
  try {
    if (check.kind == FileKind::Bin) {
      FindPair(line, PageOf(line));
    } else if (check.channel >= 1 && check.channel <= 3) {
      AppendRecord(run, line, check.channel);
    }
    return true;
  } catch (const std::system_error&) {
    return false;
  }
}

void ReadPages(Records records, const FileCheck& check, std::optional<double> frequency, RunEntry& entry) {
  auto& lines = records.lines;
  Run first, run, torn, end;
  first.records.push_back({PageOf(records.first), 0});
  if (records.torn && !TakeRecord(lines.back(), check, torn)) {
    Remark(entry, "ends in the middle of a record");
    lines.pop_back();
    if (lines.empty()) return;
  }
  if (lines.empty()) return Remark(entry, records.all ? "holds no page" : "ends without a record");
  for (const auto& line : lines) run.records.push_back({PageOf(line), 0});
  const bool rises = records.all || first.records.front().page < run.records.front().page;
  if (!records.all) Remark(entry, rises ? PageRemarks(first) : "the page numbers do not rise");
  Remark(entry, PageRemarks(run, records.all ? 0 : run.records.front().page - 1));
  entry.lastPage = run.records.back().page;
  const bool isLinear = check.channel >= 1 && check.channel <= 3;
  // A Linear record is not decoded, for speed: what is damaged lacks fields.
  for (const auto& line : std::span(lines).first(lines.size() - 1)) {
    const bool isWhole = isLinear ? std::ranges::count(line, ',') >= std::int64_t{FieldsInRecord}
                                  : TakeRecord(line, check, torn);
    if (!isWhole) return Remark(entry, "a record is damaged");
  }
  if (!TakeRecord(lines.back(), check, end)) return Remark(entry, "the last record is damaged");
  if (check.kind == FileKind::Bin) return;
  if (end.Size() == 0) return Remark(entry, "no samples: mode or channels are unknown");
  const std::size_t size = end.Size(), written = size - end.UnwrittenEnd(), count = lines.size();
  const auto before =
      count > 1 ? run.records[count - 2].page : 0;  // the run ends there if its last page is empty
  const auto pages = static_cast<std::size_t>(written > 0 ? entry.lastPage - 1 : before);
  const bool isKnown =
      rises && first.records.front().page > 0 && PagesRise(run) && pages * size + written > 0;
  if (frequency && isKnown) entry.seconds = static_cast<double>(pages * size + written) / *frequency;
}

/// Only a look at each line tells whether sampling was started again.
void ReadTimes(std::string_view text, std::uintmax_t size, RunEntry& entry) {
  if (text.size() < size) return Remark(entry, "its length is told when it is opened");
  Run run;
  if (!ReadRecording(text, run)) return Remark(entry, "ends within its header");
  if (run.Size() == 0) Remark(entry, "holds no sample");
  if (run.Size() > 0) entry.seconds = (run.hundredths.back() - run.hundredths.front()) / 100.0;
  if (!run.remarks.empty()) Remark(entry, std::string_view(run.remarks).substr(2));
}

std::string KindWords(const FileCheck& check) {
  constexpr std::string_view Channels[] = {"", " X", " Y", " X and Y"};
  if (check.kind == FileKind::Bin) return "Bin";
  if (check.kind != FileKind::Linear) return std::string(KindText(DataFileKind::DownloadPages));
  return "Linear" + std::string(Channels[check.channel > 3 ? 0 : check.channel]);
}

}  // namespace

RunEntry ReadRunEntry(std::string_view head, std::string_view tail, std::uintmax_t size) {
  RunEntry entry;
  LineReader lines(head);
  lines.Next();
  const auto kind = lines.Next().value_or("");
  const bool isRecording = RecordingKind(head).has_value();
  if (!isRecording && kind != KindText(DataFileKind::DownloadPages)) {
    entry.remark = size == 0 ? "empty" : "not a data file";
    return entry;
  }
  const auto check = CheckFile(head);
  entry.kind = isRecording ? kind : KindWords(check);
  const auto facts = ReadRunFacts(head);
  entry.launched = facts.launch;
  entry.serialNumber = facts.serialNumber;
  if (isRecording) {
    ReadTimes(head, size, entry);
  } else if (const auto records = FindRecords(head, tail, size)) {
    ReadPages(*records, check, facts.frequency, entry);
  } else {
    entry.remark = "ends within its header";
  }
  return entry;
}

}  // namespace bexlow::files
