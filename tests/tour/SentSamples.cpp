#include "tour/SentSamples.h"

#include <cmath>
#include <cstdlib>
#include <sstream>

namespace bexlow::tour {

namespace {

/// A number of one decimal at most, as files hold it.
std::string Tenths(double degrees) {
  const auto tenths = static_cast<long>(std::nearbyint(degrees * 10));
  const long size = std::labs(tenths);
  if (size == 0) return "0";
  std::string text = size >= 10 ? std::to_string(size / 10) : "";
  if (size % 10 != 0) text += "." + std::to_string(size % 10);
  return (tenths < 0 ? "-" : "") + text;
}

}  // namespace

std::vector<std::string> LinesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  return lines;
}

std::string AngleOfWord(int word, double fullScale) {
  return Tenths((word > 32767 ? word - 65535 : word) / 32767.0 * fullScale);
}

std::vector<int> Numbers(const std::string& line) {
  std::string plain = line;
  for (auto& c : plain) c = c == '-' || (c >= '0' && c <= '9') ? c : ' ';
  std::istringstream stream(plain);
  std::vector<int> numbers;
  for (int number = 0; stream >> number;) numbers.push_back(number);
  return numbers;
}

}  // namespace bexlow::tour
