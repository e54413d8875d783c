#include "files/DataFile.h"

#include <chrono>
#include <cstdio>
#include <iterator>

#include "files/Lines.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

using values::NumberText;
using values::PlainNumberText;

constexpr double LeastFrequency = 0.1, GreatestFrequency = 6553.5;  // a word of tenths

void AppendLine(std::string& text, std::string_view label, std::string_view value = {}) {
  text.append(label).append(value).append("\r\n");
}

std::string TwoDigits(int value) {
  const std::string text = std::to_string(value);
  return value < 10 ? "0" + text : text;
}

/// "X=a Y=b Z=c" for the given axes, from consecutive words.
std::string AxesText(std::span<const std::uint8_t> bytes, std::size_t index, std::string_view axes) {
  std::string text;
  for (const char axis : axes) {
    if (!text.empty()) text += ' ';
    text.append(1, axis).append("=").append(NumberText(values::Word(bytes, index)));
    index += 2;
  }
  return text;
}

}  // namespace

std::string_view ColumnHeads(double mode, double channels) {
  if (mode == 0) return "Page,Data-->";
  if (mode != 1) return {};
  if (channels == 1) return "Page,X Data-->";
  if (channels == 2) return "Page,Y Data-->";
  if (channels == 3) return "Page,X Data-->,Y Data-->";
  return {};
}

std::string_view KindText(DataFileKind kind) {
  constexpr std::string_view Texts[] = {"Download Pages", "Accelerometers", "Angles"};
  return Texts[static_cast<std::size_t>(kind)];
}

std::string DataFileHeader(DataFileKind kind, std::string_view programVersion, const DownloadHeader& header,
                           double BinLinearMode, double LinearChannels) {
  std::string text;
  AppendLine(text, "Quornell Bexlow Data File Version ", programVersion);
  AppendLine(text, KindText(kind));
  AppendLine(text, "Firmware Version: ", header.FirmwareVersionText);
  AppendLine(text, SerialNumberLabel, NumberText(header.SerialNumber));
  AppendLine(text, LaunchTimeLabel, header.LaunchTimeText);
  AppendLine(text, SamplingFrequencyLabel, header.SamplingFrequencyText);
  AppendLine(text, "Channel Gains: ", header.ChannelGainsText);
  AppendLine(text, "Channel Offsets: ", header.ChannelOffsetsText);
  AppendLine(text, "Tares: ", header.TaresText);
  if (kind == DataFileKind::Accelerometers) AppendLine(text, "Time(seconds),Acc X,Acc Y,Acc Z");
  if (kind == DataFileKind::Angles) AppendLine(text, "Time(seconds),Angle X,Angle Y");
  if (kind != DataFileKind::DownloadPages) return text;
  AppendLine(text, ModeLabel, NumberText(BinLinearMode));
  AppendLine(text, ChannelLabel, NumberText(LinearChannels));
  AppendLine(text, ColumnHeads(BinLinearMode, LinearChannels));
  return text;
}

std::string PageRecord(std::int32_t page, std::string_view pageDataText) {
  return NumberText(page).append(",").append(pageDataText).append("\r\n");
}

std::string AccelerometersRecord(const values::LiveSample& sample, std::string_view time) {
  std::string text(time);
  for (const double value : {sample.AccX, sample.AccY, sample.AccZ})
    text.append(",").append(NumberText(value));
  return text.append("\r\n");
}

std::string AnglesRecord(const values::LiveSample& sample, std::string_view time) {
  std::string text(time);
  for (const double value : {sample.AngleX, sample.AngleY}) text.append(",").append(NumberText(value));
  return text.append("\r\n");
}

void FillFirmware(std::span<const std::uint8_t> reply, DownloadHeader& header) {
  header.FirmwareVersionText = PlainNumberText(values::Word(reply, 0) / 1000);
  header.SamplingFrequencyText = PlainNumberText(values::Word(reply, 2) / 10);
}

void FillHeader1(std::span<const std::uint8_t> reply, DownloadHeader& header) {
  header.SerialNumber = values::Word(reply, 0);  // byte 2 is the update rate, which no header line contains
  header.LaunchTimeText = LaunchTimeText(reply[9], reply[3], static_cast<int>(values::Word(reply, 4)),
                                         reply[6], reply[7], reply[8]);
}

void FillHeader2(std::span<const std::uint8_t> reply, DownloadHeader& header) {
  // The file calls gains what the parameter map calls offsets, and the other way round.
  header.ChannelGainsText = AxesText(reply, 0, "XYZ");
  header.ChannelOffsetsText = AxesText(reply, 6, "XYZ");
  header.TaresText = AxesText(reply, 12, "XY");
}

std::string LaunchTimeText(int month, int day, int year, int hour, int minute, int second) {
  return TwoDigits(month) + "/" + TwoDigits(day) + "/" + NumberText(year) + " " + TwoDigits(hour) + ":" +
         TwoDigits(minute) + ":" + TwoDigits(second);
}

std::string ReadableLaunchTime(const std::string& launchTimeText) {
  unsigned month = 0, day = 0, year = 0, hour = 0, minute = 0, second = 0;
  int length = 0;
  const int fields = std::sscanf(launchTimeText.c_str(), "%2u/%2u/%4u %2u:%2u:%2u%n", &month, &day, &year,
                                 &hour, &minute, &second, &length);
  const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                                         std::chrono::day(day)};
  const bool isTime = fields == 6 && length == std::ssize(launchTimeText) && date.ok() && year > 0 &&
                      hour < 24 && minute < 60 && second < 60;
  if (!isTime) return {};
  char text[64];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", year, month, day, hour, minute, second);
  return text;
}

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
