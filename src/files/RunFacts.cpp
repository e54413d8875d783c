#include "files/RunFacts.h"

#include <cstdio>
#include <iterator>

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
  RunFacts facts{std::string(Behind(SerialNumberLabel, header[3]).value_or("")),
                 ReadableLaunchTime(Behind(LaunchTimeLabel, header[4]).value_or("")), std::nullopt};
  const auto frequency = values::WholeNumber(Behind(SamplingFrequencyLabel, header[5]).value_or(""));
  const bool isLinear = Behind(ModeLabel, header[9]) == "1";
  if (isLinear && frequency && *frequency >= LeastFrequency && *frequency <= GreatestFrequency)
    facts.frequency = frequency;
  return facts;
}

std::string LongTimeText(const std::string& launch) {
  unsigned month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
  int end = 0;
  const int fields = std::sscanf(launch.c_str(), "%2u/%2u/%5u %2u:%2u:%2u%n", &month, &day, &year, &hour,
                                 &minute, &second, &end);
  const bool isTime = fields == 6 && end == std::ssize(launch) && month >= 1 && month <= 12 && day >= 1 &&
                      day <= 31 && hour < 24 && minute < 60 && second < 60;
  if (!isTime) return {};
  char text[32];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", year, month, day, hour, minute, second);
  return text;
}

}  // namespace bexlow::files
