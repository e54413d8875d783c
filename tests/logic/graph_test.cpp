// Reading runs back: their facts, series and numbers in view, hostile files among them.
#include <cmath>

#include "graph/Report.h"
#include "logic/Expect.h"
#include "support/DataFiles.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow {
using test::Header, test::Record, test::Replaced, test::Shortened, test::WithLineFeeds;

// With a text of the header replaced by another. A frequency of -1: none.
TEST(RunFacts, AreReadAndNeverMadeUp) {
  using Row = std::tuple<std::string, std::string, bool, double>;
  for (const auto& [line, other, launched, frequency] :
       {Row{"", "", true, 7.5}, Row{"Mode = 1", "Mode = 0", true, -1},
        Row{"Download Pages", "Angles", false, -1}, Row{"Launch Time: ", "", false, 7.5},
        Row{"Firmware Sampling Frequency: ", "", true, -1}, Row{"03/09/2004 14:05:07", "", false, 7.5},
        Row{"03/09/2004", "02/30/2004", false, 7.5}, Row{"14:05:07", "24:05:07", false, 7.5},
        Row{"14:05:07", "14:05:07x", false, 7.5},
        Row{"03/09/2004 14:05:07", "255/255/65535 255:255:255", false, 7.5}, Row{"7.5", "", true, -1},
        Row{"7.5", "0", true, -1}, Row{"7.5", "-7.5", true, -1}, Row{"7.5", "7.5 Hz", true, -1},
        Row{"7.5", "6553.6", true, -1}, Row{"7.5", "6553.5", true, 6553.5}}) {
    const auto facts = files::ReadRunFacts(Replaced(Header(), line, other));
    EXPECT_EQ(std::tuple(facts.launch, facts.frequency.value_or(-1)),
              std::tuple(launched ? "2004-03-09 14:05:07" : "", frequency))
        << other;
  }
  EXPECT_TRUE(files::ReadRunFacts("1\nDownload Pages\n").launch.empty());
}

/// Pages 1, 2, 4 and 5 of both channels: all 60.5 and -20.5 but for pushes, a spike, and an end of 72 zeros.
files::Run OddRun() {
  std::string text = Header();
  for (const int page : {1, 2, 4, 5}) {
    text += std::to_string(page);
    for (int pair = 0; pair < 132; ++pair) {
      const bool isPush = pair == 40 || (page == 4 && pair < 2);
      const bool isSpike = page == 2 && pair == 100, isUnwritten = page == 5 && pair >= 60;
      text += isPush ? ",BP,BP" : isUnwritten ? ",0,0" : isSpike ? ",-.7,90" : ",60.5,-20.5";
    }
    text += "\r\n";
  }
  files::Run run;
  files::ReadRun(text, 3, run);
  return run;
}

// Of 528 pairs 6 are pushes and 72 the unwritten end: 450 count. Mean of X: (449 * 60.5 - 0.7) / 450
// = 60.364, of Y: (449 * -20.5 + 90) / 450 = -20.254.
TEST(ViewNumbers, AreExactAndLeaveOutPushesAndTheUnwrittenEnd) {
  const auto run = OddRun();
  using Row = std::tuple<bool, std::size_t, std::size_t, double, const char*>;
  for (const auto& [isX, first, last, limit, line] :
       {Row{true, 0, 527, 60,
            "min -0.7°, mean 60.4°, max 60.5°; above 60°: 99.8 %, below: 0.2 %; left out: 6 pushes, 72 zeros "
            "at the end"},
        Row{false, 0, 527, -20,
            "min -20.5°, mean -20.3°, max 90.0°; above -20°: 0.2 %, below: 99.8 %; left out: 6 pushes, 72 "
            "zeros at the end"},
        Row{true, 0, 39, 61, "min 60.5°, mean 60.5°, max 60.5°; above 61°: 0.0 %, below: 100.0 %"},
        Row{true, 39, 41, 60,
            "min 60.5°, mean 60.5°, max 60.5°; above 60°: 100.0 %, below: 0.0 %; left out: 1 push"},
        Row{true, 40, 40, 0, "no sample; left out: 1 push"},
        Row{true, 527, 527, 0, "no sample; left out: 1 zero at the end"},
        Row{true, 231, 232, 0, "min -0.7°, mean 29.9°, max 60.5°; above 0°: 50.0 %, below: 50.0 %"}}) {
    const auto numbers = graph::NumbersInView(run, isX ? 0 : 1, first, last, limit);
    EXPECT_EQ(graph::NumbersLine(numbers, limit), std::string("In view: ") + line);
  }
  const auto row = graph::NumbersRow("X", graph::NumbersInView(run, 0, 0, 527, 60), 60, ',');
  EXPECT_EQ(row, "X (°)\t0\t527\t450\t6\t72\t-0,7\t60,4\t60,5\t60\t449\t1\n");
}

/// At 7.5 samples a second; lengths in whole seconds, and the clock reads so much past noon.
graph::View ViewOf(const files::Run& run, std::size_t first, std::size_t last) {
  const auto length = [](double seconds) { return std::to_string(std::llrint(seconds)) + "s"; };
  const auto at = [&run](double sample) { return files::PeriodsAt(run, sample) / 7.5; };
  return {run, first, last, 7.5, at, length, [=](double seconds) { return "12:00+" + length(seconds); }};
}

/// Rich text with a bar for each tag or several.
std::string Plain(const std::string& html) {
  std::string text;
  for (std::size_t i = 0; i < html.size(); ++i)
    if (html[i] == '<') {
      i = html.find('>', i);
      if (!text.ends_with('|')) text += '|';
    } else {
      text += html[i];
    }
  return text;
}

// Samples 264 and 265 are pushes, page 3 is missing before them, and from 456 on nothing was written.
TEST(View, IsAExactTableOfSamples) {
  auto run = OddRun();
  files::Run bits;
  bits.axes = files::AccelerometerAxes;
  bits.tenths = {files::Tenths{3770, 20}, {910, -5}, {4060, 10240}};
  files::Run oneChannel;
  ASSERT_TRUE(files::ReadRun(Header("1", "2") + Record("2", 264, "-.7"), 2, oneChannel));
  auto noTimes = ViewOf(run, 39, 40);
  noTimes.secondsAt = nullptr;
  const std::string head = "Sample,Time(seconds),X angle,Y angle,Push\r\n";
  using Row = std::tuple<const char*, graph::View, std::string>;
  for (const auto& [what, view, csv] :
       {Row{"a spike", ViewOf(run, 231, 233),
            head + "231,30.8,60.5,-20.5,\r\n232,30.933,-.7,90,\r\n233,31.067,60.5,-20.5,\r\n"},
        {"pushes after a gap", ViewOf(run, 263, 266),
         head + "263,35.067,60.5,-20.5,\r\n264,52.8,,,BP\r\n265,52.933,,,BP\r\n266,53.067,60.5,-20.5,\r\n"},
        {"unwritten end", ViewOf(run, 455, 527), head + "455,78.267,60.5,-20.5,\r\n"},
        {"no times", noTimes, "Sample,X angle,Y angle,Push\r\n39,60.5,-20.5,\r\n40,,,BP\r\n"},
        {"one channel", ViewOf(oneChannel, 1, 1), "Sample,Time(seconds),Y angle\r\n1,35.333,-.7\r\n"},
        {"a recording",
         {bits, 0, 1, 0, [](double sample) { return 0.01 + sample; }},
         "Sample,Time(seconds),Acc X,Acc Y,Acc Z\r\n0,.01,377,91,406\r\n1,1.01,2,-.5,1024\r\n"}})
    EXPECT_EQ(graph::SamplesCsv(view), csv) << what;
}

TEST(View, ListsItsPushesWithTheSampleBefore) {
  const auto run = OddRun();
  const std::string head = "Push\tSample\tTime\tClock time\tX before\tY before\n";
  EXPECT_EQ(graph::PushTable(ViewOf(run, 100, 304), ','),
            head +
                "2\t172\t23s\t12:00+23s\t60,5\t-20,5\n3\t264\t53s\t12:00+53s\t\t\n"
                "4\t265\t53s\t12:00+53s\t\t\n5\t304\t58s\t12:00+58s\t60,5\t-20,5\n");
  auto view = ViewOf(run, 0, 527);
  view.lengthText = [](double) { return "0:00:05.3"; };
  EXPECT_NE(graph::PushTable(view, ',').find("1\t40\t0:00:05,3\t"), std::string::npos);
  view.secondsAt = nullptr;
  view.clockText = nullptr;
  const auto untimed = graph::PushTable(view, '.');
  EXPECT_TRUE(untimed.starts_with("Push\tSample\tX before\tY before\n1\t40\t60.5\t-20.5\n")) << untimed;
  files::Run many;
  ASSERT_TRUE(files::ReadRun(Header() + Record("1", 264, "BP"), 3, many));
  EXPECT_EQ(graph::PushTable(ViewOf(many, 0, 0), '.'), head + "1\t0\t0s\t12:00+0s\t\t\n") << "none before";
  const auto text = Plain(graph::PushesText(ViewOf(many, 0, 131)));
  EXPECT_TRUE(text.starts_with("|Push|Sample|Time|Clock time|Push|") &&
              text.ends_with("|30|29|4s|12:00+4s|and 102 more|"))
      << text;
  EXPECT_EQ(graph::PushesText(ViewOf(run, 0, 39)), "");
}

// Deviation of X: 61.2 * sqrt(449) / 450 = 2.882, of Y: 110.5 * sqrt(449) / 450 = 5.203; 449 samples last
// 59.87 s.
TEST(View, IsReportedInFiguresAndHistograms) {
  const auto run = OddRun();
  const auto text = Plain(graph::FiguresText(ViewOf(run, 0, 527), std::vector<double>{60, -20.5}));
  EXPECT_EQ(
      text.substr(text.find("|X|")),
      "|X|-0.7°|60.4°|60.5°|2.9°|60°|99.8 %, 60s|0.2 %, 0s|Y|-20.5°|-20.3°|90.0°|5.2°|-20.5°|0.2 %, 0s|"
      "0.0 %, 0s|450 samples counted, left out: 6 pushes, 72 zeros at the end; a push has no angles; where "
      "the zeros stand the logger had not filled its last page. Figures, shares and times are "
      "rounded to one decimal.|");
  for (const auto& [sample, part] : {std::pair{40U, "|X|-|-|-|-|0°|-|-|Y|-"}, {41U, "|1 sample counted."}}) {
    const auto one = Plain(graph::FiguresText(ViewOf(run, sample, sample), std::vector<double>{0, 0}));
    EXPECT_NE(one.find(part), std::string::npos) << one;
  }
  const auto late = ViewOf(run, 264, 527);
  const auto head = Plain(graph::HeadText("a", {"417", "c", 7.5}, "b", &late));
  EXPECT_EQ(head,
            "|a|Logger|417|Launched|c|Rate|7.5 samples a second|Run|b|"
            "In view|samples 264 to 455, 53s to 78s since the launch|");
  const auto shares = [](const files::Run& of, std::size_t axis, std::size_t last) {
    auto [step, degree, percent] = graph::HistogramInView(ViewOf(of, 0, last), axis);
    const auto rounded = [](double value) { return values::NumberText(values::RoundToDecimals(value, 4)); };
    std::string told;
    for (const double share : percent) {
      if (share > 0) told += rounded(degree) + ": " + rounded(share) + " ";
      degree += step;
    }
    return told;
  };
  EXPECT_EQ(shares(run, 0, 527), "2.1094: .2222 58.3594: 99.7778 ");
  EXPECT_EQ(shares(run, 1, 527), "-20.0391: 99.7778 86.8359: .2222 ");
  files::Run edges;  // a recording's
  edges.tenths[0] = {-1800, -1750, -1749, -1, 0, 49, 50, 1799, 1800, 1801};
  edges.hundredths.resize(10);
  EXPECT_EQ(shares(edges, 0, 9), "-177.5: 10 -172.5: 20 -2.5: 10 2.5: 20 7.5: 10 177.5: 20 182.5: 10 ");
  files::Run bytes;  // each from -126 to 128 once
  for (int byte = -126; byte <= 128; ++byte)
    bytes.tenths[0].push_back(static_cast<int>(std::lrint(byte * 14.0625)));
  const auto even = graph::HistogramInView(ViewOf(bytes, 0, 254), 0).shares;
  for (std::size_t i = 1; i + 1 < even.size(); ++i) EXPECT_NEAR(even[i], 400.0 / 255, 1e-9) << i;
  EXPECT_EQ(shares({}, 0, 0), "");
}

TEST(ViewNumbers, ClaimNothingAcrossACrossingAndNoShareThatIsNone) {
  files::Run run;
  run.tenths[0] = {1790, 1800, -1799, -1790, 0, 0};
  run.XLinear = {179, 180, -180, -179, 0, 0};
  run.records = {{1, 0}};
  using Row = std::tuple<std::size_t, std::size_t, bool>;
  for (const auto& [first, last, crosses] : {Row{0, 1, false}, {1, 2, true}, {2, 3, false}, {3, 5, false}}) {
    const auto holds = [](const std::string& text, const char* part) {
      return text.find(part) < text.size();
    };
    const auto numbers = graph::NumbersInView(run, 0, first, last, 0);
    EXPECT_EQ(numbers.crosses, crosses) << first;
    EXPECT_EQ(holds(graph::NumbersRow("X", numbers, 0, '.'), "\tcrosses ±180°\t"), crosses);
    EXPECT_EQ(holds(graph::NumbersLine(numbers, 0), "min -"), !crosses && first > 0);
    const auto report = Plain(graph::FiguresText({run, first, last}, std::vector<double>{0}));
    for (const char* part : {"|X|-|-|-|-|0°|", "|X crosses ±180°, so it has no min,"})
      EXPECT_EQ(holds(report, part), crosses) << report;
  }
  graph::ViewNumbers many{0, 270203, 270204};
  many.above = 1;
  many.below = 270203;
  EXPECT_EQ(graph::NumbersLine(many, 45),
            "In view: min 0.0°, mean 0.0°, max 0.0°; above 45°: less than 0.1 %, below: more than 99.9 %");
}

// 132 pairs a page at 7.5 Hz: page 4 begins 3 * 17.6 s after the launch.
TEST(Run, TimesFollowThePageNumbers) {
  const auto run = OddRun();
  EXPECT_EQ(run.UnwrittenEnd(), 72u);
  for (const auto& [sample, seconds] :
       {std::pair{0.0, 0.0}, {263.0, 263 / 7.5}, {264.0, 52.8}, {396.0, 70.4}, {263.5, 263.5 / 7.5}}) {
    EXPECT_DOUBLE_EQ(files::PeriodsAt(run, sample) / 7.5, seconds);
    EXPECT_DOUBLE_EQ(files::SampleAt(run, files::PeriodsAt(run, sample)), sample);
  }
  EXPECT_EQ(files::PeriodsAt({}, 5), 0) << "no record";
  EXPECT_EQ(files::SampleAt(run, 300), 264) << "the next one, where the page is missing";
}

TEST(Run, MissingAndDoubledPagesAreTold) {
  const auto* none = "a record has no page number from 1 to 2047";
  using Row = std::tuple<std::vector<const char*>, bool, const char*>;
  for (const auto& [pages, rise, remarks] :
       {Row{{}, false, ""}, Row{{"1", "2", "3"}, true, ""}, Row{{"1", "2", "4"}, true, "page 3 is missing"},
        Row{{"3", "7"}, true, "pages 1 and 2 are missing, pages 4 to 6 are missing"},
        Row{{"2", "4", "6", "8"}, true, "4 pages are missing"},
        Row{{"1", "1"}, false, "page 1 is there twice"},
        Row{{"1", "5", "3"}, false, "page 3 stands after page 5"}, Row{{"1", "x"}, false, none},
        Row{{"0"}, false, none}, Row{{"2048"}, false, none}, Row{{"1.5"}, false, none}}) {
    std::string text = Header();
    for (const auto* page : pages) text += Record(page, 264, "1");
    files::Run run;
    ASSERT_TRUE(files::ReadRun(text, 1, run));
    EXPECT_EQ(std::tuple(files::PagesRise(run), files::PageRemarks(run)), std::tuple(rise, remarks));
  }
}

TEST(Series, FieldsGoToTheirPlaces) {
  files::Run run;
  const auto &x = run.XLinear, &y = run.YLinear;
  const auto& tenths = run.tenths[0];
  auto text = Header() + Record("1", 264, "22.5", 263, "-177.2") + Record("9", 264, "-.7");
  ASSERT_TRUE(files::ReadRun(text, 1, run) && x.size() == 528 && y.empty());
  EXPECT_EQ(std::tuple(x[0], x[263], x[264]), std::tuple(22, -177, -1));
  EXPECT_EQ(std::tuple(tenths[0], tenths[263], tenths[264]), std::tuple(225, -1772, -7));

  text = Header() + Record("1", 264, "1", 1, "2") + Record("2", 264, "3", 263, "4,5,6");
  for (const auto& bytes : {text, WithLineFeeds(text), text.substr(0, text.size() - 2)}) {
    run = {};
    ASSERT_TRUE(files::ReadRun(bytes, 3, run) && x.size() == 264 && y.size() == 264);
    // The last field is the rest of the line, read by its leading number.
    EXPECT_EQ(std::tuple(x[0], y[0], x[132], y[263]), std::tuple(1, 2, 3, 4));
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
    // Only what bears exactly the mark is a push.
    const std::string text = Header() + Record("1", 262, "1", 4, "BP").replace(0, 2, "1,BP ,bp,") + record;
    files::Run single, series;
    EXPECT_NE(FailureOf(code, [&] { files::ReadRun(text, 1, single); }).find(words), std::string::npos);
    series.XLinear = {1, 2, 3};
    EXPECT_NE(FailureOf(code, [&] { files::ReadRun(text, 3, series); }).find(words), std::string::npos);
    EXPECT_TRUE(series.XLinear.empty() && series.YLinear.empty());
    EXPECT_EQ(series.pushes, std::vector<double>{3}) << "what was found before the fault stays";
  }
}

}  // namespace bexlow
