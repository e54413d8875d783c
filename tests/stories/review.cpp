// The button-push review, and the erase of the Download screen.
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QTest>

#include "platform/graph/CWGraph.h"
#include "support/Story.h"

namespace bexlow::test {

namespace {

constexpr std::size_t PairsInRecord = 132;

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
  void SetUp() override {
    StartConnected();
    Choose("Tools", "Graph Button Pushes");
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
  for (const auto* caption : {"<", ">", "Show All", "Show All"}) Press(caption);
  EXPECT_EQ(Shown(), " at ") << "no file yet";
  EXPECT_EQ(Cursors(), std::vector<double>{0});
  Open(Header() + Records(7, {100, 250, 800}));
  EXPECT_TRUE(The<platform::CWGraph>("CWGraph1").NumbersToCopy().startsWith("f.qbx, launched "));
  struct Row {
    const char *press, *shown;
    std::vector<double> cursors;
  };
  EXPECT_EQ(Cursors(), std::vector<double>{100});
  for (const auto& [press, shown, cursors] :
       {Row{"<", "0 at 100", {100}}, Row{">", "1 at 250", {250}}, Row{">", "2 at 800", {800}},
        Row{">", "2 at 800", {800}}, Row{"Show All", "2 at 800", {100, 250, 800}},
        Row{"<", "1 at 250", {250, 250, 800}}, Row{"Hide All", "1 at 250", {250}},
        Row{"<", "0 at 100", {100}}, Row{"<", "0 at 100", {100}}}) {
    SCOPED_TRACE(std::string(press) + " " + shown);
    Press(press);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(Cursors(), cursors);
  }
}

TEST_F(ReviewStory, ThePushOnShowIsInSight) {
  Open(Header() + Records(7, {100, 250, 800}));
  EXPECT_EQ(The<QLabel>("lblBPCount").text(), "of 3");
  auto& graph = The<platform::CWGraph>("CWGraph2");
  EXPECT_EQ(platform::Form::Active()->focusWidget(), &The<platform::CWGraph>("CWGraph1"));
  graph.SetXView({90, 120});
  struct Row {
    Qt::Key key;
    const char* shown;
    double middle;
  };
  for (const auto& [key, shown, middle] :
       {Row{Qt::Key_PageDown, "1 at 250", 250}, Row{Qt::Key_PageDown, "2 at 800", 800},
        Row{Qt::Key_PageUp, "1 at 250", 250}}) {
    QTest::keyClick(&graph, key);
    EXPECT_EQ(Shown(), shown);
    for (const char* name : {"CWGraph1", "CWGraph2"}) {
      EXPECT_EQ(The<platform::CWGraph>(name).XView().Middle(), middle);
      EXPECT_EQ(The<platform::CWGraph>(name).XView().Size(), 30);
    }
  }
  Open(Header() + Records(1, {}));
  EXPECT_EQ(The<QLabel>("lblBPCount").text(), "of 0");
}

TEST_F(ReviewStory, AClickOnACursorMakesItTheCurrentOne) {
  The<platform::CWGraph>("CWGraph1").CursorClicked(0);
  EXPECT_EQ(Shown(), " at ") << "no file yet";
  Open(Header() + Records(7, {100, 250, 800}));
  Press("Show All");
  The<platform::CWGraph>("CWGraph2").CursorClicked(800);
  EXPECT_EQ(Shown(), "2 at 800");
  EXPECT_EQ(Cursors(), (std::vector<double>{800, 250, 800}));
  The<platform::CWGraph>("CWGraph1").CursorClicked(20);  // left from another file
  EXPECT_EQ(Shown(), "2 at 800");
}

TEST_F(ReviewStory, RefusesOtherFilesAndKeepsWhatIsOnShow) {
  Open(Header() + Records(2, {7}));
  for (const auto& [text, message] :
       {std::pair{std::string(), "This is not a Quornell Download file!"},
        std::pair{Header("0"), "This Quornell Download is not supported in Button Mode!"},
        std::pair{Shortened(Header(), 11), "End of data file has been reached!"}}) {
    Open(text);
    Reads(message);
    EXPECT_EQ(Text("txtFileName"), DataFile("f.qbx").string());
    EXPECT_EQ(Shown(), "0 at 7");
  }
  machine.WillCancelFile();
  Choose("File", "Open");
  EXPECT_NE(Reads("mnuOpen_Click").find("Number: 32755"), std::string::npos) << "counts as a failure";
}

TEST_F(ReviewStory, BrokenRecordsLeaveEmptySeriesAndWhatWasFound) {
  for (const auto& [records, shown] :
       {std::pair{Records(1, {5}), "0 at 5"}, std::pair{Records(1, {}), "0 at 0"}}) {
    Open(Header() + records + "2,1,1\r\n");
    Reads("BuildDoubleChannelArrays");
    EXPECT_EQ(Shown(), shown);
    EXPECT_FALSE(The<platform::CWGraph>("CWGraph1").Description().contains("points"));
  }
}

TEST_F(ReviewStory, AnotherFileKeepsTheCursorsOfShowAll) {
  Open(Header() + Records(1, {10, 20, 30}));
  Press("Show All");
  Open(Header() + Records(1, {99}));
  EXPECT_EQ(Cursors(), (std::vector<double>{99, 20, 30}));
  EXPECT_EQ(Text("cmdShowAll"), "Hide All");
  Press("Hide All");
  EXPECT_EQ(Cursors(), std::vector<double>{99});
}

class EraseStory : public Story {
 protected:
  void SetUp() override {
    StartConnected();
    Choose("Tools", "Download");
  }
  void Begin(int bytes, Answer answer = Answer::Yes) {
    logger.eraseBytes = bytes;
    machine.wire.clear();
    machine.WillAnswer(answer);
    Choose("Data", "Erase");
    Reads("All on-board data will be erased!\r\nClick YES to proceed.\r\nClick NO to cancel this operation.");
    EXPECT_EQ(machine.buttons.at(0), platform::Buttons::Confirm);
  }
  void ExpectEnded() {
    EXPECT_FALSE(Checked("Data", "Erase"));
    EXPECT_TRUE(Offered("Data", "Download"));
    EXPECT_TRUE(The<QGroupBox>("fraErase").isHidden());
    ExpectIdle();
  }
};

TEST_F(EraseStory, EndsAt2050BytesOrMore) {
  Begin(2049, Answer::No);
  EXPECT_TRUE(machine.wire.empty());
  ExpectEnded();
  Begin(2049);
  EXPECT_EQ(machine.Transcript(), "0 65");
  EXPECT_FALSE(Offered("Data", "Download"));
  EXPECT_TRUE(PointerIsBusy());
  machine.Pass(5000ms);
  EXPECT_EQ(Text("txtInBufferSize"), "2049");
  EXPECT_EQ(The<QProgressBar>("PBarErase").value(), 2049);
  EXPECT_FALSE(The<QGroupBox>("fraErase").isHidden());
  EXPECT_TRUE(Checked("Data", "Erase"));
  machine.Deliver(1, {0});
  machine.Pass(500ms);
  Reads("Erase completed!");
  ExpectEnded();
  EXPECT_EQ(Text("txtInBufferSize"), "");
  logger.eraseStep = 100us;
  Begin(6200);
  machine.Pass(500ms);
  Reads("Erase completed!");  // also with more than the buffer was set to
  ExpectEnded();
}

TEST_F(EraseStory, ASilentLoggerIsWatchedUntilTheUserHalts) {
  logger.silent = true;
  Begin(0);
  machine.Pass(1h);
  EXPECT_EQ(Text("txtInBufferSize"), "0");
  Choose("Data", "Erase");
  Reads("Erase halted by user! Erase may not be complete.");
  EXPECT_EQ(machine.wire.size(), 1U) << "nothing tells the logger to stop";
  ExpectEnded();
}

TEST_F(EraseStory, FailuresAreReportedUnderTheirProcedure) {
  machine.taken = {1};
  Begin(0);
  Reads("OpenCommPort");
  Reads("mnuErase_Click");
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_TRUE(Checked("Data", "Erase")) << "the entry stays as it was; a click halts";
  machine.taken.clear();
  Choose("Data", "Erase");
  Reads("Erase halted by user! Erase may not be complete.");
  ExpectEnded();
}

}  // namespace bexlow::test
