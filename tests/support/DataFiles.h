// Files as text, and data files as a download writes them, or spoilt.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace bexlow::test {

/// A file as bytes; empty if it cannot be read.
inline std::string FileText(const std::filesystem::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// Lines without their ends.
inline std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line.substr(0, line.find('\r')));
  return lines;
}

/// The twelve header lines.
inline std::string Header(const std::string& mode = "1", const std::string& channel = "3",
                          const std::string& kind = "Download Pages") {
  return "1\r\n" + kind + "\r\n3\r\n4\r\nLaunch Time: 03/09/2004 14:05:07\r\n" +
         "Firmware Sampling Frequency: 7.5\r\n7\r\n8\r\n9\r\nBin/Linear Mode = " + mode +
         "\r\nLinear Channel = " + channel + "\r\nPage,X Data-->,Y Data-->\r\n";
}

/// A record of so many fields, one text in all of them but at one place.
inline std::string Record(const std::string& page, std::size_t fields, const std::string& field,
                          std::size_t place = 999, const std::string& other = {}) {
  std::string text = page;
  for (std::size_t i = 0; i < fields; ++i) text += "," + (i == place ? other : field);
  return text + "\r\n";
}

inline std::string Replaced(std::string text, const std::string& part, const std::string& by) {
  return text.replace(text.find(part), part.size(), by);
}

inline std::string WithLineFeeds(std::string text) {
  std::erase(text, '\r');
  return text;
}

/// The first lines of a text.
inline std::string Shortened(const std::string& text, std::size_t lines) {
  std::size_t end = 0;
  for (; lines > 0; --lines) end = text.find('\n', end) + 1;
  return text.substr(0, end);
}

}  // namespace bexlow::test
