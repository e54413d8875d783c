// The accelerometers live, their data file, and the hidden DAC panel.
#include <QTest>

#include <limits>

#include "platform/graph/CWGraph.h"
#include "stories/LiveStory.h"

namespace bexlow::test {

class AccStory : public LiveStory {
 protected:
  void SetUp() override { OpenScreen(); }
  void OpenScreen() { Open("Accelerometers"); }
  double Slide(const char* name) const { return The<platform::CWSlide>(name).Value(); }
  void ServiceChord() { Key(Qt::Key_F11, Qt::ControlModifier); }
  bool PanelShown() const { return !The("fraHiddenSliders").isHidden(); }
  bool DacButtonsEnabled() const {
    return The("cmdWriteDAC1").isEnabled() && The("cmdWriteDAC2").isEnabled() &&
           The("cmdWriteDAC3").isEnabled();
  }
};

TEST_F(AccStory, ShowsReadingsAndClearsThemAtTheStop) {
  Sample();
  EXPECT_TRUE(Sampling());
  EXPECT_FALSE(Offered("Data", "Save"));
  machine.Pass(ShownTime);
  const std::tuple<const char*, const char*, double> rows[] = {
      {"txtX", "SlideAccX", 330}, {"txtY", "SlideAccY", 408}, {"txtZ", "SlideAccZ", 322}};
  for (const auto& [box, slide, reading] : rows) {
    EXPECT_EQ(Text(box), live::PlainNumberText(reading));
    EXPECT_EQ(Slide(slide), reading);
  }
  EXPECT_EQ(Shared.LiveSample.AccY, 408);
  The<platform::CWSlide>("AxSlider").MoveByUser(77);
  Sample();
  EXPECT_FALSE(machine.AnyPortOpen());
  EXPECT_TRUE(Offered("Data", "Save"));
  for (const auto& [box, slide, reading] : rows) {
    EXPECT_EQ(Text(box), "");
    EXPECT_EQ(Slide(slide), 0);
  }
  EXPECT_EQ(Text("txtSX"), "77");
}

TEST_F(AccStory, AClickHoldsTheStripsUntilTheNextStart) {
  auto& strip = The<platform::CWGraph>("stripX");
  const auto values = [&] { return strip.Values().empty() ? 0.0 : strip.Values().back(); };
  Sample();
  machine.Pass(milliseconds(500));
  EXPECT_EQ(values(), 330);
  QTest::mouseClick(&strip, Qt::LeftButton);
  logger.accelerometers[1] = 0;
  machine.Pass(milliseconds(500));
  EXPECT_EQ(values(), 330);
  Sample();
  Sample();
  machine.Pass(milliseconds(500));
  EXPECT_EQ(values(), 256);
  QTest::keyClick(&strip, Qt::Key_Plus);
  EXPECT_EQ(strip.XView().Size(), 30) << "nothing moves it";
}

TEST_F(AccStory, AReadingAbove32767EndsTheChainUntilTheNextStart) {
  for (const std::size_t high : {0U, 2U, 4U}) {
    SCOPED_TRACE(high);
    machine.wire.clear();
    logger.accelerometers[high] = 0x80;
    Sample();
    machine.Pass(milliseconds(50));
    ReadsError("MSComm1_OnComm");
    EXPECT_EQ(Requests('a'), 1);
    EXPECT_EQ(platform::Form::Active()->OnActivity().phase, "Sampling has stopped");
    logger.accelerometers[high] = 0x7F;
    Sample();
    Sample();
    machine.Pass(milliseconds(50));
    EXPECT_GT(Requests('a'), 5);
    Sample();
    machine.Pass(milliseconds(1000));  // what was on its way
  }
}

TEST_F(AccStory, OnlyTheChordOpensAndShutsThePanel) {
  EXPECT_FALSE(PanelShown());
  for (const bool shown : {true, false, true}) {
    ServiceChord();
    EXPECT_EQ(PanelShown(), shown);
    EXPECT_NE(The("lblNote").isHidden(), shown);
  }
  Open("Accelerometers");
  EXPECT_FALSE(PanelShown());
}

TEST_F(AccStory, SlideAndTextFollowEachOther) {
  Shared.OnBoardParameters.DAC2 = 513;
  OpenScreen();
  EXPECT_EQ(Text("txtSY"), "513");
  EXPECT_EQ(Slide("AySlider"), 513);
  EXPECT_EQ(Text("txtSX"), "0");
  ServiceChord();
  for (const auto& [text, slide] :
       {std::pair{"1024", 1024.0}, std::pair{".5x", 0.5}, std::pair{"none", 0.0}, std::pair{"5000", 5000.0},
        std::pair{"-3", -3.0}, std::pair{"1e400", std::numeric_limits<double>::max()}}) {
    SCOPED_TRACE(text);
    Type("txtSZ", text);
    EXPECT_EQ(Slide("AzSlider"), slide);
    The("AzSlider").grab();
  }
  The<platform::CWSlide>("AzSlider").MoveByUser(300);
  EXPECT_EQ(Text("txtSZ"), "300");
  EXPECT_TRUE(machine.wire.empty());
  EXPECT_EQ(Shared.OnBoardParameters.DAC3, 0);
}

TEST_F(AccStory, WritesADacInTheMiddleOfTheChain) {
  ServiceChord();
  struct Row {
    const char *text, *typed, *caption, *wire;
    double config::OnBoardParameters::*dac;
  };
  using P = config::OnBoardParameters;
  const Row rows[] = {
      {"txtSX", "1024", "Write DAC1", "0 70|12 3E|24 04|124 70|136 3F|148 00|248 61", &P::DAC1},
      {"txtSY", "513", "Write DAC2", "0 70|12 40|24 02|124 70|136 41|148 01|248 61", &P::DAC2},
      {"txtSZ", "-1", "Write DAC3", "0 70|12 42|24 FF|124 70|136 43|148 FF|248 61", &P::DAC3}};
  Sample();
  for (const auto& [text, typed, caption, wire, dac] : rows) {
    SCOPED_TRACE(caption);
    Type(text, typed);
    EXPECT_EQ(Shared.OnBoardParameters.*dac, 0);
    machine.Pass(milliseconds(10));
    const auto mark = machine.wire.size();
    Press(caption);
    EXPECT_EQ(machine.Transcript(mark), wire);
    EXPECT_EQ(Shared.OnBoardParameters.*dac, std::stod(typed));
    EXPECT_TRUE(DacButtonsEnabled());
    machine.Pass(AccSampleTime);
    EXPECT_EQ(machine.wire.size() - mark, 8U) << "one chain, no more";
  }
}

// A sample that comes late: during the writes, between the flush and the new one, or after it.
TEST_F(AccStory, ALateReplyToADacWriteTearsNoSampleAndLeavesOneChain) {
  for (int lateMs = 0; lateMs <= 260; lateMs += 4) {
    SCOPED_TRACE(lateMs);
    OpenScreen();
    logger.chunk = 1;
    ServiceChord();
    Save("late.qbx");
    Sample();
    machine.Pass(milliseconds(10));
    logger.spoil = [&](Bytes&, microseconds& delay) { delay = milliseconds(lateMs); };
    machine.Pass(AccSampleTime);
    logger.spoil = {};
    Press("Write DAC1");
    machine.Pass(milliseconds(100));
    machine.wire.clear();
    machine.Pass(milliseconds(1000));
    EXPECT_LE(Requests('a'), 1'000'000 / AccSampleTime.count() + 1);
    EXPECT_GE(Requests('a'), 1'000'000 / AccSampleTime.count() - 5);
    EXPECT_EQ(KindsOfRecords(), std::vector<std::string>{"330,408,322"});
  }
}

TEST_F(AccStory, DacFailuresLeaveWhatTheyLeave) {
  struct Row {
    bool sampling;
    const char* typed;
    std::vector<const char*> sources;  ///< in order
    bool chainGoesOn;
  };
  for (const auto& [sampling, typed, sources, chainGoesOn] :
       {Row{false, "10", {"WriteDAC", "WriteDAC", "cmdWriteDAC1_Click"}, false},  // the port is closed
        Row{true, "1e300", {"cmdWriteDAC1_Click"}, false},                        // no whole number
        Row{true, "70000", {"cmdWriteDAC1_Click"}, false},                        // no word
        Row{true, "-40000", {"cmdWriteDAC1_Click"}, false}, Row{true, "65535", {}, true},
        Row{true, "-32768", {}, true}}) {
    SCOPED_TRACE(typed);
    OpenScreen();
    ServiceChord();
    if (sampling) Sample();
    Type("txtSX", typed);
    machine.Pass(milliseconds(10));
    machine.wire.clear();
    Press("Write DAC1");
    for (const auto* source : sources) ReadsError(source);
    EXPECT_EQ(Requests('p'), sources.empty() ? 2 : 0) << "never one cell alone";
    EXPECT_EQ(DacButtonsEnabled(), chainGoesOn);
    machine.wire.clear();
    machine.Pass(milliseconds(50));
    EXPECT_EQ(Requests('a') > 0, chainGoesOn);
  }
}

}  // namespace bexlow::test
