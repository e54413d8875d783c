// The text of a data file: header lines, records, and the header values of a download.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "values/LoggerValues.h"

namespace bexlow::files {

/// Header values that a download retrieved; kept for the run of the program.
struct DownloadHeader {
  std::string FirmwareVersionText;
  double SerialNumber = 0;
  std::string LaunchTimeText;
  std::string SamplingFrequencyText;
  std::string ChannelGainsText;
  std::string ChannelOffsetsText;
  std::string TaresText;
};

enum class DataFileKind { DownloadPages, Accelerometers, Angles };

/// The kind as line 2 names it: "Download Pages", "Accelerometers", "Angles".
std::string_view KindText(DataFileKind kind);

/// The beginnings of the header lines that are read back.
inline constexpr std::string_view SerialNumberLabel = "Serial Number: ";
inline constexpr std::string_view LaunchTimeLabel = "Launch Time: ";
inline constexpr std::string_view SamplingFrequencyLabel = "Firmware Sampling Frequency: ";
inline constexpr std::string_view ModeLabel = "Bin/Linear Mode = ";
inline constexpr std::string_view ChannelLabel = "Linear Channel = ";
/// The column names in line 12; empty for a mode or number of channels that has no record layout.
std::string_view ColumnHeads(double mode, double channels);

/// All header lines, each with CR LF. Only "Download Pages" uses mode and channels.
std::string DataFileHeader(DataFileKind kind, std::string_view programVersion, const DownloadHeader& header,
                           double BinLinearMode, double LinearChannels);

/// One line of a download: page number, comma, decoded page, CR LF.
std::string PageRecord(std::int32_t page, std::string_view pageDataText);
/// One sample line, CR LF at its end.
std::string AccelerometersRecord(const values::LiveSample& sample, std::string_view time);
std::string AnglesRecord(const values::LiveSample& sample, std::string_view time);

/// Each stores the reply of its block, which must have the block's length.
void FillFirmware(std::span<const std::uint8_t> reply, DownloadHeader& header);  ///< 4: version, frequency
void FillHeader1(std::span<const std::uint8_t> reply, DownloadHeader& header);   ///< 10: cells 100 to 109
void FillHeader2(std::span<const std::uint8_t> reply, DownloadHeader& header);   ///< 16: cells 2 to 17

/// 03/09/2004 14:05:07: month first, two digits each, the year as it is.
std::string LaunchTimeText(int month, int day, int year, int hour, int minute, int second);

/// A launch time of a file's header, which is month first, as our own boxes and titles tell it:
/// 2004-03-09 14:05:07 for 03/09/2004 14:05:07. Empty for a text that is no such time.
std::string ReadableLaunchTime(const std::string& launchTimeText);

/// What the header of a download says about its run.
struct RunFacts {
  std::string serialNumber;         ///< empty if the file has none
  std::string launch;               ///< as ReadableLaunchTime tells it; empty if the file has none
  std::optional<double> frequency;  ///< samples a second of a Linear run
};

/// Of a "Download Pages" file; empty for other kinds. A frequency of 0 or less is ignored.
RunFacts ReadRunFacts(std::string_view text);

}  // namespace bexlow::files
