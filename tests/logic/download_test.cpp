// Data files as they are written: header, records, decoded pages, CSV.
#include <algorithm>
#include <cmath>
#include <vector>

#include "download/DataFile.h"
#include "download/LinearCsv.h"
#include "download/PageDecoder.h"
#include "logic/Expect.h"

namespace bexlow::download {
namespace {

using PageArray = std::array<std::uint8_t, PageBytes>;

PageArray Filled(std::uint8_t byte) {
  PageArray page;
  page.fill(byte);
  return page;
}

std::vector<std::string> FieldsOf(const std::string& text) {
  std::vector<std::string> fields(1);
  for (const char c : text) {
    if (c == ',')
      fields.emplace_back();
    else
      fields.back() += c;
  }
  return fields;
}

TEST(DecodePage, AngleBytesOfTheTable) {
  struct Row {
    std::uint8_t byte;
    const char *x, *y;
  };
  for (const auto& [byte, x, y] : std::vector<Row>{{0, "0", "0"},
                                                   {1, "1.4", ".7"},
                                                   {8, "11.2", "5.6"},
                                                   {16, "22.5", "11.2"},
                                                   {24, "33.8", "16.9"},
                                                   {64, "90", "45"},
                                                   {127, "178.6", "89.3"},
                                                   {128, "180", "90"},
                                                   {129, "-177.2", "-88.6"},
                                                   {191, "-90", "-45"},
                                                   {247, "-11.2", "-5.6"},
                                                   {254, "-1.4", "-.7"},
                                                   {255, "0", "0"}}) {
    SCOPED_TRACE(int{byte});
    EXPECT_EQ(FieldsOf(DecodePage(Filled(byte), 1, 1)), std::vector<std::string>(264, x));
    EXPECT_EQ(FieldsOf(DecodePage(Filled(byte), 1, 2)), std::vector<std::string>(264, y));
  }
}

/// The rule once more, in whole numbers: tenths = steps * fullScale * 10 / 128, halves to the even tenth.
std::string AngleText(int byte, int fullScale) {
  const int steps = byte > 128 ? 255 - byte : byte;
  const int scaled = steps * fullScale * 10;
  int tenths = scaled / 128;
  const int rest = scaled % 128;
  if (rest > 64 || (rest == 64 && tenths % 2 == 1)) ++tenths;
  if (tenths == 0) return "0";
  std::string text = byte > 128 ? "-" : "";
  if (tenths >= 10) text += std::to_string(tenths / 10);
  if (tenths % 10 != 0) text += "." + std::to_string(tenths % 10);
  return text;
}

TEST(DecodePage, All256BytesOnBothAxes) {
  PageArray page{};
  for (std::size_t i = 0; i < 256; ++i) page[i] = static_cast<std::uint8_t>(i);
  const auto x = FieldsOf(DecodePage(page, 1, 1));
  const auto y = FieldsOf(DecodePage(page, 1, 2));
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(x[static_cast<std::size_t>(byte)], AngleText(byte, 180)) << byte;
    EXPECT_EQ(y[static_cast<std::size_t>(byte)], AngleText(byte, 90)) << byte;
  }
}

TEST(DecodePage, BinsAndPairs) {
  PageArray page = Filled(0);
  page[2] = 0xFF;
  page[3] = 0xFE;
  page[263] = 1;
  auto bins = FieldsOf(DecodePage(page, 0, 9));
  ASSERT_EQ(bins.size(), 132u);
  EXPECT_EQ(bins[0], "0");
  EXPECT_EQ(bins[1], "65534");
  EXPECT_EQ(bins[131], "1");

  page = Filled(0x7F);
  EXPECT_EQ(FieldsOf(DecodePage(page, 1, 3)), std::vector<std::string>(264, "BP"));
  page[1] = 126;  // no mark: X alone is 127
  page[2] = 126;  // no mark: Y alone is 127
  page[262] = 255;
  page[263] = 255;
  const auto pairs = FieldsOf(DecodePage(page, 1, 3));
  ASSERT_EQ(pairs.size(), 264u);
  const std::vector<std::string> start(pairs.begin(), pairs.begin() + 6);
  EXPECT_EQ(start, (std::vector<std::string>{"178.6", "88.6", "177.2", "89.3", "BP", "BP"}));
  EXPECT_EQ(pairs[262] + pairs[263], "00");

  for (const auto& [mode, channels] :
       std::vector<std::pair<double, double>>{{1, 0}, {1, 4}, {2, 1}, {255, 3}, {0.5, 1}}) {
    EXPECT_EQ(DecodePage(page, mode, channels), "");
  }
}

TEST(IsBlankPage, LooksAtSixBytesOnly) {
  PageArray page = Filled(0xFF);
  EXPECT_TRUE(IsBlankPage(page));
  page[6] = 0;
  EXPECT_TRUE(IsBlankPage(page));
  for (std::size_t i = 0; i < 6; ++i) {
    PageArray written = Filled(0xFF);
    written[i] = 0xFE;
    EXPECT_FALSE(IsBlankPage(written)) << i;
  }
}

DownloadHeader Example() {
  DownloadHeader header;
  EXPECT_TRUE(FillFirmware(std::vector<std::uint8_t>{0x0C, 0xE4, 0, 75}, header));
  EXPECT_TRUE(FillHeader1(std::vector<std::uint8_t>{1, 0xA1, 75, 9, 7, 0xD4, 14, 5, 7, 3}, header));
  EXPECT_TRUE(FillHeader2(
      std::vector<std::uint8_t>{1, 0x43, 1, 0x98, 1, 0x42, 1, 0x43, 1, 0x44, 1, 0x42, 0xF1, 0xC7, 0, 0},
      header));
  return header;
}

TEST(DataFile, HeadersToTheByte) {
  const std::string shared =
      "Firmware Version: 3.3\r\nSerial Number: 417\r\nLaunch Time: 03/09/2004 14:05:07\r\n"
      "Firmware Sampling Frequency: 7.5\r\nChannel Gains: X=323 Y=408 Z=322\r\n"
      "Channel Offsets: X=323 Y=324 Z=322\r\nTares: X=61895 Y=0\r\n";
  const std::string first = "Quornell Bexlow Data File Version 3.2.3\r\n";
  struct Row {
    DataFileKind kind;
    double mode, channels;
    std::string line2, rest;
  };
  const auto pages = DataFileKind::DownloadPages;
  for (const auto& [kind, mode, channels, line2, rest] : std::vector<Row>{
           {pages, 1, 3, "Download Pages",
            "Bin/Linear Mode = 1\r\nLinear Channel = 3\r\nPage,X Data-->,Y Data-->\r\n"},
           {pages, 1, 1, "Download Pages", "Bin/Linear Mode = 1\r\nLinear Channel = 1\r\nPage,X Data-->\r\n"},
           {pages, 1, 2, "Download Pages", "Bin/Linear Mode = 1\r\nLinear Channel = 2\r\nPage,Y Data-->\r\n"},
           {pages, 0, 7, "Download Pages", "Bin/Linear Mode = 0\r\nLinear Channel = 7\r\nPage,Data-->\r\n"},
           {pages, 1, 4, "Download Pages", "Bin/Linear Mode = 1\r\nLinear Channel = 4\r\n\r\n"},
           {pages, 2, 3, "Download Pages", "Bin/Linear Mode = 2\r\nLinear Channel = 3\r\n\r\n"},
           {DataFileKind::Accelerometers, 1, 3, "Accelerometers", "Time(seconds),Acc X,Acc Y,Acc Z\r\n"},
           {DataFileKind::Angles, 1, 3, "Angles", "Time(seconds),Angle X,Angle Y\r\n"}}) {
    SCOPED_TRACE(rest);
    EXPECT_EQ(DataFileHeader(kind, "3.2.3", Example(), mode, channels),
              first + line2 + "\r\n" + shared + rest);
  }
  EXPECT_EQ(
      DataFileHeader(DataFileKind::Angles, "3.2.3", {}, 0, 0),
      first +
          "Angles\r\nFirmware Version: \r\nSerial Number: 0\r\nLaunch Time: \r\nFirmware Sampling Frequency: "
          "\r\nChannel Gains: \r\nChannel Offsets: \r\nTares: \r\nTime(seconds),Angle X,Angle Y\r\n");
}

TEST(DataFile, RepliesOfAWrongLengthChangeNothing) {
  DownloadHeader header = Example();
  for (const std::size_t length : {0u, 3u, 5u, 9u, 11u, 15u, 17u}) {
    const std::vector<std::uint8_t> reply(length, 1);
    EXPECT_FALSE(FillFirmware(reply, header) || FillHeader1(reply, header) || FillHeader2(reply, header))
        << length;
  }
  EXPECT_EQ(DataFileHeader(DataFileKind::Angles, "", header, 0, 0),
            DataFileHeader(DataFileKind::Angles, "", Example(), 0, 0));
  EXPECT_TRUE(FillFirmware(std::vector<std::uint8_t>{0, 5, 0, 7}, header));
  EXPECT_EQ(header.FirmwareVersionText + " " + header.SamplingFrequencyText, "0.005 0.7") << "with the zero";
  EXPECT_EQ(LaunchTimeText(255, 0, 65535, 255, 0, 9), "255/00/65535 255:00:09");
}

TEST(DataFile, Records) {
  EXPECT_EQ(PageRecord(2047, "1,.5"), "2047,1,.5\r\n");
  EXPECT_EQ(PageRecord(1, ""), "1,\r\n");
  live::LiveSample sample;
  sample.AccX = 330;
  sample.AccZ = 1023;
  sample.AngleX = -0.5;
  sample.AngleY = 12.3;
  EXPECT_EQ(AccelerometersRecord(sample, ".05"), ".05,330,0,1023\r\n");
  EXPECT_EQ(AnglesRecord(sample, "1.2"), "1.2,-.5,12.3\r\n");
}

std::string Lines11(char channel) {
  std::string text;
  for (int line = 1; line <= 10; ++line) text += "line," + std::to_string(line) + "\r\n";
  return text + "Linear Channel = " + channel + "\r\n";
}

TEST(LinearCsv, OneSampleALine) {
  const std::string heads = "Page,heads\r\n";
  struct Row {
    const char* what;
    char channel;
    std::string records, csv;
  };
  for (const auto& [what, channel, records, csv] : std::vector<Row>{
           {"X", '1', heads + "1,178.6,-.7\r\n2,0,5\r\n", "X angle\r\n178.6\r\n-.7\r\n0\r\n5\r\n"},
           {"Y", '2', heads + "1,7\r\n", "Y angle\r\n7\r\n"},
           {"both", '3', heads + "1,1,2,BP,BP\r\n2,3,4\r\n", "X angle,Y angle\r\n1,2\r\nBP,BP\r\n3,4\r\n"},
           {"no record", '3', heads, "X angle,Y angle\r\n"},
           {"other channel", '4', heads + "1,1,2\r\n", ""},
           {"odd fields", '3', heads + "1,1,2,3\r\n2,9\r\n3,5,6\r\n", "X angle,Y angle\r\n1,2\r\n5,6\r\n"},
           {"LF alone, no last end", '1', "Page\n1,1,2\n2,3", "X angle\r\n1\r\n2\r\n3\r\n"},
           {"nothing behind a number", '1', heads + "1,\r\n\r\nword\r\n2,8\r\n", "X angle\r\n8\r\n"},
           {"empty fields", '1', heads + "1,,4,\r\n", "X angle\r\n\r\n4\r\n\r\n"}}) {
    SCOPED_TRACE(what);
    EXPECT_EQ(LinearCsv(Lines11(channel) + records), Lines11(channel) + csv);
  }
}

TEST(LinearCsv, AFullPageHasEachSample) {
  const std::string record = PageRecord(1, DecodePage(Filled(1), 1, 3));
  const std::string csv = LinearCsv(Lines11('3') + "\r\n" + record + record);
  EXPECT_EQ(std::ranges::count(csv, '\n'), 12 + 2 * 132);
}

TEST(LinearCsv, ATornHeaderKeepsWhatWasRead) {
  std::string csv;
  const auto words = FailureOf(std::errc::no_message_available, [&] { AppendLinearCsv("a\r\nb", csv); });
  EXPECT_NE(words.find("line 3"), std::string::npos) << words;
  EXPECT_EQ(csv, "a\r\nb\r\n");
  FailureOf(std::errc::no_message_available, [] { LinearCsv(Lines11('1')); });
  FailureOf(std::errc::no_message_available, [] { LinearCsv(""); });
}

TEST(CsvFileName, CutsFourCharacters) {
  EXPECT_EQ(CsvFileName("a/run1.qbx"), "a/run1.csv");
  EXPECT_EQ(CsvFileName("run1"), ".csv");
  EXPECT_EQ(CsvFileName("a long name"), "a long .csv");
  FailureOf(std::errc::invalid_argument, [] { CsvFileName("qbx"); });
}

}  // namespace
}  // namespace bexlow::download
