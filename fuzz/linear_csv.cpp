// Data files as the CSV file is made from them, against a plain way to make it.
#include <string>
#include <vector>

#include "Target.h"
#include "download/LinearCsv.h"

namespace bexlow::fuzz {

namespace {

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
  if (lines.size() < 12 || lines[10].empty()) return text;
  const char channel = lines[10].back();
  if (channel < '1' || channel > '3') return text;
  text += channel == '1' ? "X angle\r\n" : channel == '2' ? "Y angle\r\n" : "X angle,Y angle\r\n";
  for (std::size_t i = 12; i < lines.size(); ++i) text += SampleLines(lines[i], channel == '3');
  return text;
}

}  // namespace

void Try(std::string_view text) {
  const auto lines = Lines(text);
  std::string csv;
  const bool taken = Takes([&] { download::AppendLinearCsv(text, csv); });
  Require(taken == (lines.size() >= 12), "a whole header is enough");
  Require(csv == PlainCsv(lines), "the CSV text is what the plain way makes");
}

}  // namespace bexlow::fuzz
