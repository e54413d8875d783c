// Opening data files, paging through the pairs of a Bin file, and the button-push review.
#include <QPrinter>
#include <qcustomplot.h>

#include "graph/Pictures.h"
#include "support/Story.h"

namespace bexlow::test {

constexpr auto WrongFile = "This is not a Quornell Download Pages file!";
constexpr auto EndOfFile = "End of data file has been reached!";

/// The bins of page 1 count 11 each, those of page 2 22, and so on.
std::string BinFile(int pages) {
  std::string text = Header("0");
  for (int n = 1; n <= pages; ++n) text += Record(std::to_string(n), 132, std::to_string(11 * n));
  return text;
}

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

struct GraphScreen : Story {
  CWGraph& X() const { return The<CWGraph>("CWGraph1"); }
  CWGraph& Y() const { return The<CWGraph>("CWGraph2"); }
  QAction* InMenu(const QString& entry) const { return FindOffered(X(), entry); }
};

struct GraphStory : GraphScreen {
  void SetUp() override { StartConnected("Graph"); }
  std::string Points() const {
    return std::to_string(X().Values().size()) + " / " + std::to_string(Y().Values().size());
  }
};

TEST_F(GraphStory, LinearFilesFillTheGraphsOfTheirChannels) {
  for (const auto& [channel, points] :
       {std::pair{"1", "528 / 0"}, std::pair{"2", "0 / 528"}, std::pair{"1", "528 / 0"},
        std::pair{"3", "264 / 264"}, std::pair{"4", "0 / 0"}}) {
    SCOPED_TRACE(channel);
    Open(Header("1", channel) + Record("1", 264, "11.2") + Record("2", 264, "-.7"));
    EXPECT_EQ(Points(), points);
    const auto& focused = dynamic_cast<CWGraph&>(*Form::Active()->focusWidget());
    EXPECT_EQ(focused.Values().empty(), X().Values().empty() && Y().Values().empty())
        << "of no use to the keys";
    EXPECT_EQ(Text("txtPageNumberX") + Text("txtPageNumberY"), "01");
    for (const auto* step : {"cmdNext", "cmdPrevious"}) EXPECT_FALSE(The(step).isEnabled()) << step;
  }
  EXPECT_EQ(machine.fileQuestions.back().Filter, "QBX Files (*.qbx)|*.qbx");
  EXPECT_EQ(machine.fileQuestions.back().DefaultExt, "qbx");
}

TEST_F(GraphStory, RefusedAndBrokenFilesDrawNothing) {
  const std::string page = Record("1", 264, "5"), broken = Record("2", 263, "1");
  Open(Header() + page);
  using Row = std::pair<std::string, const char*>;
  for (const auto& [text, box] :
       {Row{Header() + page + broken, "BuildDoubleChannelArrays"}, Row{"", WrongFile},
        Row{Header("1", "3", "Angles"), WrongFile}, Row{Header("2"), nullptr},
        Row{Shortened(Header(), 10), nullptr}, Row{Shortened(Header(), 11), EndOfFile},
        Row{Header("1", "1") + page + broken, "BuildSingleChannelArray"},
        Row{Header("0") + Record("1", 132, "x") + Record("2", 132, "2"), "Big"}}) {
    SCOPED_TRACE(text);
    Open(text);
    if (box != nullptr) Reads(box);
    EXPECT_EQ(Shared.LastFailure.ends_with("the graphs are unchanged"), box == nullptr);
    EXPECT_EQ(Text("txtFileName"), text == Header("1", "3", "Angles") ? "" : DataFile("f.qbx").string());
    EXPECT_EQ(Points(), "0 / 0");
  }
}

TEST_F(GraphStory, TimesAndNumbersBelongToLinearRunsAlone) {
  Open(Header() + Record("1", 264, "11.2"));
  X().DrawNow();
  InMenu("Time on the Axis")->trigger();
  EXPECT_TRUE(InMenu("Time on the Axis")->isChecked() && Y().TimeShown());
  EXPECT_TRUE(X().Description().contains(
      QString::fromUtf8("In view: min 11.2°, mean 11.2°, max 11.2°; above 0°: 100.0 %, below: 0.0 %")));
  InMenu("Copy Numbers")->trigger();
  const auto copied = QApplication::clipboard()->text();
  EXPECT_TRUE(copied.startsWith("f.qbx: launched 2004-03-09 14:05:07, 132 samples, 17.6 s\nAxis\t"));
  const QString row = " (°)\t0\t131\t132\t0\t0\t11.2\t11.2\t11.2\t0\t132\t0\n";
  EXPECT_TRUE(copied.endsWith("\nX" + row + "Y" + row)) << copied.toStdString();
  Open(Header() + Record("1", 264, "-90", 0, "179"));
  const auto points = [](auto& graph) {
    return graph.template findChild<QCustomPlot*>()->graph(2)->data()->size();
  };
  EXPECT_EQ(std::pair(points(X()), points(Y())), std::pair(133, 132)) << "a gap where X crosses its end";
  Open(BinFile(2));
  EXPECT_TRUE(The("cmdNext").isEnabled());
  X().DrawNow();
  for (const auto* entry : {"Time on the Axis", "Copy Numbers", "Copy Pushes", "Save What Is in View..."})
    EXPECT_EQ(InMenu(entry), nullptr) << entry;
  EXPECT_FALSE(X().Description().contains("In view"));
  EXPECT_TRUE(X().XView() == (CWGraphRange{-180, 180}) && Y().XView() == (CWGraphRange{-90, 90}));
}

TEST_F(GraphStory, AMissingPageBreaksTheCurveAndTheReadOutTellsWhatIsNoSample) {
  std::string first = "1", last = "3";
  for (std::size_t pair = 0; pair < PairsInRecord; ++pair) {
    first += pair == 130 ? ",BP,BP" : ",30,20";
    last += pair < 3 ? ",30,20" : ",0,0";
  }
  Open(BinFile(2));  // leaves none of its ways of drawing
  Open(Header() + first + "\r\n" + last + "\r\n");
  QTest::keyClick(&X(), Qt::Key_Home, Qt::ShiftModifier);
  for (const char* told :
       {"Sample 130, 17.3 s at 7.5 Hz: push", "Sample 131, 17.5 s at 7.5 Hz: 30°",
        "Sample 132, 35.2 s at 7.5 Hz: 30°", "Sample 133, 35.3 s at 7.5 Hz: 30°",
        "Sample 134, 35.5 s at 7.5 Hz: 30°", "Sample 135, 35.6 s at 7.5 Hz: not written"}) {
    for (int i = 0; i < 200 && !X().ReadOutText().startsWith(QString(told).left(10)); ++i)
      QTest::keyClick(&X(), Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(X().ReadOutText(), QString::fromUtf8(told));
  }
  EXPECT_TRUE(Y().ReadOutText().startsWith("Sample 135")) << "both move together again";
}

TEST_F(GraphStory, WhatIsInViewIsSavedWholeOrNotAtAll) {
  Open(Header() + Records(2, {2, 131}));
  X().SetXView({1, 4});
  X().DrawNow();
  const auto save = [&](const fs::path& file) {
    machine.WillChooseFile(file.string());
    InMenu("Save What Is in View...")->trigger();
  };
  save(DataFile("part.csv"));
  EXPECT_EQ(ReadWhole(DataFile("part.csv")),
            "Sample,Time(seconds),X angle,Y angle,Push\r\n1,.133,11.2,-5.6,\r\n2,.267,,,BP\r\n"
            "3,.4,11.2,-5.6,\r\n4,.533,11.2,-5.6,\r\n");
  const auto& asked = machine.fileQuestions.back();
  EXPECT_EQ(std::tuple(asked.SuggestedName, asked.Filter, asked.Flags),
            std::tuple("f 1 to 4.csv", "CSV Files (*.csv)|*.csv", OverwritePrompt));
  fs::create_symlink(path, DataFile("link.csv"));
  for (const auto& [file, reason] : {std::pair{path, "it is the data file"},
                                     {DataFile("link.csv"), "it is the"},
                                     {DataFile("none/a.csv"), "No such file"}}) {
    const auto before = ReadWhole(path);
    save(file);
    ASSERT_EQ(machine.boxes.size(), 1);
    EXPECT_TRUE(Contains(machine.boxes.front(), file.string() + ": " + reason));
    machine.boxes.clear();
    EXPECT_EQ(ReadWhole(path), before);
  }
  using Row = std::pair<CWGraphRange, const char*>;
  for (const auto& [view, copied] : {Row{{1, 4}, "1\t2\t0:00:00.3\t2004-03-09 14:05:07\t11.2\t-5.6\n"},
                                     {{100, 140}, "2\t131\t0:00:17.5\t2004-03-09 14:05:24\t11.2\t-5.6\n"}}) {
    X().SetXView(view);
    X().DrawNow();
    InMenu("Copy Pushes")->trigger();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Push\tSample\tTime\tClock time\tX before\tY before\n"s + copied);
  }
  X().SetXView({200, 210});
  X().DrawNow();
  EXPECT_EQ(InMenu("Copy Pushes"), nullptr);
}

TEST_F(GraphStory, ReportsAndPrintsAreOneSheetWholeOrNotAtAll) {
  const std::string run = Header() + Records(2, {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(InMenu("Report..."), nullptr) << "no file";
  using Row = std::tuple<const char*, std::string, std::string, CWGraphRange>;
  for (const auto& [entry, text, name, view] :
       {Row{"Report...", run, "f report", {0, 263}}, Row{"Report...", run, "f report", {2, 5}},
        Row{"Report...", Header("1", "2") + Record("1", 264, "5"), "f report", {0, 263}},
        Row{"Report...", BinFile(2), "f pages 1 and 2 report", {-180, 180}},
        Row{"Print...", run, "f X", {0, 263}}, Row{"Print Both...", run, "f X and Y", {0, 263}}}) {
    SCOPED_TRACE(name);
    Open(text);
    X().SetXView(view);
    for (auto* graph : {&X(), &Y()}) graph->DrawNow();
    const bool isReport = std::string(entry) == "Report...";
    for (const fs::path chosen : {"", "sheet.pdf", "f.qbx", "none/a.pdf"}) {
      graph::AskPrinter = [&, name = name, text = text](QPrinter& printer) {
        EXPECT_EQ(printer.docName().toStdString(), name);
        const bool presetsPdf = isReport || printer.printerName().isEmpty();
        EXPECT_EQ(printer.outputFileName().toStdString(), presetsPdf ? DataFile(name + ".pdf") : "");
        EXPECT_EQ(X().Cursors().size(), isReport && text == run ? 6 : 0);
        printer.setOutputFileName(QString::fromStdString(DataFile(chosen)));
        return !chosen.empty();
      };
      InMenu(entry)->trigger();
      ASSERT_EQ(machine.boxes.size(), chosen == "f.qbx" ? 1U : chosen.has_parent_path() ? 2U : 0U);
    }
    EXPECT_TRUE(X().Cursors().empty() && ReadWhole(path) == text) << "no data file is replaced";
    EXPECT_EQ(QByteArray::fromStdString(ReadWhole(DataFile("sheet.pdf"))).count("/Type /Page\n"), 1);
    EXPECT_TRUE(Contains(machine.boxes.back(), "none/a.pdf cannot be written: No such file"));
    machine.boxes.clear();
    fs::remove(DataFile("sheet.pdf"));
  }
}

TEST_F(GraphStory, PicturesAreSavedByTheirNameBearATitleAndHoldBothInOrder) {
  Open(Header() + Records(1, {}));
  X().SetXView({0, 20});
  {
    const platform::EventGate::Hold hold;
    InMenu("Whole Run")->trigger();  // a screen reader's press, while a handler runs or a box is open
  }
  EXPECT_EQ(X().XView().upper, 20);
  InMenu("Whole Run")->trigger();
  EXPECT_EQ(X().XView().upper, 131);
  machine.WillCancelFile();
  InMenu("Save Picture As...")->trigger();
  EXPECT_TRUE(machine.boxes.empty());
  const auto saved = [&](QAction* entry, const std::string& name, const std::string& written = {}) {
    machine.boxes.clear();
    const auto file = DataFile(written.empty() ? name : written);
    std::filesystem::remove(file);
    machine.WillChooseFile(DataFile(name).string());
    entry->trigger();
    return FileText(file);
  };
  for (const auto& [entry, suggested] :
       {std::pair{"Save Picture As...", "f X.png"}, {"Save Both As...", "f X and Y.png"}}) {
    using Row = std::tuple<const char*, const char*, const char*>;
    for (const auto& [name, written, start] :
         {Row{"a.png", "", "\x89PNG"}, Row{"a.pdf", "", "%PDF-"}, Row{"a.SVG", "", "<?xml"},
          Row{"plain", "plain.png", "\x89PNG"}, Row{"a.bmp", "", ""}, Row{"none/a.png", "", ""}}) {
      SCOPED_TRACE(std::string(entry) + " " + name);
      const auto bytes = saved(InMenu(entry), name, written);
      EXPECT_TRUE(bytes.starts_with(start) && bytes.empty() == (*start == 0));
      EXPECT_EQ(machine.boxes.size(), *start == 0 ? 1 : 0);
      EXPECT_TRUE(*start != 0 || Contains(machine.boxes.front(), name));
    }
    EXPECT_EQ(machine.fileQuestions.back().SuggestedName, suggested);
  }
  machine.boxes.clear();
  const auto title = [&](QAction* entry, const char* axis) {
    return saved(entry, "a.svg").find(std::string(">") + axis + ", f.qbx, launched 2004-03-09 14:05:07<");
  };
  const auto none = std::string::npos;
  EXPECT_TRUE(title(InMenu("Save Picture As..."), "X") != none &&
              title(InMenu("Save Picture As..."), "Y") == none);
  for (auto* from : {&X(), &Y()}) {
    auto* entry = FindOffered(*from, "Save Both As...");
    EXPECT_LT(title(entry, "X"), title(entry, "Y"));
  }
  InMenu("Copy Picture")->trigger();
  const auto one = QApplication::clipboard()->image();
  InMenu("Copy Both")->trigger();
  EXPECT_EQ(QApplication::clipboard()->image().height(), 2 * one.height());
  EXPECT_EQ(one.pixelColor(1, 1), QColor(Qt::white));
}

TEST_F(GraphStory, BinPairsArePagedThrough) {
  Press("Next");
  Reads("No data file has been selected!");
  EXPECT_EQ(Form::Active()->focusWidget(), &X()) << "the boxes above it are only read";
  WriteFile(DataFile("f.qbx"), BinFile(4));
  machine.WillChooseFile(DataFile("f.qbx").string());
  Key(Qt::Key_O, Qt::ControlModifier);
  X().SetXView({0, 20});
  for (const auto& [key, page] : {std::pair{Qt::Key_PageDown, "3"}, std::pair{Qt::Key_PageUp, "1"}}) {
    QTest::keyClick(&X(), key);
    EXPECT_EQ(std::tuple(X().XView().lower, Text("txtPageNumberX")), std::tuple(0, page));
  }
  using Row = std::tuple<const char*, const char*, const char*, bool, const char*>;
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
    EXPECT_EQ(The("cmdPrevious").isEnabled(), previous);
    EXPECT_TRUE(X().Description().contains(greatest)) << X().Description().toStdString();
    const auto drawn = std::string(greatest) == "33" ? "pages 3 and 4" : "pages 1 and 2";
    EXPECT_TRUE(Text("lblRun").ends_with(drawn)) << Text("lblRun");
  }
  WriteFile(DataFile("f.qbx"), Replaced(BinFile(4), "/2004", "/2005"));
  Press("Previous");
  EXPECT_TRUE(Text("lblRun").starts_with("f.qbx: launched 2005")) << "the file is another one by now";
}

TEST_F(GraphStory, AMissingPartnerIsRememberedForThatFile) {
  Open(BinFile(3));
  Press("Next");
  Reads(EndOfFile);
  EXPECT_EQ(Text("txtPageNumberX"), "3");
  fs::remove(DataFile("f.qbx"));
  Press("Next");
  Reads(EndOfFile);
  Open(BinFile(6));
  Press("Next");
  Press("Next");
  EXPECT_EQ(Text("txtPageNumberX"), "5") << "the end of the first file no longer counts";
  Open(BinFile(1));
  Reads(EndOfFile);
  Open(Header("0") + Record("1", 132, "7") + Record("3", 132, "8"));
  EXPECT_TRUE(
      Text("lblRun").ends_with("pages 1 and 3; page 2, which belongs to the first, does not follow it"));
}

struct ReviewStory : GraphScreen {
  void SetUp() override { StartConnected("Graph Button Pushes"); }
  /// The x positions of the cursors, which must be the same on both graphs.
  std::vector<double> Cursors() const {
    EXPECT_EQ(X().Cursors(), Y().Cursors());
    return X().Cursors();
  }
  void ExpectShown(const std::string& push, const std::vector<double>& cursors) const {
    EXPECT_EQ(Text("txtBPNumber") + " at " + Text("txtBPValue"), push);
    EXPECT_EQ(Cursors(), cursors);
  }
};

TEST_F(ReviewStory, StepsThroughPushesAndStopsAtBothEnds) {
  for (const auto* caption : {"<", ">", "Show All", "Show All"}) Press(caption);
  X().CursorClicked(0);
  ExpectShown(" at ", {0});  // no file yet
  Open(Header() + Records(7, {100, 250, 800}));
  EXPECT_EQ(Text("lblPush"), "push 1 of 3, 13.3 s");
  EXPECT_EQ(Text("lblRun"), "f.qbx: launched 2004-03-09 14:05:07, 921 samples, 3 pushes, 2 min 3 s");
  ExpectShown("0 at 100", {100});
  using Row = std::tuple<const char*, const char*, std::vector<double>>;
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
  EXPECT_EQ(Form::Active()->focusWidget(), &X());
  Y().SetXView({90, 120});
  for (const auto& [key, push, middle] :
       {std::tuple{Qt::Key_PageDown, "1 at 250", 250}, std::tuple{Qt::Key_PageDown, "2 at 800", 800},
        std::tuple{Qt::Key_PageUp, "1 at 250", 250}}) {
    QTest::keyClick(&Y(), key);
    ExpectShown(push, {static_cast<double>(middle)});
    for (const auto* graph : {&X(), &Y()})
      EXPECT_EQ(std::tuple(graph->XView().Middle(), graph->XView().Size()), std::tuple(middle, 30));
  }

  Press("Show All");
  Y().CursorClicked(800);
  ExpectShown("2 at 800", {800, 250, 800});
  X().CursorClicked(20);  // left from another file
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
  using Row = std::tuple<std::string, const char*, const char*, std::vector<double>>;
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
    EXPECT_EQ(X().Values().empty(), text.ends_with(broken));
    EXPECT_EQ(Text("lblRun").ends_with("no sample; record 2 is damaged"), text.ends_with(broken));
  }
  machine.WillCancelFile();
  Choose("File", "Open");
  EXPECT_TRUE(Contains(Reads("mnuOpen_Click"), "Number: 32755")) << "counts as a failure";
}

}  // namespace bexlow::test
