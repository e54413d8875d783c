// The button-push review, and the erase of the Download screen.
#include <QGroupBox>
#include <QProgressBar>
#include <QPushButton>

#include "platform/CWGraph.h"
#include "support/Story.h"

namespace bexlow::test {

namespace {

constexpr std::size_t PairsInRecord = 132;

std::string Header(const std::string& line10, const std::string& line11, const std::string& line12) {
  std::string text;
  for (int line = 1; line <= 9; ++line) text += "line " + std::to_string(line) + "\r\n";
  return text + line10 + "\r\n" + line11 + "\r\n" + line12 + "\r\n";
}

const std::string GoodHeader =
    Header("Bin/Linear Mode = 1", "Linear Channel = 3", "Page,X Data-->,Y Data-->");

/// Records in which the pairs of these points are pushes and all others 11.2,-5.6.
std::string Records(std::size_t pages, const std::vector<std::size_t>& pushes) {
  std::string text;
  for (std::size_t page = 0; page < pages; ++page) {
    text += std::to_string(page + 1);
    for (std::size_t pair = page * PairsInRecord; pair < (page + 1) * PairsInRecord; ++pair)
      text += std::ranges::count(pushes, pair) != 0 ? ",BP,BP" : ",11.2,-5.6";
    text += "\r\n";
  }
  return text;
}

}  // namespace

class ReviewStory : public Story {
 protected:
  void OpenScreen() {
    StartConnected();
    Choose("Tools", "Graph Button Pushes");
  }
  void Open(const std::string& text) {
    WriteFile(DataFile("f.qbx"), text);
    machine.WillChooseFile(DataFile("f.qbx").string());
    Choose("File", "Open");
  }
  std::string Shown() const { return Text("txtBPNumber") + " at " + Text("txtBPValue"); }
  /// The x positions of the cursors, which must be the same on both graphs and lie at y 0.
  std::vector<double> Cursors() const {
    auto& upper = The<platform::CWGraph>("CWGraph1");
    auto& lower = The<platform::CWGraph>("CWGraph2");
    EXPECT_EQ(upper.CursorCount(), lower.CursorCount());
    std::vector<double> places;
    for (int n = 1; n <= upper.CursorCount(); ++n) {
      places.push_back(upper.CursorX(n));
      EXPECT_EQ(lower.CursorX(n), places.back());
      EXPECT_EQ(upper.CursorY(n), 0);
      EXPECT_EQ(lower.CursorY(n), 0);
    }
    return places;
  }
};

TEST_F(ReviewStory, StepsThroughPushesAndStopsAtBothEnds) {
  OpenScreen();
  Open(GoodHeader + Records(7, {100, 250, 800}));
  struct Row {
    const char* press;
    const char* shown;
    std::vector<double> cursors;
  };
  const std::vector<Row> rows{{"<", "0 at 100", {100}},
                              {">", "1 at 250", {250}},
                              {">", "2 at 800", {800}},
                              {">", "2 at 800", {800}},
                              {"Show All", "2 at 800", {100, 250, 800}},
                              {"<", "1 at 250", {250, 250, 800}},
                              {"Hide All", "1 at 250", {250}},
                              {"<", "0 at 100", {100}},
                              {"<", "0 at 100", {100}}};
  EXPECT_EQ(Cursors(), std::vector<double>{100});
  for (const auto& [press, shown, cursors] : rows) {
    SCOPED_TRACE(std::string(press) + " " + shown);
    Press(press);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(Cursors(), cursors);
  }
}

TEST_F(ReviewStory, FindsPushesWhereverTheyStand) {
  struct Row {
    const char* what;
    std::string records;
    std::vector<double> pushes;
  };
  std::string onlyY = Records(1, {});
  onlyY.replace(onlyY.find("-5.6"), 4, "BP");
  const std::vector<Row> rows{{"last pair", Records(1, {131}), {131}},
                              {"across records", Records(2, {131, 132}), {131, 132}},
                              {"Y alone", onlyY, {0}},
                              {"none", Records(1, {}), {0}},
                              {"no records", "", {0}}};
  OpenScreen();
  for (const auto& [what, records, pushes] : rows) {
    SCOPED_TRACE(what);
    Open(GoodHeader + records);
    EXPECT_EQ(Shown(), "0 at " + std::to_string(static_cast<int>(pushes[0])));
    Press("Show All");
    EXPECT_EQ(Cursors(), pushes);
    Press("Hide All");
  }
}

TEST_F(ReviewStory, RefusesOtherFilesAndKeepsWhatIsOnShow) {
  struct Row {
    const char* what;
    std::string text;
    const char* message;
  };
  const auto unsupported = "This Quornell Download is not supported in Button Mode!";
  const std::string twelve = GoodHeader;
  const std::vector<Row> rows{
      {"empty", "", "This is not a Quornell Download file!"},
      {"bin", Header("Bin/Linear Mode = 0", "Linear Channel = 3", "Page,Data-->"), unsupported},
      {"one channel", Header("Bin/Linear Mode = 1", "Linear Channel = 1", "Page,X Data-->"), unsupported},
      {"another head", Header("Bin/Linear Mode = 1", "Linear Channel = 3", "Page"), unsupported},
      {"eleven lines", twelve.substr(0, twelve.find("Page,")), "End of data file has been reached!"},
  };
  OpenScreen();
  Open(GoodHeader + Records(2, {7}));
  for (const auto& [what, text, message] : rows) {
    SCOPED_TRACE(what);
    Open(text);
    Reads(message);
    EXPECT_EQ(Text("txtFileName"), DataFile("f.qbx").string());
    EXPECT_EQ(Shown(), "0 at 7");
  }
}

TEST_F(ReviewStory, BrokenRecordsLeaveEmptySeriesAndWhatWasFound) {
  OpenScreen();
  for (const auto& [records, shown] :
       {std::pair{Records(1, {5}), "0 at 5"}, std::pair{Records(1, {}), "0 at 0"}}) {
    Open(GoodHeader + records + "2,1,1\r\n");
    ReadsError("BuildDoubleChannelArrays");
    EXPECT_EQ(Shown(), shown);
    EXPECT_TRUE(The<platform::CWGraph>("CWGraph1").Description().contains("No data") ||
                The<platform::CWGraph>("CWGraph1").Description().contains("no points", Qt::CaseInsensitive))
        << The<platform::CWGraph>("CWGraph1").Description().toStdString();
  }
}

TEST_F(ReviewStory, CancelCountsAsAFailure) {
  OpenScreen();
  machine.WillCancelFile();
  Choose("File", "Open");
  EXPECT_NE(ReadsError("mnuOpen_Click").find("Number: 32755"), std::string::npos);
}

TEST_F(ReviewStory, BeforeAFileNothingHappens) {
  OpenScreen();
  for (const auto* caption : {"<", ">", "Show All", "Show All"}) Press(caption);
  EXPECT_EQ(Shown(), " at ");
  EXPECT_EQ(Cursors(), std::vector<double>{0});
}

TEST_F(ReviewStory, AnotherFileKeepsTheCursorsOfShowAll) {
  OpenScreen();
  Open(GoodHeader + Records(1, {10, 20, 30}));
  Press("Show All");
  Open(GoodHeader + Records(1, {99}));
  EXPECT_EQ(Cursors(), (std::vector<double>{99, 20, 30}));
  EXPECT_EQ(Text("cmdShowAll"), "Hide All");
  Press("Hide All");
  EXPECT_EQ(Cursors(), std::vector<double>{99});
}

class EraseStory : public Story {
 protected:
  void Begin(int bytes) {
    logger.eraseBytes = bytes;
    machine.WillAnswer(Answer::Yes);
    Choose("Data", "Erase");
    Reads("All on-board data will be erased!\r\nClick YES to proceed.\r\nClick NO to cancel this operation.");
  }
  void OpenScreen() {
    StartConnected();
    Choose("Tools", "Download");
  }
  void ExpectIdle() const {
    EXPECT_FALSE(Checked("Data", "Erase"));
    EXPECT_TRUE(Offered("Data", "Download"));
    EXPECT_TRUE(The<QGroupBox>("fraErase").isHidden());
    EXPECT_FALSE(PointerIsBusy());
    EXPECT_FALSE(machine.AnyPortOpen());
  }
};

TEST_F(EraseStory, NoTouchesNothing) {
  OpenScreen();
  machine.WillAnswer(Answer::No);
  Choose("Data", "Erase");
  machine.boxes.clear();
  EXPECT_TRUE(machine.wire.empty());
  ExpectIdle();
}

TEST_F(EraseStory, EndsAt2050Bytes) {
  OpenScreen();
  Begin(2049);
  EXPECT_EQ(machine.Transcript(), "0 65");
  EXPECT_FALSE(Offered("Data", "Download"));
  EXPECT_TRUE(PointerIsBusy());
  machine.Pass(milliseconds(5000));
  EXPECT_EQ(Text("txtInBufferSize"), "2049");
  EXPECT_EQ(The<QProgressBar>("PBarErase").value(), 2049);
  EXPECT_FALSE(The<QGroupBox>("fraErase").isHidden());
  EXPECT_TRUE(Checked("Data", "Erase"));
  machine.Deliver(1, {0});
  machine.Pass(milliseconds(500));
  Reads("Erase completed!");
  ExpectIdle();
  EXPECT_EQ(Text("txtInBufferSize"), "");
}

TEST_F(EraseStory, MoreThanTheBufferWasSetToStillCounts) {
  OpenScreen();
  logger.eraseStep = microseconds(100);
  Begin(6200);
  machine.Pass(milliseconds(500));
  Reads("Erase completed!");
  ExpectIdle();
}

TEST_F(EraseStory, ASilentLoggerIsWatchedUntilTheUserHalts) {
  OpenScreen();
  logger.silent = true;
  Begin(0);
  machine.Pass(std::chrono::hours(1));
  EXPECT_EQ(Text("txtInBufferSize"), "0");
  Choose("Data", "Erase");
  Reads("Erase halted by user! Erase may not be complete.");
  EXPECT_EQ(machine.wire.size(), 1U) << "nothing tells the logger to stop";
  ExpectIdle();
}

TEST_F(EraseStory, ReturnEndsItWithoutAMessage) {
  OpenScreen();
  Begin(3000);
  machine.Pass(milliseconds(700));
  Choose("Data", "Return");
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_FALSE(machine.AnyPortOpen());
  machine.Pass(milliseconds(5000));
}

TEST_F(EraseStory, EraseAndDownloadExcludeEachOther) {
  OpenScreen();
  logger.pages[1] = RampPage(1);
  machine.WillChooseFile(DataFile("run.qbx").string());
  Choose("Data", "Download");
  EXPECT_FALSE(Offered("Data", "Erase"));
  Choose("Data", "Download");
  EXPECT_TRUE(Offered("Data", "Erase"));
}

TEST_F(EraseStory, FailuresAreReportedUnderTheirProcedure) {
  OpenScreen();
  machine.taken = {1};
  machine.WillAnswer(Answer::Yes);
  Choose("Data", "Erase");
  machine.boxes.pop_front();
  ReadsError("OpenCommPort");
  ReadsError("mnuErase_Click");
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_TRUE(Checked("Data", "Erase")) << "the entry stays as it was; a click halts";
  machine.taken.clear();
  Choose("Data", "Erase");
  Reads("Erase halted by user! Erase may not be complete.");
  ExpectIdle();
}

}  // namespace bexlow::test
