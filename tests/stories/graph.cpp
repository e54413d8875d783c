// Opening data files and paging through the pairs of a Bin file.
#include <QAction>
#include <QPushButton>
#include <QTest>

#include <algorithm>

#include "platform/graph/CWGraph.h"
#include "support/Story.h"

namespace bexlow::test {

namespace {

constexpr auto WrongFile = "This is not a Quornell Download Pages file!";
constexpr auto EndOfFile = "End of data file has been reached!";

std::string LinearFile(int channel, const std::string& records) {
  return Header("1", std::to_string(channel)) + records;
}

std::string BinFile(const std::string& records) {
  return Header("0") + records;
}

}  // namespace

class GraphStory : public Story {
 protected:
  void SetUp() override {
    StartConnected();
    Choose("Tools", "Graph");
  }
  QString Words(const char* name) const { return The<platform::CWGraph>(name).Description(); }
  /// "points X / points Y" as the graphs tell them.
  std::string Points() const {
    const auto pointsOf = [this](const char* name) {
      const QString words = Words(name);
      const auto count = words.indexOf(" point");
      return count < 0 ? "0" : words.left(count).section(' ', -1).remove(',').toStdString();
    };
    return pointsOf("CWGraph1") + " / " + pointsOf("CWGraph2");
  }
};

TEST_F(GraphStory, LinearFilesFillTheGraphsOfTheirChannels) {
  for (const auto& [channel, points] :
       {std::pair{1, "528 / 0"}, std::pair{2, "0 / 528"}, std::pair{3, "264 / 264"}, std::pair{4, "0 / 0"}}) {
    SCOPED_TRACE(channel);
    Open(LinearFile(channel, Record("1", 264, "11.2") + Record("2", 264, "-.7")));
    EXPECT_EQ(Points(), points);
    EXPECT_EQ(Text("txtPageNumberX") + Text("txtPageNumberY"), "01");
    EXPECT_FALSE(The<QPushButton>("cmdNext").isEnabled());
    EXPECT_FALSE(The<QPushButton>("cmdPrevious").isEnabled());
  }
  EXPECT_EQ(machine.fileQuestions.back().filter, "QBX Files (*.qbx)|*.qbx");
  EXPECT_EQ(machine.fileQuestions.back().defaultSuffix, "qbx");
}

TEST_F(GraphStory, RefusalsKeepOrClearTheName) {
  struct Row {
    std::string text;
    const char* message;
    bool keepsName;
  };
  for (const auto& [text, message, keepsName] :
       {Row{"", WrongFile, true}, Row{Header("1", "3", "Angles"), WrongFile, false},
        Row{Header("2"), nullptr, true}, Row{Shortened(Header(), 10), nullptr, true},
        Row{Shortened(Header(), 11), EndOfFile, true}}) {
    SCOPED_TRACE(text);
    Open(text);
    if (message != nullptr) Reads(message);
    EXPECT_EQ(shell::Shared.LastFailure.ends_with("the graphs are unchanged"), message == nullptr);
    EXPECT_EQ(Text("txtFileName"), keepsName ? DataFile("f.qbx").string() : "");
    EXPECT_EQ(Points(), "0 / 0");
  }
}

TEST_F(GraphStory, BrokenRecordsAreReportedAndNothingIsDrawn) {
  for (const auto& [channel, record, source] :
       {std::tuple{3, Record("1", 263, "1"), "BuildDoubleChannelArrays"},
        std::tuple{1, Record("1", 263, "1"), "BuildSingleChannelArray"}}) {
    Open(LinearFile(channel, Record("1", 264, "5") + record));
    ReadsError(source);
    EXPECT_EQ(Points(), "0 / 0");
  }
  Open(BinFile(Record("1", 132, "x") + Record("2", 132, "2")));
  ReadsError("Big");
}

TEST_F(GraphStory, TimesAndNumbersBelongToLinearRunsAlone) {
  auto& graph = The<platform::CWGraph>("CWGraph1");
  const auto offers = [&](const QString& caption) {
    const auto entries = graph.actions();
    return std::ranges::any_of(
        entries, [&](QAction* entry) { return entry->text().remove('&') == caption && entry->isVisible(); });
  };
  Open(LinearFile(3, Record("1", 264, "11.2")));
  graph.DrawNow();
  EXPECT_TRUE(offers("Time on the Axis"));
  graph.SetXView({10, 90});
  EXPECT_EQ(The<platform::CWGraph>("CWGraph2").XView(), graph.XView());
  graph.ShowAll();
  graph.DrawNow();
  EXPECT_TRUE(Words("CWGraph1")
                  .contains(QString::fromUtf8(
                      "In view: least 11°, mean 11°, greatest 11°; above 0°: 100 %, below: 0 %")));
  const auto copied = graph.NumbersToCopy();
  EXPECT_TRUE(copied.startsWith("f.qbx, launched 03/09/2004 14:05:07\nAxis\t"));
  EXPECT_TRUE(copied.endsWith("\nX\t0\t131\t11\t11\t11\t0\t100\t0\nY\t0\t131\t11\t11\t11\t0\t100\t0\n"));
  Open(BinFile(Record("1", 132, "1") + Record("2", 132, "2")));
  graph.DrawNow();
  EXPECT_FALSE(offers("Time on the Axis") || offers("Copy Numbers"));
  EXPECT_FALSE(Words("CWGraph1").contains("In view"));
  EXPECT_EQ(graph.XView(), (platform::CWGraphRange{-180, 180}));
  EXPECT_EQ(The<platform::CWGraph>("CWGraph2").XView(), (platform::CWGraphRange{-90, 90}));
}

TEST_F(GraphStory, KeysOpenAndPage) {
  auto& graph = The<platform::CWGraph>("CWGraph1");
  EXPECT_EQ(platform::Form::Active()->focusWidget(), &graph) << "the boxes above it are only read";
  WriteFile(DataFile("f.qbx"), BinFile(Record("1", 132, "1") + Record("2", 132, "2") + Record("3", 132, "3") +
                                       Record("4", 132, "4")));
  machine.WillChooseFile(DataFile("f.qbx").string());
  outer->activateWindow();
  QCoreApplication::processEvents();  // shortcuts work in the active window only
  Key(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(Text("txtPageNumberX"), "1");
  graph.SetXView({0, 20});
  QTest::keyClick(&graph, Qt::Key_PageDown);
  EXPECT_EQ(graph.XView().lower, 0);
  EXPECT_EQ(Text("txtPageNumberX"), "3");
  QTest::keyClick(&graph, Qt::Key_PageUp);
  EXPECT_EQ(Text("txtPageNumberX"), "1");
  Open(LinearFile(3, Record("1", 264, "11.2")));
  graph.SetXView({0, 20});
  QTest::keyClick(&graph, Qt::Key_PageDown);
  EXPECT_EQ(graph.XView().lower, 18) << "a run has no pages to step";
}

TEST_F(GraphStory, BinPairsArePagedThrough) {
  Press("Next");
  Reads("No data file has been selected!");
  Open(BinFile(Record("1", 132, "11") + Record("2", 132, "22") + Record("3", 132, "33") +
               Record("4", 132, "44")));
  struct Row {
    const char *press, *message, *pages;
    bool previous;
    const char* greatestX;
  };
  for (const auto& [press, message, pages, previous, greatest] :
       {Row{"Next", nullptr, "34", true, "33"},
        Row{"Next", "Unable to locate data page 5 in this file!", "56", true, "33"},
        Row{"Next", "Unable to locate data page 7 in this file!", "78", true, "33"},
        Row{"Previous", "Unable to locate data page 5 in this file!", "56", true, "33"},
        Row{"Previous", nullptr, "34", true, "33"}, Row{"Previous", nullptr, "12", true, "11"},
        Row{"Previous", nullptr, "12", false, "11"}, Row{"Next", nullptr, "34", true, "33"}}) {
    SCOPED_TRACE(std::string(press) + " " + pages);
    Press(press);
    if (message != nullptr) Reads(message);
    EXPECT_EQ(Text("txtPageNumberX") + Text("txtPageNumberY"), pages);
    EXPECT_EQ(The<QPushButton>("cmdPrevious").isEnabled(), previous);
    EXPECT_TRUE(Words("CWGraph1").contains(greatest)) << Words("CWGraph1").toStdString();
  }
}

TEST_F(GraphStory, AMissingPartnerIsRememberedForThatFile) {
  const std::string three = Record("1", 132, "1") + Record("2", 132, "2") + Record("3", 132, "3");
  Open(BinFile(three));
  Press("Next");
  Reads(EndOfFile);
  EXPECT_EQ(Text("txtPageNumberX"), "3");
  std::filesystem::remove(DataFile("f.qbx"));
  Press("Next");
  Reads(EndOfFile);
  Open(BinFile(three + Record("4", 132, "4") + Record("5", 132, "5") + Record("6", 132, "6")));
  Press("Next");
  Press("Next");
  EXPECT_EQ(Text("txtPageNumberX"), "5") << "the end of the first file no longer counts";
  Open(BinFile(Record("1", 132, "1")));
  Reads(EndOfFile);
}

}  // namespace bexlow::test
