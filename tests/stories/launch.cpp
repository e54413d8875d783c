// The launch on Main: what goes out and when, what the user is told, and each step's failure.
#include "support/Story.h"

namespace bexlow::test {

constexpr auto Launched =
    "Disconnect the serial cable from the Bexlow! The shaker will shake momentarily indicating that "
    "datalogging has begun.";
constexpr auto NotStamped = "Launch Time write to EEPROM failed! Launch did not occur.";

class Launch : public Story {
 protected:
  void SetUp() override {
    logger.eraseBytes = 6300;
    StartConnected();
  }
  void ChooseLaunch(Answer answer = Answer::Yes) {
    machine.WillAnswer(answer);
    Choose("Tools", "Launch");
    Reads(
        "Bexlow will erase all on-board data before launch!\r\nClick YES to proceed.\r\n"
        "Click NO to cancel this operation.");
  }
  void ExpectIdle() {
    EXPECT_FALSE(The<QGroupBox>("fraErase").isVisibleTo(platform::Form::Active()));
    EXPECT_EQ(Text("fraErase"), "Erase");
    Story::ExpectIdle();
  }
};

TEST_F(Launch, StampsErasesAndLaunchesAndFollowsTheErase) {
  ChooseLaunch(Answer::No);
  EXPECT_EQ(machine.buttons.at(0), platform::Buttons::Confirm);
  Shared.CurrentCommPort = 0;
  Choose("Tools", "Launch");
  Reads("No comm port has been selected!");
  EXPECT_TRUE(machine.wire.empty());
  ExpectIdle();

  Shared.CurrentCommPort = 1;
  ChooseLaunch();
  EXPECT_EQ(machine.Transcript(),
            "0 70|12 67|24 03|36 70|48 68|60 07|72 70|84 69|96 D4|108 70|120 6A|132 0E|144 70|156 6B|168 05|"
            "180 70|192 6C|204 28|216 70|228 6D|240 02|252 65|1252 58");
  EXPECT_TRUE(The<QGroupBox>("fraErase").isVisibleTo(platform::Form::Active()));
  ExpectProgress("Erase", 0, "fraErase");
  machine.Pass(250ms);
  ExpectProgress("Erasing page 416", 416, "fraErase");  // 1250 bytes less 2
  machine.Pass(250ms);
  ExpectProgress("Erasing page 499", 499, "fraErase");  // and 250 less 2
  EXPECT_TRUE(Offered("Tools", "Launch"));
  machine.Pass(4500ms);
  ExpectProgress("Erasing page 1987", 1987, "fraErase");  // 6000 bytes, of which each of 20 ticks loses 2
  machine.Pass(250ms);
  ExpectProgress("Erasing page 2047", 2047, "fraErase");  // of 2069
  machine.Pass(250ms);
  ExpectProgress("Erasing page 2047", 2047, "fraErase");
  EXPECT_TRUE(machine.boxes.empty());
  machine.Pass(250ms);
  Reads(Launched);
  EXPECT_FALSE(Offered("Tools", "Launch"));
  EXPECT_FALSE(Offered("Display", "Accelerometers"));
  ExpectIdle();
}

TEST_F(Launch, SilenceIsTakenForTheEnd) {
  for (const int bytes : {0, 3}) {
    SCOPED_TRACE(bytes);
    logger.eraseBytes = bytes;
    ChooseLaunch();
    machine.Pass(249ms);
    EXPECT_TRUE(machine.boxes.empty());
    machine.Pass(1ms);
    Reads(Launched);
    ExpectIdle();
    Choose("File", "Connect");
    Key(Qt::Key_Escape);
    EXPECT_TRUE(
        Text("lblHint").starts_with(bytes == 0 ? "The logger sent nothing" : "The logger is on its run"));
    Choose("File", "Connect");
    Press("OK");
  }
}

TEST_F(Launch, APortThatVanishesAtEachByte) {
  logger.eraseBytes = 0;
  for (int bytes = 0; bytes <= 23; ++bytes) {
    SCOPED_TRACE(bytes);
    logger.PlugFor(machine, 1, bytes);
    ChooseLaunch();
    if (bytes == 0 || bytes == 21) Reads("OpenCommPort");
    if (bytes == 23) machine.Pass(250ms);
    Reads(bytes < 21 ? NotStamped : bytes < 23 ? "Bexlow failed to launch!" : Launched);
    EXPECT_EQ(Offered("Tools", "Launch"), bytes < 23);
    ExpectIdle();
  }
}

TEST_F(Launch, ASecondLaunchDuringTheEraseStartsOverUnlessItsStampFails) {
  ChooseLaunch();
  machine.Pass(1s);
  machine.wire.clear();
  ChooseLaunch();
  ASSERT_EQ(machine.wire.size(), 23u);
  EXPECT_EQ(machine.wire[21].byte, 'e');
  EXPECT_TRUE(machine.IsOpen(1));
  machine.Pass(100ms);
  machine.Unplug(1);
  ChooseLaunch();
  Reads(NotStamped);
  machine.Pass(250ms);
  EXPECT_TRUE(machine.boxes.empty()) << "the bytes that came before are still counted";
  machine.Pass(250ms);
  Reads(Launched);
  ExpectIdle();
}

}  // namespace bexlow::test
