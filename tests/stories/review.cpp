// The button-push review.
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
  platform::CWGraph& Upper() const { return The<platform::CWGraph>("CWGraph1"); }
  platform::CWGraph& Lower() const { return The<platform::CWGraph>("CWGraph2"); }
  /// The x positions of the cursors, which must be the same on both graphs and lie at y 0.
  std::vector<double> Cursors() const {
    EXPECT_EQ(Upper().CursorCount(), Lower().CursorCount());
    std::vector<double> places;
    for (int n = 1; n <= Upper().CursorCount(); ++n) {
      places.push_back(Upper().CursorX(n));
      EXPECT_EQ(Lower().CursorX(n), places.back());
      EXPECT_EQ(Upper().CursorY(n), 0);
      EXPECT_EQ(Lower().CursorY(n), 0);
    }
    return places;
  }
  void ExpectShown(const std::string& push, const std::vector<double>& cursors) const {
    EXPECT_EQ(Text("txtBPNumber") + " at " + Text("txtBPValue"), push);
    EXPECT_EQ(Cursors(), cursors);
  }
};

TEST_F(ReviewStory, StepsThroughPushesAndStopsAtBothEnds) {
  for (const auto* caption : {"<", ">", "Show All", "Show All"}) Press(caption);
  Upper().CursorClicked(0);
  ExpectShown(" at ", {0});  // no file yet
  Open(Header() + Records(7, {100, 250, 800}));
  EXPECT_EQ(Text("lblPush"), "push 1 of 3, 13.3 s");
  EXPECT_EQ(Text("lblRun"), "f.qbx: launched 2004-03-09 14:05:07, 921 samples, 3 pushes, 2 min 3 s");
  ExpectShown("0 at 100", {100});
  struct Row {
    const char *press, *push;
    std::vector<double> cursors;
  };
  for (const auto& [press, push, cursors] :
       {Row{"<", "0 at 100", {100}}, Row{">", "1 at 250", {250}}, Row{">", "2 at 800", {800}},
        Row{">", "2 at 800", {800}}, Row{"Show All", "2 at 800", {100, 250, 800}},
        Row{"<", "1 at 250", {250, 250, 800}}, Row{"Hide All", "1 at 250", {250}},
        Row{"<", "0 at 100", {100}}, Row{"<", "0 at 100", {100}}}) {
    SCOPED_TRACE(std::string(press) + " " + push);
    Press(press);
    ExpectShown(push, cursors);
  }
}

TEST_F(ReviewStory, KeysStepClicksChooseAndAnotherFileKeepsTheCursors) {
  Open(Header() + Records(7, {100, 250, 800}));
  EXPECT_EQ(platform::Form::Active()->focusWidget(), &Upper());
  Lower().SetXView({90, 120});
  for (const auto& [key, push, middle] :
       {std::tuple{Qt::Key_PageDown, "1 at 250", 250}, std::tuple{Qt::Key_PageDown, "2 at 800", 800},
        std::tuple{Qt::Key_PageUp, "1 at 250", 250}}) {
    QTest::keyClick(&Lower(), key);
    ExpectShown(push, {static_cast<double>(middle)});
    for (const auto* graph : {&Upper(), &Lower()}) {
      EXPECT_EQ(graph->XView().Middle(), middle);
      EXPECT_EQ(graph->XView().Size(), 30);
    }
  }

  Press("Show All");
  Lower().CursorClicked(800);
  ExpectShown("2 at 800", {800, 250, 800});
  Upper().CursorClicked(20);  // left from another file
  ExpectShown("2 at 800", {800, 250, 800});
  Open(Header() + Records(1, {99}));
  ExpectShown("0 at 99", {99, 250, 800});
  Press("Hide All");
  ExpectShown("0 at 99", {99});
  Open(Header() + Records(1, {}));
  EXPECT_EQ(Text("lblPush"), "no push");
  ExpectShown("0 at 0", {0});
}

TEST_F(ReviewStory, RefusedFilesKeepWhatIsOnShowAndBrokenOnesShowWhatWasFound) {
  struct Row {
    std::string text;
    const char *box, *push;
    std::vector<double> cursors;
  };
  const std::string broken = "2,1,1\r\n";
  Open(Header() + Records(2, {7}));
  for (const auto& [text, box, push, cursors] :
       {Row{"", "This is not a Quornell Download file!", "0 at 7", {7}},
        Row{Header("0"), "This Quornell Download is not supported in Button Mode!", "0 at 7", {7}},
        Row{Shortened(Header(), 11), "End of data file has been reached!", "0 at 7", {7}},
        Row{Header() + Records(1, {5}) + broken, "BuildDoubleChannelArrays", "0 at 5", {5}},
        Row{Header() + Records(1, {}) + broken, "BuildDoubleChannelArrays", "0 at 0", {0}}}) {
    SCOPED_TRACE(box);
    Open(text);
    Reads(box);
    EXPECT_EQ(Text("txtFileName"), DataFile("f.qbx").string());
    ExpectShown(push, cursors);
    EXPECT_EQ(Upper().Values().empty(), text.ends_with(broken));
  }
  machine.WillCancelFile();
  Choose("File", "Open");
  EXPECT_TRUE(Contains(Reads("mnuOpen_Click"), "Number: 32755")) << "counts as a failure";
}

}  // namespace bexlow::test
