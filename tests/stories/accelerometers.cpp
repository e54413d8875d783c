// The accelerometers live, their data file, and the hidden DAC panel.
#include "stories/LiveStory.h"

namespace bexlow::test {

struct AccStory : LiveStory {
  void SetUp() override { Open("Accelerometers"); }
  double Slide(const std::string& name) const { return The<CWSlide>(name).Value(); }
};

TEST_F(AccStory, ShowsReadingsClearsThemAtTheStopAndAClickHoldsTheStrips) {
  auto& strip = The<CWGraph>("stripX");
  const auto onStrip = [&] { return strip.Values().empty() ? 0.0 : strip.Values().back(); };
  const auto shown = [this] {
    std::string texts;
    for (const std::string axis : {"X", "Y", "Z"})
      texts += Text("txt" + axis) + " " + values::PlainNumberText(Slide("SlideAcc" + axis)) + " ";
    return texts;
  };
  Sample();
  EXPECT_FALSE(Offered("Data", "Save"));
  machine.Pass(500ms);
  EXPECT_EQ(onStrip(), 330);
  QTest::mouseClick(&strip, Qt::LeftButton);
  logger.accelerometers[1] = 1;
  machine.Pass(500ms);
  logger.accelerometers[1] = 0;
  machine.Pass(AccSampleTime * 2);
  logger.silent = true;  // behind the only sample of 256
  machine.Pass(ShownTime);
  EXPECT_EQ(shown(), "256 256 408 408 322 322 ");
  EXPECT_EQ(Shared.LiveSample.AccY, 408);
  EXPECT_EQ(onStrip(), 330);
  Sample();
  EXPECT_TRUE(Offered("Data", "Save"));
  EXPECT_EQ(shown(), " 0  0  0 ");
  logger.silent = false;
  SampleFor(500ms);
  EXPECT_EQ(onStrip(), 256);
  QTest::keyClick(&strip, Qt::Key_Plus);
  EXPECT_EQ(strip.XView().Size(), 30) << "nothing moves it";
}

TEST_F(AccStory, SlideAndTextFollowEachOtherOnAPanelThatTheChordOpens) {
  Shared.OnBoardParameters.DAC2 = 513;
  Open("Accelerometers");
  EXPECT_TRUE(The("fraHiddenSliders").isHidden());
  for (const bool shown : {true, false, true}) {
    ServiceChord();
    EXPECT_EQ(std::pair(The("fraHiddenSliders").isHidden(), The("lblNote").isHidden()),
              std::pair(!shown, !shown));
  }
  EXPECT_EQ(Texts("txtSX", "txtSY"), "0|513|");
  EXPECT_EQ(Slide("AySlider"), 513);
  for (const auto& [text, slide] :
       {std::pair{"1024", 1024.0}, std::pair{".5x", 0.5}, std::pair{"none", 0.0}, std::pair{"5000", 5000.0},
        std::pair{"-3", -3.0}, std::pair{"1e400", std::numeric_limits<double>::max()}}) {
    Type("txtSZ", text);
    EXPECT_EQ(Slide("AzSlider"), slide) << text;
    The("AzSlider").grab();
  }
  The<CWSlide>("AzSlider").MoveByUser(300);
  EXPECT_EQ(Text("txtSZ"), "300");
  EXPECT_TRUE(machine.wire.empty() && Shared.OnBoardParameters.DAC3 == 0);
}

TEST_F(AccStory, WritesADacInTheMiddleOfTheChainOrNotAtAll) {
  // The sources of failures, in order.
  using Row = std::tuple<std::size_t, const char*, const char*, std::vector<const char*>>;
  using P = values::OnBoardParameters;
  double P::*dacs[] = {&P::DAC1, &P::DAC2, &P::DAC3};
  for (const auto& [dac, typed, wire, sources] :
       {Row{1, "1024", "0 70|12 3E|24 04|124 70|136 3F|148 00|248 61", {}},
        Row{2, "513", "0 70|12 40|24 02|124 70|136 41|148 01|248 61", {}},
        Row{3, "-1", "0 70|12 42|24 FF|124 70|136 43|148 FF|248 61", {}},
        Row{1, "65535", "0 70|12 3E|24 FF|124 70|136 3F|148 FF|248 61", {}},
        Row{1, "-32768", "0 70|12 3E|24 80|124 70|136 3F|148 00|248 61", {}},
        Row{1, "1e300", "", {"cmdWriteDAC1_Click"}},   // no whole number
        Row{1, "70000", "", {"cmdWriteDAC1_Click"}},   // no word
        Row{1, "-40000", "", {"cmdWriteDAC1_Click"}},  // none either
        Row{2, "10", "", {"WriteDAC", "WriteDAC", "cmdWriteDAC2_Click"}}}) {
    SCOPED_TRACE(typed);
    const bool sent = sources.empty(), sampling = sources.size() < 3;  // else the port is closed
    Open("Accelerometers");
    ServiceChord();
    if (sampling) Sample();
    Shared.OnBoardParameters.*dacs[dac - 1] = 7;
    Type("txtS"s + "XYZ"[dac - 1], typed);
    machine.Pass(10ms);
    const auto mark = machine.wire.size();
    Press(("Write DAC" + std::to_string(dac)).c_str());
    for (const auto* source : sources) Reads(source);
    EXPECT_EQ(machine.Transcript(mark), wire);
    EXPECT_EQ(Shared.OnBoardParameters.*dacs[dac - 1], sent || !sampling ? std::stod(typed) : 7);
    for (const auto* button : {"cmdWriteDAC1", "cmdWriteDAC2", "cmdWriteDAC3"})
      EXPECT_EQ(The(button).isEnabled(), sent) << button;
    machine.Pass(AccSampleTime);
    EXPECT_EQ(machine.wire.size() - mark, sent ? 8U : 0U) << "one chain, no more";
  }
}

// A sample that comes late: during the writes, between the flush and the new one, or after it.
TEST_F(AccStory, ALateReplyToADacWriteTearsNoSampleAndLeavesOneChain) {
  for (int lateMs = 0; lateMs <= 260; lateMs += 4) {
    SCOPED_TRACE(lateMs);
    Open("Accelerometers");
    logger.delivery.chunk = 1;
    ServiceChord();
    Save("late.qbx");
    SampleFor(10ms);
    logger.spoil = [&](Bytes&, microseconds& delay) { delay = milliseconds(lateMs); };
    machine.Pass(AccSampleTime);
    logger.spoil = {};
    Press("Write DAC1");
    machine.Pass(100ms);
    machine.wire.clear();
    machine.Pass(1s);
    EXPECT_NEAR(Requests('a'), 1'000'000 / AccSampleTime.count() - 2, 3);
    EXPECT_EQ(KindsOfRecords(), std::set<std::string>{"330,408,322"});
  }
}

}  // namespace bexlow::test
