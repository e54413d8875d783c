// The port search, what OK does with the port, and the launch.
#include "support/Story.h"

namespace bexlow::test {

struct ConnectStory : Story {
  void SetUp() override {
    machine.Plug(logger, 1);
    Start();
    Choose("File", "Connect");
  }
  /// The port that is selected, and the one that is stored.
  std::string Ports() const {
    return std::to_string(Shared.CurrentCommPort) + "/" + GetSetting("Startup", "CurrentCommPort", "-");
  }
  void ExpectOff() { EXPECT_FALSE(The("cmdOK").isEnabled() || The("cmdAutoDetect").isEnabled()); }
};

TEST_F(ConnectStory, AutoDetectTakesTheFirstPortThatAnswers) {
  VirtualLogger mute[4], later;
  for (int i = 0; i < 4; ++i) {
    mute[i].silent = true;
    machine.Plug(mute[i], i + 1);
  }
  machine.taken = {3};
  machine.Plug(logger, 5);
  machine.Plug(later, 6);
  const auto before = machine.Time();
  machine.At(before + 100ms, [&] {
    ExpectOff();
    EXPECT_EQ(Text("lblDevice"), "Asking on Comm 1...");
  });
  Press("Auto Detect");
  EXPECT_EQ(Text("lblDevice"),
            "Device /dev/virtual5: virtual adapter\n\n"
            "Comm 1 (/dev/virtual1): opened, but nobody answered\n"
            "Comm 2 (/dev/virtual2): opened, but nobody answered\n"
            "Comm 3 (/dev/virtual3): it is in use\n"
            "Comm 4 (/dev/virtual4): opened, but nobody answered\n"
            "Comm 5 (/dev/virtual5): the logger answered");
  Reads("Bexlow found on Comm 5!");
  EXPECT_EQ(later.replies, 0) << "ports above the first are not tried";
  EXPECT_EQ((machine.Time() - before) / 500ms, 4) << "a taken port costs no wait, a silent one 500 ms";
  EXPECT_EQ(Ports(), "1/-") << "the search selects nothing";
  Press("OK");
  EXPECT_EQ(Ports(), "5/5");
}

TEST_F(ConnectStory, AutoDetectAcceptsExactlyOneEcho) {
  machine.Unplug(1);
  machine.Plug(logger, 16);
  for (const auto& reply : {Bytes{'f'}, Bytes{'f', 'f'}, Bytes{'F'}, Bytes{}}) {
    logger.SpoilOne(1, Instead(reply));
    Press("Auto Detect");
    Reads(reply == Bytes{'f'} ? "Bexlow found on Comm 16!" : "Bexlow not found on Comm 1-16!");
    EXPECT_EQ(ScreenInFront(), "Connect");
    ExpectIdle();
  }
  EXPECT_NE(Shared.LastFailure, "");
  Press("Auto Detect");
  Reads("Bexlow found on Comm 16!");
  EXPECT_EQ(Shared.LastFailure, "");
}

TEST_F(ConnectStory, OkRetrievesTheTareBlockAndPortZeroNothing) {
  for (const auto& [cell, byte] : {std::pair{14, 0x80}, {15, 0}, {16, 0x40}, {17, 0}, {30, 9}})
    logger.eeprom[static_cast<std::size_t>(cell)] = static_cast<std::uint8_t>(byte);
  Press("OK");
  const auto* requests = "0 72|12 0E|262 72|274 0F|524 72|536 10|786 72|798 11|1048 72|1060 1E";
  EXPECT_EQ(machine.Transcript(), requests);
  const auto& read = Shared.OnBoardParameters;
  EXPECT_EQ(std::tuple(read.XTare, read.YTare, read.UpdateTimeIncrement), std::tuple(-180, 45, 9));
  EXPECT_TRUE(ScreenInFront() == "Main" && !machine.AnyPortOpen());

  Choose("File", "Connect");
  Type("NumEditCommPort", "0");
  Press("OK");
  Reads("No Comm port has been selected!");
  EXPECT_EQ(Ports(), "0/0");
  EXPECT_TRUE(Offered("Tools", "Graph")) << "an earlier connect still counts";
  EXPECT_TRUE(Text("lblHint").starts_with("Plug")) << Text("lblHint");
  EXPECT_EQ(machine.Transcript(), requests);
}

TEST_F(ConnectStory, OkFailsOnAnyOtherCountAndKeepsThePort) {
  Shared.OnBoardParameters.XTare = 77;
  // A reply that is missing, one that is doubled; 0: a port that is taken, -1: one that is gone.
  for (const auto& [struck, told] : {std::pair{3, "opened, but 4 bytes came instead of 5"},
                                     std::pair{5, "opened, but 6 bytes came instead of 5"},
                                     std::pair{0, "it is in use"}, std::pair{-1, "no such device"}}) {
    SCOPED_TRACE(told);
    if (struck == 0) machine.taken = {1};
    if (struck == -1) machine.Unplug(1);
    logger.SpoilOne(struck, Instead(Bytes(struck == 3 ? 0 : 2)));
    machine.whileBoxIsOpen = [&] {
      EXPECT_TRUE(Contains(Text("lblDevice"), told));
      ExpectOff();
    };
    Press("OK");
    Reads(
        "A communication failure has occurred!\r\n"
        "On-board parameters were not retrieved from the Bexlow.\r\n"
        "Check your hardware set-up and try again.");
    machine.Pass(250ms);
    EXPECT_TRUE(Contains(outer->findChild<QLabel*>("lblFailure")->toolTip().toStdString(),
                         " Connect: Comm 1 (/dev/virtual1): "s + told + "</span>"));
    EXPECT_EQ(Shared.OnBoardParameters.XTare, 77) << "no part of a failed read is kept";
    EXPECT_EQ(Ports() + ScreenInFront(), "1/1Main");
    EXPECT_FALSE(Offered("Tools", "Graph") || machine.AnyPortOpen());
    Choose("File", "Connect");
  }
}

TEST_F(ConnectStory, ThePortBoxIsTypedOverAndShowsTheDeviceEscapeLeavesAndEnterIsOk) {
  EXPECT_EQ(Form::Active()->focusWidget(), &The("NumEditCommPort"));
  QTest::keyClicks(Form::Active()->focusWidget(), "5");
  EXPECT_EQ(The<CWNumEdit>("NumEditCommPort").Value(), 5);
  for (const auto& [port, text] :
       {std::pair{"3", "Device /dev/virtual3: no such device"}, std::pair{"0", "0 stands for no port."},
        std::pair{"1", "Device /dev/virtual1: virtual adapter"}}) {
    Type("NumEditCommPort", port);
    EXPECT_EQ(Text("lblDevice"), text);
  }
  Type("NumEditCommPort", "3");
  VirtualLogger late;
  machine.Plug(late, 3);
  machine.Pass(500ms);
  EXPECT_EQ(Text("lblDevice"), "Device /dev/virtual3: virtual adapter") << "plugged in late";
  Key(Qt::Key_Escape);
  EXPECT_EQ(Ports() + ScreenInFront(), "1/-Main");
  Choose("File", "Connect");
  Key(Qt::Key_Return);
  EXPECT_EQ(Ports() + ScreenInFront(), "1/1Main");
}

TEST_F(ConnectStory, AfterAStoreThatCannotBeWrittenThePortOfBeforeIsNotCalledConnected) {
  Press("OK");
  const auto* status = outer->findChild<QLabel*>("lblConnection");
  EXPECT_EQ(status->text(), "Connected on Comm 1, /dev/virtual1");
  machine.devices = "/dev/other";
  Choose("Tools", "Configuration");
  machine.Pass(300ms);
  EXPECT_EQ(Status("lblConnection"), "Comm 1 leads to /dev/other1 now") << "which was opened";
  Choose("File", "Return");
  const auto settings = machine.ProgramFolder() / "settings";
  fs::remove_all(settings);
  WriteFile(settings, "a file in the way");
  const auto bytes = machine.wire.size();
  Choose("File", "Connect");
  Type("NumEditCommPort", "5");
  Press("OK");
  EXPECT_TRUE(Contains(Reads("cmdOK_Click"), "cannot be written"));
  EXPECT_EQ(machine.wire.size(), bytes);
  Key(Qt::Key_Escape);
  EXPECT_EQ(status->text(), "Comm 5 selected, no logger has answered there yet");
  EXPECT_FALSE(The("cmdOpenDataFile").hasFocus()) << "Enter would open its dialog";
}

constexpr auto Launched =
    "Disconnect the serial cable from the Bexlow! The shaker will shake momentarily indicating that "
    "datalogging has begun.";
constexpr auto NotStamped = "Launch Time write to EEPROM failed! Launch did not occur.";

struct Launch : Story {
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
    EXPECT_TRUE(Text("fraErase") == "Erase" && !The("fraErase").isVisibleTo(Form::Active()));
    Story::ExpectIdle();
  }
  void ExpectErasing(int page, milliseconds passed = 250ms) {
    machine.Pass(passed);
    ExpectProgress("Erasing page " + std::to_string(page), page, "fraErase");
    EXPECT_TRUE(machine.boxes.empty());
  }
};

TEST_F(Launch, StampsErasesAndLaunchesAndFollowsTheErase) {
  ChooseLaunch(Answer::No);
  EXPECT_EQ(machine.buttons.at(0), Buttons::Confirm);
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
  EXPECT_TRUE(The("fraErase").isVisibleTo(Form::Active()));
  ExpectProgress("Erase", 0, "fraErase");
  ExpectErasing(416);  // 1250 bytes less 2
  ExpectErasing(499);  // and 250 less 2
  EXPECT_TRUE(Offered("Tools", "Launch"));
  ExpectErasing(1987, 4500ms);  // 6000 bytes, of which each of 20 ticks loses 2
  ExpectErasing(2047);          // of 2069
  ExpectErasing(2047);
  machine.Pass(250ms);
  Reads(Launched);
  EXPECT_FALSE(Offered("Tools", "Launch") || Offered("Display", "Accelerometers"));
  EXPECT_TRUE(Text("lblHint").starts_with("The logger is on its run"));
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
    EXPECT_TRUE(Text("lblHint").starts_with(bytes == 0 ? "The logger sent nothing during the erase. Connect"
                                                       : "The erase was heard in part only. Connect"));
    Choose("File", "Connect");
    Press("OK");
  }
  logger.eraseBytes = 3 * 2048;
  logger.eraseStep = 49ms;  // five minutes: of each tick's five bytes the page number counts three
  ChooseLaunch();
  machine.Pass(302s);
  Reads(Launched);
  EXPECT_TRUE(Text("lblHint").starts_with("The logger is on its run"));
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
  EXPECT_TRUE(machine.wire[21].byte == 'e' && machine.IsOpen(1));
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
