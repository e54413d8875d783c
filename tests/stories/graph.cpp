// Opening data files and paging through the pairs of a Bin file.
#include <QPushButton>

#include "platform/CWGraph.h"
#include "support/Story.h"

namespace bexlow::test {

namespace {

constexpr auto WrongFile = "This is not a Quornell Download Pages file!";
constexpr auto EndOfFile = "End of data file has been reached!";

std::string Header(const std::string& line2, const std::string& line10, const std::string& line11) {
  std::string text = "Quornell Bexlow Data File Version 3.2.3\r\n" + line2 + "\r\n";
  for (int line = 3; line <= 9; ++line) text += "line " + std::to_string(line) + "\r\n";
  return text + line10 + "\r\n" + line11 + "\r\nhead\r\n";
}

std::string Record(int page, int fields, const std::string& field) {
  std::string text = std::to_string(page);
  for (int i = 0; i < fields; ++i) text += "," + field;
  return text + "\r\n";
}

std::string LinearFile(int channel, const std::string& records) {
  return Header("Download Pages", "Bin/Linear Mode = 1", "Linear Channel = " + std::to_string(channel)) +
         records;
}

std::string BinFile(const std::string& records) {
  return Header("Download Pages", "Bin/Linear Mode = 0", "Linear Channel = 3") + records;
}

}  // namespace

class GraphStory : public Story {
 protected:
  void OpenScreen() {
    StartConnected();
    Choose("Tools", "Graph");
  }
  void Open(const std::string& text, const std::string& name = "f.qbx") {
    WriteFile(DataFile(name), text);
    machine.WillChooseFile(DataFile(name).string());
    Choose("File", "Open");
  }
  /// "points X / points Y" as the graphs tell them.
  std::string Points() const { return PointsOf("CWGraph1") + " / " + PointsOf("CWGraph2"); }
  std::string PointsOf(const char* name) const {
    const QString words = The<platform::CWGraph>(name).Description();
    const auto count = words.indexOf(" point");
    if (count < 0) return "0";
    return words.left(count).section(' ', -1).remove(',').toStdString();
  }
  QString Words(const char* name) const { return The<platform::CWGraph>(name).Description(); }
};

TEST_F(GraphStory, LinearFilesFillTheGraphsOfTheirChannels) {
  OpenScreen();
  for (const auto& [channel, points] :
       {std::pair{1, "528 / 0"}, std::pair{2, "0 / 528"}, std::pair{3, "264 / 264"}, std::pair{4, "0 / 0"}}) {
    SCOPED_TRACE(channel);
    Open(LinearFile(channel, Record(1, 264, "11.2") + Record(2, 264, "-.7")));
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
    const char* what;
    std::string text;
    const char* message;
    bool keepsName;
  };
  const std::string good = LinearFile(3, "");
  const std::vector<Row> rows{
      {"empty", "", WrongFile, true},
      {"angles", Header("Angles", "Time(seconds),Angle X,Angle Y", "1,2,3"), WrongFile, false},
      {"binary", std::string("\0\1\n\2\3\n", 6) + std::string(9, '\n'), WrongFile, false},
      {"another mode", Header("Download Pages", "Bin/Linear Mode = 2", "Linear Channel = 3"), nullptr, true},
      {"ten lines", good.substr(0, good.find("Linear Channel")), nullptr, true},
      {"CR alone", "a\rb\rc\r", nullptr, true},
  };
  OpenScreen();
  for (const auto& [what, text, message, keepsName] : rows) {
    SCOPED_TRACE(what);
    Open(text);
    if (message != nullptr) Reads(message);
    EXPECT_EQ(Text("txtFileName"), keepsName ? DataFile("f.qbx").string() : "");
    EXPECT_EQ(Points(), "0 / 0");
  }
}

TEST_F(GraphStory, ElevenLinesReachTheEnd) {
  OpenScreen();
  std::string text = LinearFile(3, "");
  text.resize(text.find("head"));
  Open(text);
  Reads(EndOfFile);
  EXPECT_EQ(Points(), "0 / 0");
}

TEST_F(GraphStory, BrokenRecordsAreReportedAndNothingIsDrawn) {
  OpenScreen();
  for (const auto& [what, channel, record, source] :
       {std::tuple{"short", 3, Record(1, 263, "1"), "BuildDoubleChannelArrays"},
        std::tuple{"short", 1, Record(1, 263, "1"), "BuildSingleChannelArray"},
        std::tuple{"no comma", 3, std::string("nonsense\r\n"), "BuildDoubleChannelArrays"},
        std::tuple{"too large", 2, Record(1, 264, "99999"), "BuildSingleChannelArray"}}) {
    SCOPED_TRACE(what);
    Open(LinearFile(channel, Record(1, 264, "5") + record));
    ReadsError(source);
    EXPECT_EQ(Points(), "0 / 0");
  }
}

TEST_F(GraphStory, CancelAndVanishedFilesChangeNothing) {
  OpenScreen();
  Open(LinearFile(3, Record(1, 264, "5")));
  machine.WillCancelFile();
  Choose("File", "Open");
  EXPECT_EQ(Text("txtFileName"), DataFile("f.qbx").string());
  machine.WillChooseFile("/nowhere/f.qbx");
  Choose("File", "Open");
  EXPECT_EQ(Points(), "132 / 132");
}

TEST_F(GraphStory, BinPairsArePagedThrough) {
  OpenScreen();
  Press("Next");
  Reads("No data file has been selected!");
  Open(BinFile(Record(1, 132, "11") + Record(2, 132, "22") + Record(3, 132, "33") + Record(4, 132, "44")));
  struct Row {
    const char* press;
    const char* message;
    const char* pages;
    bool previous;
    const char* greatestX;
  };
  const std::vector<Row> rows{{"Next", nullptr, "34", true, "33"},
                              {"Next", "Unable to locate data page 5 in this file!", "56", true, "33"},
                              {"Next", "Unable to locate data page 7 in this file!", "78", true, "33"},
                              {"Previous", "Unable to locate data page 5 in this file!", "56", true, "33"},
                              {"Previous", nullptr, "34", true, "33"},
                              {"Previous", nullptr, "12", true, "11"},
                              {"Previous", nullptr, "12", false, "11"},
                              {"Next", nullptr, "34", true, "33"}};
  for (const auto& [press, message, pages, previous, greatest] : rows) {
    SCOPED_TRACE(std::string(press) + " " + pages);
    Press(press);
    if (message != nullptr) Reads(message);
    EXPECT_EQ(Text("txtPageNumberX") + Text("txtPageNumberY"), pages);
    EXPECT_EQ(The<QPushButton>("cmdPrevious").isEnabled(), previous);
    EXPECT_TRUE(Words("CWGraph1").contains(greatest)) << Words("CWGraph1").toStdString();
  }
}

TEST_F(GraphStory, AMissingPartnerIsRememberedForThatFile) {
  OpenScreen();
  const std::string three = Record(1, 132, "1") + Record(2, 132, "2") + Record(3, 132, "3");
  Open(BinFile(three));
  Press("Next");
  Reads(EndOfFile);
  EXPECT_EQ(Text("txtPageNumberX"), "3");
  std::filesystem::remove(DataFile("f.qbx"));
  Press("Next");
  Reads(EndOfFile);
  Open(BinFile(three + Record(4, 132, "4")));
  Press("Next");
  EXPECT_EQ(Text("txtPageNumberX"), "3") << "the end of the first file no longer counts";
  Open(BinFile(Record(1, 132, "1")));
  Reads(EndOfFile);
}

TEST_F(GraphStory, BigReportsFieldsThatAreNoNumbers) {
  OpenScreen();
  for (const std::string& bad : {Record(1, 131, "1"), Record(1, 132, "x"), Record(1, 132, "")}) {
    Open(BinFile(bad + Record(2, 132, "2")));
    ReadsError("Big");
  }
}

}  // namespace bexlow::test
