#include "files/RunFacts.h"

#include "files/DataFile.h"
#include "files/Lines.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

constexpr double LeastFrequency = 0.1, GreatestFrequency = 6553.5;  // a word of tenths

}  // namespace

RunFacts ReadRunFacts(std::string_view text) {
  std::string_view header[10];
  LineReader lines(text);
  for (auto& line : header) line = lines.Next().value_or(std::string_view());
  if (header[1] != KindText(DataFileKind::DownloadPages)) return {};
  const auto serialNumber = After(SerialNumberLabel, header[3]).value_or("");
  RunFacts facts{std::string(values::WholeNumber(serialNumber) ? serialNumber : ""),
                 ReadableLaunchTime(std::string(After(LaunchTimeLabel, header[4]).value_or(""))),
                 std::nullopt};
  const auto frequency = values::WholeNumber(After(SamplingFrequencyLabel, header[5]).value_or(""));
  const bool isLinear = After(ModeLabel, header[9]) == "1";
  if (isLinear && frequency && *frequency >= LeastFrequency && *frequency <= GreatestFrequency)
    facts.frequency = frequency;
  return facts;
}

}  // namespace bexlow::files
