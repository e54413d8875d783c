#include "files/Series.h"

#include <string>
#include <system_error>
#include <utility>

#include "files/DataFile.h"
#include "files/Lines.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

constexpr std::size_t CheckedLines = 11;
constexpr std::size_t HeaderLines = 12;

[[noreturn]] void ThrowRecord(std::errc code, std::size_t record, const std::string& fault) {
  throw std::system_error(std::make_error_code(code), "Record " + std::to_string(record) + ": " + fault);
}

/// Calls take(place in the record from 0, text, number) for each of the 264 fields of every record; the last
/// field is the rest of its line. False if the file ends within its header.
template <class Take>
bool ReadRecords(std::string_view text, Take take) {
  LineReader lines(text);
  if (!lines.Skip(HeaderLines)) return false;
  for (std::size_t record = 1; const auto line = lines.Next(); ++record) {
    std::string_view rest = BehindFirstComma(*line).value_or(std::string_view());
    for (std::size_t place = 0; place < FieldsInRecord; ++place) {
      const bool last = place + 1 == FieldsInRecord;
      const std::size_t end = last ? rest.size() : rest.find(',');
      if (end == std::string_view::npos) {
        ThrowRecord(std::errc::no_message_available, record, "fewer than 264 fields");
      }
      const std::string_view field = rest.substr(0, end);
      const auto number = values::FieldToInt16(field);
      if (!number) {
        ThrowRecord(std::errc::result_out_of_range, record,
                    "field " + std::to_string(place + 1) + " does not fit 16 bits");
      }
      take(place, field, *number);
      if (!last) rest.remove_prefix(end + 1);
    }
  }
  return true;
}

int ChannelOf(std::string_view line) {
  const bool digit = !line.empty() && line.back() >= '0' && line.back() <= '9';
  return digit ? line.back() - '0' : 0;
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
  const auto mode = Behind(ModeLabel, header[9]);
  if (header[1] != KindText(DataFileKind::DownloadPages)) return {FileKind::WrongKind};
  if (mode == "0") return {FileKind::Bin};
  if (mode == "1") return {FileKind::Linear, ChannelOf(header[10])};
  return {FileKind::OtherMode};
}

std::optional<Samples> ReadSingle(std::string_view text) {
  Samples points;
  const auto take = [&](std::size_t, std::string_view, std::int16_t number) { points.push_back(number); };
  if (!ReadRecords(text, take)) return std::nullopt;
  return points;
}

bool ReadDouble(std::string_view text, DoubleSeries& series) {
  series = {};
  DoubleSeries read;
  const auto take = [&](std::size_t place, std::string_view field, std::int16_t number) {
    if (place % 2 != 0) {
      read.y.push_back(number);
      return;
    }
    if (field == "BP") series.pushes.push_back(static_cast<double>(read.x.size()));
    read.x.push_back(number);
  };
  if (!ReadRecords(text, take)) return false;
  series.x = std::move(read.x);
  series.y = std::move(read.y);
  return true;
}

}  // namespace bexlow::files
