// Reading data files back: series, bin pairs and button pushes, hostile files among them.
#include <algorithm>
#include <limits>
#include <vector>

#include "files/BinPages.h"
#include "files/ButtonPushes.h"
#include "files/RunFacts.h"
#include "files/Series.h"
#include "graph/ViewNumbers.h"
#include "logic/Expect.h"
#include "support/DataFiles.h"

namespace bexlow {
namespace {

using files::FileKind;
using files::ReviewCheck;
using test::Header, test::Record, test::Shortened;

std::string WithLineFeeds(std::string text) {
  std::erase(text, '\r');
  return text;
}

TEST(Files, AreTakenOrRefused) {
  using Row = std::tuple<const char*, std::string, FileKind, int, ReviewCheck>;
  for (const auto& [what, text, kind, channel, review] :
       {Row{"LF alone", WithLineFeeds(Header()), FileKind::Linear, 3, ReviewCheck::Ok},
        Row{"no channel", Header("1", "x"), FileKind::Linear, 0, ReviewCheck::NotSupported},
        Row{"mode with a tail", Header("1 "), FileKind::OtherMode, 0, ReviewCheck::NotSupported},
        Row{"Angles", Header("1", "3", "Angles"), FileKind::WrongKind, 0, ReviewCheck::Ok},
        Row{"wrong kind, 10 lines", Shortened(Header("1", "3", "Angles"), 10), FileKind::TooShort, 0,
            ReviewCheck::TooShort},
        Row{"binary", std::string(5000, '\0'), FileKind::TooShort, 0, ReviewCheck::TooShort}}) {
    SCOPED_TRACE(what);
    const auto check = files::CheckFile(text);
    EXPECT_EQ(check.kind, kind);
    EXPECT_EQ(check.channel, channel);
    EXPECT_EQ(files::CheckReviewFile(text), review);
  }
}

// With a text of the header replaced by another. A frequency of -1: none.
TEST(RunFacts, AreReadAndNeverMadeUp) {
  using Row = std::tuple<std::string, std::string, bool, double>;
  const std::string Hertz = "Firmware Sampling Frequency: ", Launch = "Launch Time: ";
  for (const auto& [line, other, launched, frequency] :
       {Row{"", "", true, 7.5}, Row{"Mode = 1", "Mode = 0", true, -1},
        Row{"Download Pages", "Angles", false, -1}, Row{Launch, "", false, 7.5}, Row{Hertz, "", true, -1},
        Row{Launch + "03/09/2004 14:05:07", Launch, false, 7.5}, Row{Hertz + "7.5", Hertz, true, -1},
        Row{Hertz + "7.5", Hertz + "0", true, -1}, Row{Hertz + "7.5", Hertz + "-7.5", true, -1},
        Row{Hertz + "7.5", Hertz + "7.5 Hz", true, -1}, Row{Hertz + "7.5", Hertz + "6553.6", true, -1},
        Row{Hertz + "7.5", Hertz + "6553.5", true, 6553.5}}) {
    SCOPED_TRACE(other);
    auto text = Header();
    text.replace(text.find(line), line.size(), other);
    const auto facts = files::ReadRunFacts(text);
    EXPECT_EQ(facts.launch, launched ? "03/09/2004 14:05:07" : "");
    EXPECT_EQ(facts.frequency.value_or(-1), frequency);
  }
  EXPECT_TRUE(files::ReadRunFacts("1\nDownload Pages\n").launch.empty());
}

TEST(ViewNumbers, AreThoseOfTheSamplesInView) {
  const std::vector<double> samples{-10, 20, 20, 30, -61, 1};
  using Row = std::tuple<double, double, double, const char*>;
  for (const auto& [from, to, limit, numbers] :
       {Row{0, 5, 20, "0 5 -61 0 30 20 16.67 50"}, Row{-100, 100, 0, "0 5 -61 0 30 0 66.67 33.33"},
        Row{0.1, 3.9, 20, "1 3 20 23.33 30 20 33.33 0"}, Row{4, 4, 20, "4 4 -61 -61 -61 20 0 100"},
        Row{5, 5, 1, "5 5 1 1 1 1 0 0"}}) {
    const auto seen = graph::NumbersInView(samples, from, to, limit);
    ASSERT_TRUE(seen) << numbers;
    auto row = graph::NumbersRow("X", *seen, limit);
    std::ranges::replace(row, '\t', ' ');
    EXPECT_EQ(row, std::string("X ") + numbers + "\n");
  }
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const auto& [from, to] :
       {std::pair{0.2, 0.8}, {6.0, 9.0}, {-3.0, -1.0}, {2.0, 1.0}, {nan, 4.0}, {0.0, nan}})
    EXPECT_FALSE(graph::NumbersInView(samples, from, to, 0)) << from << " to " << to;
  EXPECT_FALSE(graph::NumbersInView({}, 0, 5, 0));
}

TEST(ViewNumbers, ReadAsALine) {
  const graph::ViewNumbers numbers{0, 527, -62, -0.04, 71, 0.1234, 1};
  EXPECT_EQ(graph::NumbersLine(numbers, 45),
            "In view: least -62°, mean 0°, greatest 71°; above 45°: 12.3 %, below: 100 %");
}

TEST(Series, FieldsGoToTheirPlaces) {
  files::Run run;
  ASSERT_TRUE(
      files::ReadRun(Header() + Record("1", 264, "22.5", 263, "-177.2") + Record("9", 264, "-.7"), 1, run));
  ASSERT_TRUE(run.XLinear.size() == 528 && run.YLinear.empty());
  EXPECT_EQ(std::vector({run.XLinear[0], run.XLinear[263], run.XLinear[264]}),
            (files::Samples{22, -177, -1}));
  EXPECT_EQ(std::vector({run.XTenths[0], run.XTenths[263], run.XTenths[264]}),
            (files::Tenths{225, -1772, -7}));

  const auto text = Header() + Record("1", 264, "1", 1, "2") + Record("2", 264, "3", 263, "4,5,6");
  for (const auto& bytes : {text, WithLineFeeds(text), text.substr(0, text.size() - 2)}) {
    files::Run series;
    ASSERT_TRUE(files::ReadRun(bytes, 3, series) && series.XLinear.size() == 264 &&
                series.YLinear.size() == 264);
    EXPECT_EQ(std::vector({series.XLinear[0], series.YLinear[0], series.XLinear[132]}),
              (files::Samples{1, 2, 3}));
    EXPECT_EQ(series.YLinear[263], 4) << "the last field is the rest of the line, read by its leading number";
  }
}

TEST(Series, BrokenRecordsAreNamed) {
  using Row = std::tuple<std::string, std::string, std::errc>;
  const auto few = std::errc::no_message_available, range = std::errc::result_out_of_range;
  for (const auto& [record, words, code] :
       {Row{Record("2", 263, "1"), "Record 2: fewer than 264 fields", few},
        Row{"\r\n", "Record 2: fewer", few}, Row{std::string(1000000, '\0'), "Record 2: fewer", few},
        Row{Record("2", 264, "1", 9, "32768"), "Record 2: field 10 ", range},
        Row{Record("2", 264, "1", 263, std::string(400, '9')), "Record 2: field 264 ", range}}) {
    SCOPED_TRACE(words);
    const std::string text = Header() + Record("1", 264, "1", 4, "BP") + record;
    files::Run single, series;
    EXPECT_NE(FailureOf(code, [&] { files::ReadRun(text, 1, single); }).find(words), std::string::npos);
    series.XLinear = {1, 2, 3};
    EXPECT_NE(FailureOf(code, [&] { files::ReadRun(text, 3, series); }).find(words), std::string::npos);
    EXPECT_TRUE(series.XLinear.empty() && series.YLinear.empty());
    EXPECT_EQ(series.pushes, std::vector<double>{2}) << "what was found before the fault stays";
  }
}

TEST(ButtonPushes, BearExactlyTheirMark) {
  files::Run series;
  EXPECT_TRUE(files::ReadRun(
      Header() + Record("1", 264, "5", 2, "BP ") + Record("2", 264, "bp") + Record("3", 264, "5", 0, "BP"), 3,
      series));
  EXPECT_EQ(series.pushes, std::vector<double>{264});
  EXPECT_FALSE(files::ReadRun(Shortened(Header(), 11), 3, series));
  EXPECT_TRUE(series.pushes.empty() && series.XLinear.empty());
}

TEST(BinPages, PairsAreFoundByTheirNumber) {
  const std::string text = Header("0") + Record("1", 132, "1", 131, "7.5") + Record("9", 132, "2") +
                           Record("3", 132, "3") + Record("13", 132, "4") + Record("5", 132, "5");
  using Row = std::tuple<int, files::PairResult, double, double>;
  for (const auto& [page, result, x, y] :
       {Row{1, files::PairResult::Found, 1, 2}, Row{3, files::PairResult::Found, 3, 4},
        Row{5, files::PairResult::NoPartner, 5, 0}, Row{-1, files::PairResult::NoPage, 0, 0}}) {
    SCOPED_TRACE(page);
    const auto pair = files::FindPair(text, page);
    EXPECT_EQ(pair.result, result);
    EXPECT_EQ(pair.XPoints[0], x);
    EXPECT_EQ(pair.YPoints[131], y);
  }
  EXPECT_EQ(files::FindPair(text, 1).XPoints[131], 7.5);
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
  using Row = std::tuple<std::size_t, int, int>;
  for (const auto& [bin, x, y] : {Row{0, -180, -90}, Row{1, -177, -89}, Row{65, -2, -1}, Row{66, 0, 0},
                                  Row{67, 3, 2}, Row{131, 178, 90}}) {
    SCOPED_TRACE(bin);
    EXPECT_EQ(files::DegreeOfBin(bin, 361), x);
    EXPECT_EQ(files::DegreeOfBin(bin, 181), y);
  }
  files::BinPoints points;
  for (std::size_t bin = 0; bin < files::BinCount; ++bin) points[bin] = static_cast<double>(bin) + 1;
  const auto arrays = files::SpreadOverDegrees(points, points);
  EXPECT_EQ(arrays.XDegrees[0], 1);
  EXPECT_EQ(arrays.XDegrees[358], 132);
  EXPECT_EQ(arrays.YDegrees[180], 132);
  EXPECT_EQ(std::ranges::count(arrays.XDegrees, 0.0), 361 - 132) << "no two bins on one degree";
  EXPECT_EQ(std::ranges::count(arrays.YDegrees, 0.0), 181 - 132);
}

}  // namespace
}  // namespace bexlow
