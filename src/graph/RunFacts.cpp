#include "graph/RunFacts.h"

#include "graph/Lines.h"
#include "live/NumberText.h"

namespace bexlow::graph {

namespace {

constexpr double GreatestFrequency = 6553.5;  // a word of tenths

std::string_view Behind(std::string_view start, std::string_view line) {
  return line.starts_with(start) ? line.substr(start.size()) : std::string_view();
}

}  // namespace

RunFacts ReadRunFacts(std::string_view text) {
  std::string_view header[10];
  LineReader lines(text);
  for (auto& line : header) line = lines.Next().value_or(std::string_view());
  if (header[1] != "Download Pages") return {};
  RunFacts facts{std::string(Behind("Launch Time: ", header[4])), std::nullopt};
  const auto frequency = live::WholeNumber(Behind("Firmware Sampling Frequency: ", header[5]));
  const bool isLinear = header[9] == "Bin/Linear Mode = 1";
  if (isLinear && frequency && *frequency > 0 && *frequency <= GreatestFrequency) facts.frequency = frequency;
  return facts;
}

}  // namespace bexlow::graph
