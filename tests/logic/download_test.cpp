// Decoded pages, CSV files, and header values that no story writes.
#include <sstream>

#include "files/DataFile.h"
#include "files/LinearCsv.h"
#include "files/PageDecoder.h"
#include "logic/Expect.h"
#include "support/DataFiles.h"

namespace bexlow::download {
namespace {

using PageArray = std::array<std::uint8_t, files::PageBytes>;

PageArray Filled(std::uint8_t byte) {
  PageArray page;
  page.fill(byte);
  return page;
}

std::vector<std::string> FieldsOf(const std::string& text) {
  std::vector<std::string> fields;
  std::istringstream stream(text);
  for (std::string field; std::getline(stream, field, ',');) fields.push_back(field);
  return fields;
}

TEST(DecodePage, StepsAreDegreesToATenthAndHalvesGoToTheEven) {
  PageArray page{};
  std::iota(page.begin(), page.end(), std::uint8_t{0});
  const auto x = FieldsOf(files::DecodePage(page, 1, 1)), y = FieldsOf(files::DecodePage(page, 1, 2));
  ASSERT_TRUE(x.size() == 264 && y.size() == 264);
  using Row = std::tuple<std::size_t, const char*, const char*>;
  for (const auto& [byte, xText, yText] :
       {Row{0, "0", "0"}, Row{1, "1.4", ".7"}, Row{8, "11.2", "5.6"}, Row{16, "22.5", "11.2"},
        Row{24, "33.8", "16.9"}, Row{48, "67.5", "33.8"}, Row{127, "178.6", "89.3"}, Row{128, "180", "90"},
        Row{129, "-177.2", "-88.6"}, Row{247, "-11.2", "-5.6"}, Row{255, "0", "0"}, Row{257, "1.4", ".7"}})
    EXPECT_EQ(x[byte] + " " + y[byte], std::string(xText) + " " + yText) << byte;
}

TEST(DecodePage, BinsAndPairs) {
  PageArray page = Filled(0);
  page[2] = 0xFF;
  page[3] = 0xFE;
  page[263] = 1;
  const auto bins = FieldsOf(files::DecodePage(page, 0, 9));
  ASSERT_EQ(bins.size(), 132u);
  EXPECT_EQ(bins[0] + " " + bins[1] + " " + bins[131], "0 65534 1");

  page = Filled(0x7F);
  EXPECT_EQ(FieldsOf(files::DecodePage(page, 1, 3)), std::vector<std::string>(264, "BP"));
  page[1] = 126;  // no push: only X is 127
  page[2] = 126;  // no push: only Y is 127
  page[262] = 255;
  page[263] = 255;
  const auto pairs = FieldsOf(files::DecodePage(page, 1, 3));
  ASSERT_EQ(pairs.size(), 264u);
  const std::vector start(pairs.begin(), pairs.begin() + 6);
  EXPECT_EQ(start, (std::vector<std::string>{"178.6", "88.6", "177.2", "89.3", "BP", "BP"}));
  EXPECT_EQ(pairs[262] + pairs[263], "00");
}

TEST(IsBlankPage, LooksAtSixBytesOnly) {
  for (std::size_t i = 0; i <= 6; ++i) {
    PageArray page = Filled(0xFF);
    page[i] = 0xFE;
    EXPECT_EQ(files::IsBlankPage(page), i == 6) << i;
  }
}

TEST(DataFile, HeaderOfWhatWasNotRetrievedOrIsStrange) {
  const std::string empty =
      "Firmware Version: \r\nSerial Number: 0\r\nLaunch Time: \r\nFirmware Sampling Frequency: \r\n"
      "Channel Gains: \r\nChannel Offsets: \r\nTares: \r\n";
  const std::string start = "Quornell Bexlow Data File Version 4\r\n";
  EXPECT_EQ(files::DataFileHeader(files::DataFileKind::Accelerometers, "4", {}, 0, 0),
            start + "Accelerometers\r\n" + empty + "Time(seconds),Acc X,Acc Y,Acc Z\r\n");
  EXPECT_EQ(
      files::DataFileHeader(files::DataFileKind::DownloadPages, "4", {}, 0, 7),
      start + "Download Pages\r\n" + empty + "Bin/Linear Mode = 0\r\nLinear Channel = 7\r\nPage,Data-->\r\n");
  files::DownloadHeader header;
  files::FillFirmware(std::vector<std::uint8_t>{0, 5, 0, 7}, header);
  EXPECT_EQ(header.FirmwareVersionText + " " + header.SamplingFrequencyText, "0.005 0.7") << "leading zeros";
  EXPECT_EQ(files::LaunchTimeText(255, 0, 65535, 255, 0, 9), "255/00/65535 255:00:09");
}

std::string Lines11(char channel) {
  return test::Shortened(test::Header("1", {channel}), 11);
}

TEST(LinearCsv, OneSampleALine) {
  const std::string heads = "Page,heads\r\n";
  using Row = std::tuple<const char*, char, std::string, std::string>;
  for (const auto& [what, channel, records, csv] :
       {Row{"Y", '2', heads + "1,7\r\n", "Y angle\r\n7\r\n"},
        Row{"both", '3', heads + "1,1,2,BP,BP\r\n2,3,4\r\n", "X angle,Y angle\r\n1,2\r\nBP,BP\r\n3,4\r\n"},
        Row{"other channel", '4', heads + "1,1,2\r\n", ""},
        Row{"odd fields", '3', heads + "1,1,2,3\r\n2,9\r\n3,5,6\r\n", "X angle,Y angle\r\n1,2\r\n5,6\r\n"},
        Row{"LF alone, no last end", '1', "Page\n1,1,2\n2,3", "X angle\r\n1\r\n2\r\n3\r\n"},
        Row{"nothing behind a number", '1', heads + "1,\r\n\r\nword\r\n2,8\r\n", "X angle\r\n8\r\n"},
        Row{"empty fields, CR alone", '1', heads + "1,,4\r5,\r\n", "X angle\r\n\r\n4\r5\r\n\r\n"}}) {
    SCOPED_TRACE(what);
    std::string made;
    files::AppendLinearCsv(Lines11(channel) + records, made);
    EXPECT_EQ(made, Lines11(channel) + csv);
  }
}

TEST(CsvFileName, CutsFourCharactersOfTheNameAndNeverOfTheFolder) {
  EXPECT_EQ(files::CsvFileName("/Data Files/a long name"), "/Data Files/a long .csv");
  EXPECT_EQ(files::CsvFileName("Data Files/run1"), "Data Files/.csv");
  EXPECT_EQ(files::CsvFileName("Läufe/zweiäöüß"), "Läufe/zwei.csv");
  for (const char* name : {"qbx", "/Data Files/abc", "/Data Files/"})
    FailureOf(std::errc::invalid_argument, [&] { files::CsvFileName(name); });
}

}  // namespace
}  // namespace bexlow::download
