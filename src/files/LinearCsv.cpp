#include "files/LinearCsv.h"

#include <algorithm>

#include "files/Lines.h"
#include "values/Conversions.h"

namespace bexlow::files {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr int CopiedLines = 11;
constexpr int ExtensionLength = 4;  // characters, of one to four bytes each

std::string_view HeaderLine(LineReader& lines) {
  if (const auto line = lines.Next()) return *line;
  values::Throw(std::errc::no_message_available,
                "Data file ends in header line " + std::to_string(lines.LinesRead() + 1));
}

std::string_view ColumnHead(char channel) {
  if (channel == '1') return "X angle";
  if (channel == '2') return "Y angle";
  if (channel == '3') return "X angle,Y angle";
  return {};
}

/// Appends the fields of a record, one or two (pairs) a line, split at the commas; a last field without its
/// partner is dropped. Copies byte by byte without a branch: fields are so short that searching for commas
/// would be slower.
void AppendSamples(std::string_view fields, bool pairs, std::string& csv) {
  const std::size_t before = csv.size();
  csv.resize(before + 2 * fields.size() + LineEnd.size());
  char* out = csv.data() + before;
  bool inPair = false;
  for (const char c : fields) {
    const bool comma = c == ',';
    const bool ends = comma && (inPair || !pairs);
    inPair = inPair != (comma && pairs);
    out[0] = ends ? LineEnd[0] : c;
    out[1] = LineEnd[1];  // overwritten by the next byte unless the line ends here
    out += ends ? 2 : 1;
  }
  if (pairs && !inPair) {
    while (out != csv.data() + before && out[-1] != LineEnd[1]) --out;
  } else {
    out = std::copy(LineEnd.begin(), LineEnd.end(), out);
  }
  csv.resize(static_cast<std::size_t>(out - csv.data()));
}

}  // namespace

void AppendLinearCsv(std::string_view dataFile, std::string& csv) {
  csv.reserve(csv.size() + dataFile.size() + dataFile.size() / 4);
  LineReader lines(dataFile);
  char channel = 0;
  for (int i = 0; i < CopiedLines; ++i) {
    const std::string_view line = HeaderLine(lines);
    csv.append(line).append(LineEnd);
    channel = line.empty() ? char{} : line.back();
  }
  HeaderLine(lines);  // skips the data file's own column names
  const std::string_view head = ColumnHead(channel);
  if (head.empty()) return;
  csv.append(head).append(LineEnd);
  while (const auto line = lines.Next()) {
    const auto fields = AfterFirstComma(*line);
    if (fields && !fields->empty()) AppendSamples(*fields, channel == '3', csv);
  }
}

std::string CsvFileName(std::string_view dataFileName) {
  std::string_view kept = dataFileName;
  for (int i = 0; i < ExtensionLength; ++i) {
    if (kept.empty() || kept.back() == '/') {
      values::Throw(std::errc::invalid_argument, "File name of fewer than four characters");
    }
    while (kept.size() > 1 && (kept.back() & 0xC0) == 0x80) kept.remove_suffix(1);  // within a character
    kept.remove_suffix(1);
  }
  return std::string(kept) + ".csv";
}

}  // namespace bexlow::files
