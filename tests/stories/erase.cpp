// The erase on the Download screen: its end, its halt, and a logger that goes on.
#include "stories/DownloadStory.h"

namespace bexlow::test {

struct EraseStory : DownloadStory {
  void Begin(int bytes, Answer answer = Answer::Yes) {
    logger.eraseBytes = bytes;
    machine.wire.clear();
    machine.WillAnswer(answer);
    Choose("Data", "Erase");
    Reads("All on-board data will be erased!\r\nClick YES to proceed.\r\nClick NO to cancel this operation.");
    EXPECT_EQ(machine.buttons.at(0), Buttons::Confirm);
  }
  void Halt() {
    EXPECT_TRUE(Checked("Data", "Erase"));
    Choose("Data", "Erase");
    Reads("Erase halted by user! Erase may not be complete.");
    ExpectEnded();
  }
  void ExpectEnded() {
    EXPECT_TRUE(Offered("Data", "Download") && !Checked("Data", "Erase"));
    EXPECT_TRUE(The("fraErase").isHidden() && Text("txtInBufferSize").empty());
    ExpectIdle();
  }
};

TEST_F(EraseStory, EndsAt2050BytesOrMore) {
  Begin(2049, Answer::No);
  EXPECT_TRUE(machine.wire.empty());
  ExpectEnded();
  Begin(2049);
  EXPECT_EQ(machine.Transcript(), "0 65");
  EXPECT_TRUE(PointerIsBusy() && !Offered("Data", "Download"));
  machine.Pass(5s);
  EXPECT_EQ(Status("lblActivity"), "Nothing heard of the erase for 2 s; 2049 of 2050 bytes");
  EXPECT_TRUE(Text("txtInBufferSize") == "2049" && The<QProgressBar>("PBarErase").value() == 2049);
  EXPECT_FALSE(The("fraErase").isHidden());
  machine.Deliver(1, {0});
  machine.Pass(500ms);
  Reads("Erase completed!");
  ExpectEnded();
  logger.eraseStep = 100us;
  Begin(6200);
  machine.Pass(500ms);
  Reads("Erase completed!");  // also with more than the buffer was set to
  ExpectEnded();
}

TEST_F(EraseStory, AHaltedEraseThatGoesOnInTheLoggerKeepsItFromOthers) {
  Begin(60000);
  machine.Pass(1s);
  Halt();
  for (const char* entry : {"Download", "Erase"}) {
    Choose("Data", entry);
    Reads("The logger is still erasing: the halted erase goes on in it.\r\nPlease try again later!");
    EXPECT_EQ(machine.wire.size(), 1U);
  }
  machine.Pass(30s);
  machine.WillCancelFile();
  Choose("Data", "Download");
  Reads("Download operation cancelled!");
}

TEST_F(EraseStory, ASilentLoggerOrAFailedStartLastsUntilTheUserHalts) {
  logger.silent = true;
  Begin(0);
  machine.Pass(1h);
  EXPECT_TRUE(Text("txtInBufferSize") == "0" && machine.wire.size() == 1) << "nothing stops the logger";
  Halt();
  machine.taken = {1};
  Begin(0);
  Reads("OpenCommPort", "mnuErase_Click");
  EXPECT_FALSE(PointerIsBusy());
  Halt();
}

}  // namespace bexlow::test
