// Decoded pages, CSV files, header values that no story writes, pairs of bins, and rows of the table of runs.
#include "files/LinearCsv.h"
#include "files/RunEntry.h"
#include "graph/Report.h"
#include "logic/Expect.h"
#include "support/DataFiles.h"
#include "values/NumberText.h"

namespace bexlow::download {
using test::Header, test::Record, test::Replaced, test::Shortened, test::WithLineFeeds;
using PageArray = std::array<std::uint8_t, files::PageBytes>;

std::vector<std::string> FieldsOf(std::string text) {
  std::ranges::replace(text, ',', '\n');
  return test::LinesOf(text);
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
  PageArray page{};
  page[2] = 0xFF;
  page[3] = 0xFE;
  page[263] = 1;
  const auto bins = FieldsOf(files::DecodePage(page, 0, 9));
  ASSERT_EQ(bins.size(), 132u);
  EXPECT_EQ(bins[0] + " " + bins[1] + " " + bins[131], "0 65534 1");

  page.fill(0x7F);
  EXPECT_EQ(FieldsOf(files::DecodePage(page, 1, 3)), std::vector<std::string>(264, "BP"));
  page[1] = page[2] = 126;  // no pushes: only X of the first pair and only Y of the second are 127
  page[262] = page[263] = 255;
  const auto pairs = files::DecodePage(page, 1, 3);
  EXPECT_EQ(std::ranges::count(pairs, ','), 263);
  EXPECT_TRUE(pairs.starts_with("178.6,88.6,177.2,89.3,BP,BP,") && pairs.ends_with("BP,0,0")) << pairs;
}

TEST(IsBlankPage, LooksAtSixBytesOnly) {
  for (std::size_t i = 0; i <= 6; ++i) {
    PageArray page;
    page.fill(0xFF);
    page[i] = 0xFE;
    EXPECT_EQ(files::IsBlankPage(page), i == 6) << i;
  }
}

TEST(DataFile, HeaderOfWhatWasNotRetrievedOrIsStrange) {
  EXPECT_EQ(files::DataFileHeader(files::DataFileKind::Accelerometers, "4", {}, 0, 0),
            "Quornell Bexlow Data File Version 4\r\nAccelerometers\r\nFirmware Version: \r\n"
            "Serial Number: 0\r\nLaunch Time: \r\nFirmware Sampling Frequency: \r\nChannel Gains: \r\n"
            "Channel Offsets: \r\nTares: \r\nTime(seconds),Acc X,Acc Y,Acc Z\r\n");
  files::DownloadHeader header;
  files::FillFirmware(std::vector<std::uint8_t>{0, 5, 0, 7}, header);
  EXPECT_EQ(header.FirmwareVersionText + " " + header.SamplingFrequencyText, "0.005 0.7") << "leading zeros";
  EXPECT_EQ(files::LaunchTimeText(255, 0, 65535, 255, 0, 9), "255/00/65535 255:00:09");
}

std::string Lines11(char channel) { return Shortened(Header("1", {channel}), 11); }

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
    std::string made;
    files::AppendLinearCsv(Lines11(channel) + records, made);
    EXPECT_EQ(made, Lines11(channel) + csv) << what;
  }
}

TEST(CsvFileName, CutsFourCharactersOfTheNameAndNeverOfTheFolder) {
  EXPECT_EQ(files::CsvFileName("/Data Files/a long name"), "/Data Files/a long .csv");
  EXPECT_EQ(files::CsvFileName("Data Files/run1"), "Data Files/.csv");
  EXPECT_EQ(files::CsvFileName("Läufe/zweiäöüß"), "Läufe/zwei.csv");
  for (const char* name : {"qbx", "/Data Files/abc", "/Data Files/"})
    FailureOf(std::errc::invalid_argument, [&] { files::CsvFileName(name); });
}

TEST(BinPages, FieldsMustBeNumbers) {
  const auto good = Record("2", 132, "1");
  using Row = std::pair<std::string, std::string>;
  for (const auto& [record, partner] :
       {Row{Record("1", 131, "1"), good}, Row{Record("1", 133, "1"), good},
        Row{Record("1", 132, "1", 5, ""), good}, Row{Record("1", 132, "1", 5, "1x"), good},
        Row{Record("1", 132, "1", 5, "1e999"), good}, Row{Record("1", 132, "1"), "no comma\r\n"}}) {
    const auto text = record + partner;
    const auto words = FailureOf(std::errc::invalid_argument, [&] { files::FindPair(text, 1); });
    EXPECT_TRUE(words.starts_with(partner == good ? "Line 1: " : "Line 2: ")) << words;
  }
}

TEST(BinPages, BinsSpreadOverTheDegrees) {
  for (const auto& [bin, x, y] :
       {std::tuple{0U, -180, -90}, {1, -177, -89}, {65, -2, -1}, {66, 0, 0}, {67, 3, 2}, {131, 178, 90}})
    EXPECT_EQ(std::tuple(files::DegreeOfBin(bin, 361), files::DegreeOfBin(bin, 181)), std::tuple(x, y));
  files::BinPoints points;
  for (std::size_t bin = 0; bin < files::BinCount; ++bin) points[bin] = static_cast<double>(bin) + 1;
  const auto arrays = files::SpreadOverDegrees(points, points);
  const auto& x = arrays.XDegrees;
  const auto& y = arrays.YDegrees;
  EXPECT_EQ(std::tuple(x[0], x[358], y[180]), std::tuple(1, 132, 132));
  EXPECT_EQ(std::ranges::count(x, 0.0), 361 - 132) << "no two bins on one degree";
  EXPECT_EQ(std::ranges::count(y, 0.0), 181 - 132);
}

std::string Said(const std::string& text) {
  const auto tail = text.size() - std::min(text.size(), files::TailBytes);
  const auto entry = files::ReadRunEntry(text.substr(0, files::HeadBytes), text.substr(tail), text.size());
  const auto seconds = entry.seconds ? values::PlainNumberText(*entry.seconds) : "";
  return entry.launched + "|" + entry.serialNumber + "|" + entry.kind + "|" + seconds + "|" +
         std::to_string(entry.lastPage) + "|" + entry.remark;
}

/// 400 pages, 741 KiB, without one of them.
std::string Without(int missing) {
  std::string text = Header();
  for (int page = 1; page <= 400; ++page)
    if (page != missing) text += Record(std::to_string(page), 264, "-177.2");
  return text;
}

std::string Recording(const std::string& kind, const std::string& samples) {
  return Shortened(Header("", "", kind), 9) +
         (kind == "Angles" ? "Time(seconds),Angle X,Angle Y\r\n" : "Time(seconds),Acc X,Acc Y,Acc Z\r\n") +
         samples;
}

/// Times in hundredths and tenths of each axis, axes parted by bars, and what is told.
std::string Recorded(const std::string& text) {
  files::Run run;
  if (!files::ReadRecording(text, run)) return "refused";
  std::string said;
  for (std::size_t i = 0; i <= run.axes.size(); ++i) {
    for (const auto value : i == 0 ? run.hundredths : run.tenths[i - 1]) said += std::to_string(value) + " ";
    said += "|";
  }
  return said + run.remarks;
}

TEST(Recordings, KeepWhatCanBeReadAndTellTheRest) {
  const std::string first = "0,16.5,-2.7\r\n", last = ".02,-179.9,90\r\n", both = "0 2 |165 -1799 |-27 900 |";
  for (const auto* line : {"x,1,2", ",1,2", "1,x,2", "1,1,", "1,1", "1", "", "1,1,2,3", "1,1,2x", "1,1,1e999",
                           "1,nan,2", "1,inf,2", "1,-32768.1,2", "1,1,32769", "-.01,1,2", "10000001,1,2"})
    EXPECT_EQ(Recorded(Recording("Angles", first + line + "\r\n" + last)), both + "; line 12 is damaged")
        << line;
  using Row = std::tuple<const char*, std::string, std::string>;
  for (const auto& [what, text, said] :
       {Row{"both", Recording("Angles", first + last), both},
        Row{"line feeds alone", WithLineFeeds(Recording("Angles", first + last)), both},
        Row{"three", Recording("Accelerometers", "0,330,408,322\r\n.5,0,1024,32767\r\n"),
            "0 50 |3300 0 |4080 10240 |3220 327670 |"},
        Row{"four fields", Recording("Accelerometers", first), "||||; line 11 is damaged"},
        Row{"several", Recording("Angles", "a\r\n" + first + "b\r\n" + last + "c"),
            both + "; 2 lines are damaged, the first is line 11; the last line is torn"},
        Row{"torn within a number", Recording("Angles", first + last + "1,10.5,-7"),
            both + "; the last line is torn"},
        Row{"stopped and started", Recording("Angles", "1,1,1\r\n3,2,2\r\n.5,3,3\r\n1,4,4\r\n"),
            "100 300 350 400 |10 20 30 40 |10 20 30 40 |; line 13 starts the time again"},
        Row{"a pause", Recording("Angles", "9,1,1\r\n11,2,2\r\n13.01,3,3\r\n"),
            "900 1100 1301 |10 20 30 |10 20 30 |; line 13 comes after a pause"},
        Row{"a time beyond all", Recording("Angles", "10000000,1,1\r\n1,2,2\r\n"),
            "1000000000 |10 |10 |; line 12 is damaged"},
        Row{"empty", Recording("Angles", ""), "|||"},
        Row{"a torn header", Shortened(Recording("Angles", ""), 9), "refused"},
        Row{"a download", Header() + Record("1", 264, "1"), "refused"}, Row{"nothing", "", "refused"}})
    EXPECT_EQ(Recorded(text), said) << what;
}

TEST(Recordings, KnowTheirTimesAndNumbers) {
  files::Run run;
  ASSERT_TRUE(files::ReadRecording(
      Recording("Accelerometers", ".1,330,0,0\r\n.2,531,0,0\r\n.2,332,0,0\r\n1.2,334,0,0\r\n"), run));
  for (const auto& [sample, seconds] : {std::pair{0.0, 0.1}, {0.5, 0.15}, {2.5, 0.7}, {3, 1.2}}) {
    EXPECT_DOUBLE_EQ(files::SecondsAt(run, sample), seconds);
    EXPECT_DOUBLE_EQ(files::SampleAtSecond(run, seconds), sample);
  }
  for (const auto& [asked, sample, seconds] : {std::tuple{-1.0, 0, 0.1}, std::tuple{9.0, 3, 1.2}})
    EXPECT_EQ(std::tuple(files::SampleAtSecond(run, asked), files::SecondsAt(run, asked)),
              std::tuple(sample, seconds));
  EXPECT_EQ(graph::NumbersLine(graph::NumbersInView(run, 0, 0, 3, 333), 333),
            "In view: min 330.0, mean 381.8, max 531.0; above 333: 50.0 %, below: 50.0 %");
}

TEST(RunEntry, SaysWhatBothEndsProveAndNoMore) {
  const std::string launch = "2004-03-09 14:05:07|", full = Record("1", 264, "1"), bin = launch + "|Bin|";
  const std::string both = launch + "|Linear X and Y|", xOnly = launch + "|Linear X|";
  using Row = std::tuple<const char*, std::string, std::string>;
  for (const auto& [what, text, said] :
       {Row{"one page", Header() + full, both + "17.6|1|"},
        Row{"a serial number", Replaced(Header(), "\r\n4\r\n", "\r\nSerial Number: 417\r\n") + full,
            launch + "417|Linear X and Y|17.6|1|"},
        Row{"no date", Replaced(Header(), "03/09", "13/09") + full, "||Linear X and Y|17.6|1|"},
        Row{"no frequency", Replaced(Header(), "7.5", "0") + full, both + "|1|"},
        Row{"one channel", Header("1", "1") + full, xOnly + "35.2|1|"},
        Row{"an end that was not written", Header() + full + Record("2", 264, "0", 2, "3"),
            both + "17.8666666666667|2|"},
        Row{"a missing page", Header() + full + Record("3", 264, "1"), both + "52.8|3|page 2 is missing"},
        Row{"a page twice", Header() + full + full, both + "|1|page 1 is there twice"},
        Row{"a torn record", Header() + full + "2,1,1", both + "17.6|1|ends in the middle of a record"},
        Row{"a last line without an end", Header() + full + "2" + full.substr(1, full.size() - 3),
            both + "35.2|2|"},
        Row{"a last page without a sample", Header() + full + Record("5", 264, "0"),
            both + "17.6|5|pages 2 to 4 are missing"},
        Row{"a short record", Header() + full + "2,1,1\r\n", both + "|2|the last record is damaged"},
        Row{"a short record before the last", Header() + full + "2,1\r\n" + Record("3", 264, "1"),
            both + "|3|a record is damaged"},
        Row{"a line without an end", Header() + full + "2" + Record("", 40'000, "1").substr(0, 79'000),
            both + "|0|ends without a record"},
        Row{"no page", Header(), both + "|0|holds no page"},
        Row{"a torn header", test::Shortened(Header(), 11), both + "|0|ends within its header"},
        Row{"bins", Header("0") + Record("1", 132, "9") + Record("2", 132, "9"), bin + "|2|"},
        Row{"a bin that is no number", Header("0") + Record("1", 132, "9", 7, "x") + Record("2", 132, "9"),
            bin + "|2|a record is damaged"},
        Row{"a short bin page", Header("0") + Record("1", 131, "9"), bin + "|1|the last record is damaged"},
        Row{"four channels", Header("1", "4") + "1,\r\n",
            launch + "|Linear||1|no samples: mode or channels are unknown"},
        Row{"a gap in the middle is not seen", Without(20), both + "7040|400|"},
        Row{"pages that begin anew", Header() + Record("401", 264, "1") + Without(0).substr(Header().size()),
            both + "|400|the page numbers do not rise"},
        Row{"a gap near the end", Without(390), both + "7040|400|page 390 is missing"},
        Row{"a gap at the beginning", Without(1), both + "7040|400|page 1 is missing"},
        Row{"a recording", Recording("Angles", ".5,1,2\r\n2,1,2\r\n3.75,1,2\r\n1"),
            "||Angles|3.25|0|the last line is torn"},
        Row{"sampling was started again", Recording("Angles", "1,1,1\r\n3,2,2\r\n.5,3,3\r\n2.25,4,4\r\n"),
            "||Angles|4.25|0|line 13 starts the time again"},
        Row{"more than was read", Recording("Angles", std::string(files::HeadBytes, '1')),
            "||Angles||0|its length is told when it is opened"},
        Row{"an empty recording", Recording("Accelerometers", ""), "||Accelerometers||0|holds no sample"},
        Row{"nothing", "", "||||0|empty"},
        Row{"a picture", "\x89PNG\r\n\x1a\n", "||||0|not a data file"}})
    EXPECT_EQ(Said(text), said) << what;
}

}  // namespace bexlow::download
