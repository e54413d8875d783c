// The port search and what OK does with the port.
#include "platform/controls/CWNumEdit.h"
#include "platform/machine/Settings.h"
#include "support/Story.h"

namespace bexlow::test {

using shell::Shared;

namespace {

const std::string CommunicationFailure =
    "A communication failure has occurred!\r\n"
    "On-board parameters were not retrieved from the Bexlow.\r\n"
    "Check your hardware set-up and try again.";

}  // namespace

class ConnectStory : public Story {
 protected:
  double Port() const { return The<platform::CWNumEdit>("NumEditCommPort").Value(); }
  std::string Stored() const { return platform::GetSetting("Startup", "CurrentCommPort", "(none)"); }
};

TEST_F(ConnectStory, AutoDetectTakesTheFirstPortThatAnswers) {
  VirtualLogger mute[4];
  for (int i = 0; i < 4; ++i) {
    mute[i].silent = true;
    machine.Plug(mute[i], i + 1);
  }
  machine.taken = {3};
  machine.Plug(logger, 5);
  VirtualLogger later;
  machine.Plug(later, 6);
  Start();
  Choose("File", "Connect");
  const auto before = machine.Time();
  machine.At(before + milliseconds(100), [&] {
    for (const auto* button : {"cmdOK", "cmdAutoDetect"}) EXPECT_FALSE(The(button).isEnabled()) << button;
    EXPECT_EQ(Text("lblDevice"), "Asking on Comm 1...");
  });
  Press("Auto Detect");
  Reads("Bexlow found on Comm 5!");
  EXPECT_EQ(Port(), 5);
  EXPECT_EQ(later.replies, 0) << "ports above the first are not tried";
  EXPECT_EQ((machine.Time() - before) / milliseconds(500), 4)
      << "a taken port costs no wait, a silent one 500 ms";
  EXPECT_EQ(Shared.CurrentCommPort, 1) << "the search selects nothing";
  EXPECT_EQ(Stored(), "(none)");
  Press("OK");
  EXPECT_EQ(Shared.CurrentCommPort, 5);
  EXPECT_EQ(Stored(), "5");
}

TEST_F(ConnectStory, AutoDetectAcceptsExactlyOneEcho) {
  machine.Plug(logger, 16);
  Start();
  Choose("File", "Connect");
  for (const auto& reply : {Bytes{'f'}, Bytes{'f', 'f'}, Bytes{'F'}, Bytes{}}) {
    logger.SpoilOne(1, Instead(reply));
    Press("Auto Detect");
    Reads(reply == Bytes{'f'} ? "Bexlow found on Comm 16!" : "Bexlow not found on Comm 1-16!");
    EXPECT_EQ(ScreenInFront(), "Connect");
    ExpectIdle();
  }
}

TEST_F(ConnectStory, OkRetrievesTheTareBlock) {
  for (const auto& [cell, byte] : {std::pair{14, 0x80}, {15, 0}, {16, 0x40}, {17, 0}, {30, 9}})
    logger.eeprom[static_cast<std::size_t>(cell)] = static_cast<std::uint8_t>(byte);
  machine.Plug(logger, 1);
  Start();
  Choose("File", "Connect");
  Press("OK");
  EXPECT_EQ(machine.Transcript(), "0 72|12 0E|262 72|274 0F|524 72|536 10|786 72|798 11|1048 72|1060 1E");
  EXPECT_EQ(Shared.OnBoardParameters.XTare, -180.0);
  EXPECT_EQ(Shared.OnBoardParameters.YTare, 45.0);
  EXPECT_EQ(Shared.OnBoardParameters.UpdateTimeIncrement, 9);
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_TRUE(Offered("Tools", "Graph"));
  EXPECT_FALSE(machine.AnyPortOpen());
}

TEST_F(ConnectStory, OkFailsOnAnyOtherCountAndKeepsThePort) {
  Start();
  machine.Plug(logger, 4);
  for (const int struck : {3, 5, 0}) {  // a reply that is missing, one that is doubled, a port that is taken
    SCOPED_TRACE(struck);
    if (struck == 0) machine.taken = {4};
    logger.SpoilOne(struck, Instead(Bytes(struck == 3 ? 0 : 2)));
    Shared.OnBoardParameters.XTare = 77;
    Shared.CurrentCommPort = 4;
    Choose("File", "Connect");
    Press("OK");
    Reads(CommunicationFailure);
    EXPECT_EQ(Shared.OnBoardParameters.XTare, 77) << "no part of a failed read is kept";
    EXPECT_EQ(Stored(), "4");
    EXPECT_FALSE(Offered("Tools", "Graph"));
    EXPECT_EQ(ScreenInFront(), "Main");
    EXPECT_FALSE(machine.AnyPortOpen());
  }
}

TEST_F(ConnectStory, PortZeroIsSavedAndLeavesTheMenus) {
  StartConnected();
  Choose("File", "Connect");
  Type("NumEditCommPort", "0");
  Press("OK");
  Reads("No Comm port has been selected!");
  EXPECT_EQ(Shared.CurrentCommPort, 0);
  EXPECT_EQ(Stored(), "0");
  EXPECT_TRUE(Offered("Tools", "Graph")) << "an earlier connect still counts";
  EXPECT_TRUE(Text("lblHint").starts_with("Plug")) << Text("lblHint");
  EXPECT_TRUE(machine.wire.empty());
}

TEST_F(ConnectStory, EnterIsOkAndEscapeLeaves) {
  machine.Plug(logger, 1);
  Start();
  Choose("File", "Connect");
  EXPECT_EQ(platform::Form::Active()->focusWidget(), &The("NumEditCommPort"));
  Key(Qt::Key_Escape);
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_EQ(Stored(), "(none)");
  Choose("File", "Connect");
  Key(Qt::Key_Return);
  EXPECT_EQ(ScreenInFront(), "Main");
  EXPECT_EQ(Stored(), "1");
}

TEST_F(ConnectStory, AStoreThatCannotBeWrittenIsReported) {
  WriteFile(machine.ProgramFolder() / "settings", "a file in the way");
  machine.Plug(logger, 1);
  Start();
  Choose("File", "Connect");
  Press("OK");
  const auto words = ReadsError("cmdOK_Click");
  EXPECT_NE(words.find("cannot be written"), std::string::npos) << words;
  EXPECT_TRUE(machine.wire.empty());
}

TEST_F(ConnectStory, ThePortBoxShowsTheDeviceBehindANumber) {
  machine.Plug(logger, 2);
  Start();
  Choose("File", "Connect");
  for (const auto& [port, text] :
       {std::pair{"2", "Device /dev/virtual2: virtual adapter"},
        std::pair{"3", "Device /dev/virtual3: no such device"}, std::pair{"0", "0 stands for no port."}}) {
    Type("NumEditCommPort", port);
    EXPECT_EQ(Text("lblDevice"), text);
  }
}

}  // namespace bexlow::test
