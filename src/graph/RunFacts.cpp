#include "graph/RunFacts.h"

#include "download/DataFile.h"
#include "download/Lines.h"
#include "live/NumberText.h"

namespace bexlow::graph {

namespace {

constexpr double LeastFrequency = 0.1, GreatestFrequency = 6553.5;  // a word of tenths

}  // namespace

RunFacts ReadRunFacts(std::string_view text) {
  using namespace download;
  std::string_view header[10];
  LineReader lines(text);
  for (auto& line : header) line = lines.Next().value_or(std::string_view());
  if (header[1] != KindText(DataFileKind::DownloadPages)) return {};
  RunFacts facts{std::string(Behind(LaunchTimeLabel, header[4]).value_or("")), std::nullopt};
  const auto frequency = live::WholeNumber(Behind(SamplingFrequencyLabel, header[5]).value_or(""));
  const bool isLinear = Behind(ModeLabel, header[9]) == "1";
  if (isLinear && frequency && *frequency >= LeastFrequency && *frequency <= GreatestFrequency)
    facts.frequency = frequency;
  return facts;
}

}  // namespace bexlow::graph
