// The angles live: the chain that both recording screens share, saving, and the tares.
#include "stories/LiveStory.h"

namespace bexlow::test {

/// The two screens whose chain and data file are one.
struct Recorder {
  const char* screen;
  char request;
  microseconds sampleTime;
  Bytes VirtualLogger::*reply;
  const char *columns, *record;
};

const Recorder Recorders[] = {
    {"Angles", 'A', AngleSampleTime, &VirtualLogger::angles, "Time(seconds),Angle X,Angle Y", "16.5,2.7"},
    {"Accelerometers", 'a', AccSampleTime, &VirtualLogger::accelerometers, "Time(seconds),Acc X,Acc Y,Acc Z",
     "330,408,322"}};

struct RecorderStory : LiveStory, ::testing::WithParamInterface<std::size_t> {
  void SetUp() override { OpenScreen(); }
  const Recorder& Kind() const { return Recorders[GetParam()]; }
  void OpenScreen() { Open(Kind().screen); }
  int Requests() const { return LiveStory::Requests(Kind().request); }
};

INSTANTIATE_TEST_SUITE_P(Screens, RecorderStory, ::testing::Range(std::size_t{0}, std::size(Recorders)));

// Stray bytes must not be taken for the beginning of the next reply: they would shift every later sample.
TEST_P(RecorderStory, SpoiltRepliesAreDroppedWithoutAMessageAndTearNoSample) {
  std::vector<std::pair<std::string, Spoil>> rows{
      {"short", [](Bytes& reply, microseconds&) { reply.pop_back(); }},
      {"none", Instead({})},
      {"long", [](Bytes& reply, microseconds&) { reply.push_back(0xEE); }},
      {"doubled", [](Bytes& reply, microseconds&) { reply.resize(2 * reply.size(), 0xEE); }},
      {"late", [](Bytes&, microseconds& delay) { delay = 700ms; }}};
  for (int strays = 1; strays <= std::ssize(logger.*Kind().reply); ++strays)
    rows.push_back({std::to_string(strays) + " behind it", [this, strays](Bytes& reply, microseconds&) {
                      const auto end = machine.Time() + ByteTime * (std::ssize(reply) + 1);
                      for (int i = 1; i <= strays; ++i)
                        machine.At(end + ByteTime * i, [this] { machine.Deliver(1, {0x11}); });
                    }});
  for (const auto& [what, spoil] : rows) {
    SCOPED_TRACE(what);
    OpenScreen();
    logger.SpoilOne(2, spoil);
    Save("spoilt.qbx");
    SampleFor(1s);
    EXPECT_TRUE(Sampling());
    const bool stalls = what == "short" || what == "none";
    const auto dropped = Requests() - std::ssize(Records());  // or still under way
    EXPECT_TRUE(!stalls || Requests() == 2);
    EXPECT_TRUE(what != "long" || dropped == 2) << dropped;
    for (int i = 0; stalls && i < 2; ++i) Sample();
    machine.wire.clear();
    machine.Pass(1s);
    EXPECT_NEAR(Requests(), 1e6 / static_cast<double>(Kind().sampleTime.count()), 2) << "one chain";
    EXPECT_EQ(KindsOfRecords(), std::set<std::string>{Kind().record});
  }
}

TEST_P(RecorderStory, ARecordingOpensFromMainInATabOfItsOwn) {
  const bool isAngles = GetParam() == 0;
  Save("live.qbx");
  SampleFor(2s);
  Sample();
  const auto count = Records().size();
  Append(path, "2.1,7\r\n2.2,");
  Leave();
  machine.WillChooseFile(path.string());
  Press("Open a data file...");
  EXPECT_EQ(ScreenInFront(), "Recording");
  EXPECT_EQ(Text("lblRun"), "live.qbx: " + values::CountText(static_cast<std::int64_t>(count)) +
                                " samples, 2.0 s; line " + std::to_string(count + 11) +
                                " is damaged; the last line is torn");
  auto& first = The<CWGraph>("CWGraph1");
  auto& last = The<CWGraph>(isAngles ? "CWGraph2" : "CWGraph3");
  EXPECT_EQ(last.Values().size(), count);
  QTest::keyClick(&first, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(last.ReadOutText().toStdString(),
            "Sample " + std::to_string(count - 1) + (isAngles ? ", 0:00:02.00: 2.7°" : ", 0:00:02.00: 322"));
  last.DrawNow();
  const auto words = last.Description();
  for (const char* part : {"Sampling time (h:mm:ss) from 0:00:00.00 to 0:00:02.00",
                           isAngles ? "In view: min 2.7°, mean 2.7°" : "Acc Z (bits) from 0 to 1024"})
    EXPECT_TRUE(words.contains(part)) << part;
  machine.WillCancelFile();
  FindOffered(last, isAngles ? "Save Both As..." : "Save All As...")->trigger();
  EXPECT_EQ(machine.fileQuestions.back().SuggestedName,
            isAngles ? "live X and Y.png" : "live Acc X and Acc Y and Acc Z.png");
  Story::Open(Header());
  Reads("This is not a recording of Angles or Accelerometers, or its header is damaged!");
  EXPECT_TRUE(Contains(Text("txtFileName"), "live.qbx"));
  EXPECT_EQ(last.Values().size(), count) << "what was on show stays";
  const auto& other = Recorders[1 - GetParam()];
  last.setFocus();
  Story::Open(Shortened(Header("", "", other.screen), 9) + other.columns + "\r\n1," + other.record + "\r\n");
  EXPECT_EQ(Text("lblRun"), "f.qbx: 1 sample, 0.0 s");
  EXPECT_EQ(Form::Active()->focusWidget(), isAngles ? &last : &first) << "the third graph is gone";
  EXPECT_EQ(first.accessibleName(), isAngles ? "Acc X" : "X");
  EXPECT_EQ(first.Limit(), isAngles ? 512 : 0);
  EXPECT_TRUE(FindOffered(first, isAngles ? "Copy All" : "Copy Both"));
}

TEST_P(RecorderStory, SavesEachSampleUnderItsTimeToItsOwnFileWhateverAnotherTabDid) {
  const auto chooseSave = [this](bool saving) {
    Choose("Data", "Save");
    EXPECT_EQ(Checked("Data", "Save"), saving);
    EXPECT_EQ(Shared.LiveSample.SavingToFile, saving);
  };
  machine.WillCancelFile();
  chooseSave(false);
  machine.WillChooseFile("/sys/live.qbx");
  chooseSave(false);
  Reads("The data file cannot be created!\r\n/sys/live.qbx: Permission denied\r\nNo data will be saved.");
  Save("own.qbx");
  chooseSave(false);
  machine.WillCancelFile();
  chooseSave(true);  // under the name of the earlier choice
  Shared.DataFileName = DataFile("other.qbx").string();
  Shared.LiveSample.SavingToFile = false;
  SampleFor(1s);
  Sample();
  EXPECT_FALSE(fs::exists(DataFile("other.qbx")));
  const auto records = Records();
  EXPECT_EQ(static_cast<int>(records.size()), Requests() - 1);
  ASSERT_GT(records.size(), 200U);
  const std::string record = Kind().record;
  EXPECT_EQ(records.front() + " " + records.back(), "0," + record + " 1," + record);
  EXPECT_GE(std::ranges::count(records, ".5," + record), 1);
  EXPECT_TRUE(Contains(FileText(path), "\r\n"s + Kind().columns + "\r\n0,"));
  chooseSave(false);  // it went on across stops
  SampleFor(100ms);
  EXPECT_EQ(Records().size(), records.size());
}

TEST_P(RecorderStory, AFileThatTakesNothingLosesRecordsAndNotTheChain) {
  Save("full.qbx");
  SampleFor(Kind().sampleTime * 3);
  Shared.DataFileName = DataFile("").string();
  for (const auto wait : {0us, microseconds(1'000'000)}) {  // so that the user can stop
    machine.Pass(wait);
    EXPECT_TRUE(machine.boxes.empty());
    machine.Pass(Kind().sampleTime);
    const auto box = Reads("Write"s + Kind().screen + "ToFile");
    EXPECT_TRUE(Contains(box, "Screen: General\r\nDescription: " + Shared.DataFileName + ": Is a directory"));
    const auto told = Form::Active()->Doing().Text();
    EXPECT_TRUE(told.starts_with("Sampling") && told.ends_with("; 3 samples are in ")) << told;
  }
  Shared.DataFileName = path.string();
  machine.Pass(1s + Kind().sampleTime * 3);
  EXPECT_EQ(Records().size(), 6U);
}

TEST_P(RecorderStory, SavingOutlivesTheScreen) {
  Save("outlives.qbx");
  SampleFor(Kind().sampleTime * 2);
  EXPECT_EQ(Records().size(), 2U);
  for (const auto& next : Recorders) {
    SCOPED_TRACE(next.screen);
    Leave();
    machine.Pass(10ms);  // the reply that was on its way finds nobody
    Choose("Display", next.screen);
    EXPECT_FALSE(Sampling() || Checked("Data", "Save"));
    const auto before = Records().size();
    SampleFor(next.sampleTime * 2);
    EXPECT_EQ(Records().size(), before + 2);
    EXPECT_TRUE(Records().back().ends_with(next.record));
  }
}

struct AnglesStory : LiveStory {
  void SetUp() override { Open("Angles"); }
  double Dial(const char* name) const { return The<CWKnob>(name).Value(); }
  void ExpectNoTare() {
    for (const auto* button : {"cmdTareX", "cmdTareY"}) EXPECT_FALSE(The(button).isEnabled());
  }
};

TEST_F(AnglesStory, ShowsWordsAsReceivedAndAnglesInDegrees) {
  logger.angles = {0xFF, 0xA4, 0x00, 0xB6};
  SampleFor(ShownTime);
  EXPECT_EQ(Texts("txtWordX", "txtWordY", "txtX", "txtY"), "65444|182|-0.5|0.5|");
  EXPECT_EQ(std::pair(Dial("dialX"), Dial("dialY")), std::pair(-0.5, 0.5));
  EXPECT_EQ(std::tuple(Shared.LiveSample.WordX, Shared.LiveSample.WordY), std::tuple(-91, 182));
  logger.angles = {0x10, 1, 0x10, 1};
  machine.Pass(AngleSampleTime * 2);
  Sample();
  EXPECT_EQ(Texts("txtX", "txtY", "txtWordX"), "||4097|") << "the last words";
  EXPECT_EQ(Dial("dialX"), 0);
}

TEST_F(AnglesStory, WhatIsPastLooksSo) {
  const auto look = [this] {
    const bool pale = The("fraAngles").graphicsEffect() != nullptr;
    EXPECT_EQ(pale, The("stripX").graphicsEffect() != nullptr);
    return (pale ? "pale " : "live ") + The<CWKnob>("dialX").ValueText().toStdString();
  };
  EXPECT_EQ(look(), "pale ");
  SampleFor(1s);
  EXPECT_EQ(look(), "live 16.5°");
  logger.silent = true;
  machine.Pass(1900ms);
  EXPECT_EQ(look(), "live 16.5°");
  machine.Pass(200ms);
  EXPECT_EQ(look(), "pale ");
  EXPECT_EQ(Text("txtX"), "16.5");
  logger.silent = false;
  Sample();
  Sample();
  EXPECT_EQ(look(), "pale ");
  machine.Pass(ShownTime);
  EXPECT_EQ(look(), "live 16.5°");
  Sample();
  EXPECT_EQ(look(), "pale ");
}

// The logger's tare at the start is the word F1C7, -20 degrees.
TEST_F(AnglesStory, UntaresThenTares) {
  using P = values::OnBoardParameters;
  using Row = std::tuple<const char*, const char*, const char*, const char*, double P::*>;
  EXPECT_EQ(Text("txtTareX"), "-20");
  ExpectNoTare();
  Sample();
  for (const auto& [press, box, transcript, degrees, tare] :
       {Row{"Untare X", "txtTareX", "0 70|12 0E|24 00|524 70|536 0F|548 00|548 41", "0", &P::XTare},
        Row{"Tare X", "txtTareX", "0 70|12 0E|24 0B|524 70|536 0F|548 B8|548 41", "16.5", &P::XTare},
        Row{"Untare Y", "txtTareY", "0 70|12 10|24 00|524 70|536 11|548 00|548 41", "0", &P::YTare},
        Row{"Tare Y", "txtTareY", "0 70|12 10|24 03|524 70|536 11|548 E8|548 41", "2.7", &P::YTare},
        Row{"Untare Y", "txtTareY", "0 70|12 10|24 00|524 70|536 11|548 00|548 41", "0", &P::YTare}}) {
    SCOPED_TRACE(press);
    machine.Pass(ShownTime);
    const auto mark = machine.wire.size();
    Press(press);
    EXPECT_EQ(machine.Transcript(mark), transcript);
    EXPECT_EQ(std::tuple(Text(box), values::PlainNumberText(Shared.OnBoardParameters.*tare)),
              std::tuple(degrees, degrees));
  }
  Sample();
  ExpectNoTare();
  EXPECT_EQ(Texts("cmdTareX", "cmdTareY"), "Untare X|Tare Y|") << "captions survive a stop";

  Key(Qt::Key_F5);
  EXPECT_TRUE(Sampling());
  The("cmdTareX").setFocus();
  for (const auto* caption : {"Tare X", "Untare X"}) {
    machine.Pass(ShownTime);
    Key(Qt::Key_Space);
    EXPECT_EQ(Text("cmdTareX") + Text("cmdTareY"), caption + "Tare Y"s) << "the focus stays";
  }
  auto& button = The<QPushButton>("cmdTareX");
  const auto post = [&](QEvent::Type type) {
    QApplication::postEvent(&button, new QMouseEvent(type, {5, 5}, button.mapToGlobal(QPointF(5, 5)),
                                                     Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
  };
  logger.delivery.chunk = 1;
  for (const auto late : {0ms, 40ms}) {
    const auto caption = button.text();
    machine.At(machine.Time() + 250ms, [&] {
      post(QEvent::MouseButtonPress);
      if (late == 0ms) post(QEvent::MouseButtonRelease);
    });
    logger.acknowledges = late;
    Press(caption);
    if (late != 0ms) post(QEvent::MouseButtonRelease);
    QApplication::processEvents();
    EXPECT_NE(button.text(), caption) << "the second click of two does nothing, wherever it ends";
    for (int i = 0; i < 200; ++i) {
      machine.Pass(1ms);
      ASSERT_EQ(Shared.LiveSample.AngleX, 16.5) << "an answer to the write is no part of a sample";
    }
  }
  Key(Qt::Key_F5);
  EXPECT_FALSE(Sampling());
  Shared.OnBoardParameters.XTare = 7;
  Key(Qt::Key_F5);
  EXPECT_EQ(Text("txtTareX"), "7") << "of the logger that was connected last";
  Open("Angles");
  EXPECT_EQ(Text("cmdTareX"), "Untare X");
}

TEST_F(AnglesStory, AFailedTareStopsTheChainAndKeepsTheNewCaption) {
  for (const auto& [caption, next, source] :
       {std::tuple{"Untare Y", "Tare Y", "RemoveTare"}, std::tuple{"Tare Y", "Untare Y", "GetTare"}}) {
    SCOPED_TRACE(source);
    Open("Angles");
    SampleFor(AngleSampleTime);
    if (Text("cmdTareY") != caption) Press(next);
    machine.Unplug(1);
    Press(caption);
    Reads(source);
    EXPECT_EQ(Text("cmdTareY"), next);
    EXPECT_TRUE(The("cmdTareY").isEnabled() && Sampling());
    machine.Plug(logger, 1);
    machine.wire.clear();
    machine.Pass(100ms);
    EXPECT_EQ(Requests('A'), 0);
  }
}

}  // namespace bexlow::test
