// The Configuration screen: the block read, the paced write and everything that can go wrong between them.
#include "support/Story.h"

namespace bexlow::test {

/// The cells of the read, in order. The write sends those to 69 and then 102.
constexpr int Cells[] = {2,  3,  4,  5,  6,  7,  8,  9,   10,  11,  12,  13,  14,  15,  16,  17,  18, 19,
                         20, 21, 22, 23, 24, 25, 26, 27,  28,  29,  30,  31,  32,  33,  34,  42,  43, 62,
                         63, 64, 65, 66, 67, 68, 69, 100, 101, 102, 103, 104, 105, 106, 107, 108, 109};

struct Configuration : Story {
  void SetUp() override { StartConnected(); }
  void Open() { Choose("Tools", "Configuration"); }
  void FinishRead() {
    machine.whileBoxIsOpen = [this] { EXPECT_EQ(Status("lblActivity"), "") << "nothing runs any more"; };
    machine.Pass(1s);
    Reads("Read completed!");
  }
  void OpenAndRead() {
    Open();
    FinishRead();
    machine.wire.clear();
  }
  bool Selected(const char* option) { return The<QAbstractButton>(option).isChecked(); }
  void ExpectBusy(bool busy) {
    EXPECT_EQ(PointerIsBusy(), busy);
    EXPECT_EQ(std::tuple(Offered("File", "Read"), Offered("File", "Write"), Offered("Tools", "Show Min")),
              std::tuple(!busy, !busy, !busy));
    EXPECT_TRUE(Offered("File", "Return"));
  }
};

TEST_F(Configuration, OpeningReads53CellsOneByOneAndFillsTheScreen) {
  Open();
  ExpectBusy(true);
  EXPECT_TRUE(Text("NumEdit30") == "0" && !The("NumEdit30").isEnabled()) << "below its limit, so no setting";
  EXPECT_FALSE(Selected("opt75Hz") || Selected("opt15Hz"));
  machine.Pass(1100us);
  ExpectProgress("Reading 3", 1);
  EXPECT_EQ(Status("lblActivity"), "Reading, at 3, 1 of 53 cells");
  FinishRead();
  ExpectProgress("Progress", 0);
  ExpectBusy(false);
  EXPECT_TRUE(The("NumEdit30").isEnabled() && !machine.AnyPortOpen());
  EXPECT_EQ(Form::Active()->focusWidget(), &The("NumEdit2"));

  ASSERT_EQ(machine.wire.size(), 2 * 53u);
  for (int i = 0; i < 53; ++i) {
    const auto* request = &machine.wire[static_cast<std::size_t>(2 * i)];
    EXPECT_EQ(std::tuple(request[0].byte, request[1].byte), std::tuple('r', Cells[i]));
    // Nothing waits between a reply and the next request.
    EXPECT_EQ(request[0].at - machine.wire[0].at, (12ms + 2 * ByteTime) * i) << i;
    EXPECT_EQ(request[1].at - request[0].at, 12ms) << i;
  }

  EXPECT_EQ(Texts("NumEdit2", "NumEdit4", "NumEdit14", "NumEdit18", "NumEdit24", "NumEdit30", "NumEdit68"),
            "323|408|-20.001|-180.000|90.000|3|515|");
  EXPECT_EQ(Texts("txtSerialNumber", "txtMonth", "txtDay", "txtYear", "txtSecond"), "417|3|9|2004|7|");
  EXPECT_NEAR(The<CWNumEdit>("NumEdit14").Value(), -20.00122, 0.000005) << "not rounded to what is shown";
  for (const auto& [byte, is75] : {std::pair{75, true}, {15, false}, {75, true}, {255, false}}) {
    logger.eeprom[102] = static_cast<std::uint8_t>(byte);
    Choose("File", "Read");
    FinishRead();
    EXPECT_EQ(std::pair(Selected("opt75Hz"), Selected("opt15Hz")), std::pair(is75, !is75)) << byte;
  }
}

TEST_F(Configuration, PageKeysScrollThePageAndChangeNoValue) {
  OpenAndRead();
  outer->resize(800, 400);
  QCoreApplication::processEvents();
  EXPECT_EQ(Form::Active()->focusWidget(), &The("NumEdit2"));
  auto& bar = *Form::Active()->findChild<QScrollArea*>()->verticalScrollBar();
  Key(Qt::Key_PageDown);
  EXPECT_GT(bar.value(), 0);
  Key(Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 0);
  EXPECT_EQ(The<CWNumEdit>("NumEdit2").Value(), 323);
}

TEST_F(Configuration, ASpoiltReplyCostsARepeatOrStopsTheRead) {
  using Row = std::tuple<std::string, Spoil, std::size_t>;  // requests; 0: the read stands still
  const auto torn = [this](Bytes& reply, microseconds&) {
    reply = {9};
    logger.Send({9}, 600us);
  };
  for (const auto& [what, spoil, requests] :
       {Row{"doubled", Instead({9, 9}), 54}, Row{"doubled, and torn", torn, 54},
        Row{"late", Instead({77}, 4s), 53}, Row{"lost", Instead({}), 0}}) {
    for (const int at : {1, 27, 53}) {
      SCOPED_TRACE(what + std::to_string(at));
      logger.SpoilOne(at, spoil);
      Shared.OnBoardParameters = {};
      machine.wire.clear();
      Open();
      machine.Pass(5s);
      ExpectBusy(requests == 0);
      EXPECT_EQ(Shared.OnBoardParameters.ZGain, requests == 0 ? 0 : 322) << "not touched by a part of a read";
      if (requests != 0) Reads("Read completed!");
      EXPECT_TRUE(requests == 0 || machine.wire.size() == 2 * requests);
      const auto repeated = static_cast<std::size_t>(2 * at + 1);
      EXPECT_TRUE(requests < 54 || machine.wire[repeated].byte == Cells[at - 1]);
      Choose("File", "Return");
    }
  }
}

TEST_F(Configuration, AWriteSends40CellsIn44TicksAsTheyAreThen) {
  OpenAndRead();
  logger.eeprom[18] = logger.eeprom[19] = 0;  // what the screen holds is written, not what the logger has
  auto expected = logger.eeprom;
  std::tie(expected[18], expected[19]) = std::tuple(0x80, 0x01);
  const auto start = machine.Time();
  Choose("File", "Write");
  ExpectBusy(true);
  machine.Pass(525ms);
  ExpectProgress("Writing 3", 1);
  Type("NumEdit2", "1000");  // 0x03E8, between the two bytes of 323, 0x0143
  Type("NumEdit43", "2");
  std::tie(expected[3], expected[43]) = std::tuple(0xE8, 2);
  machine.Pass(14s - 1ms);
  ExpectProgress("Writing 31", 29);  // the bin cells move it, too
  EXPECT_EQ(Status("lblActivity"), "Writing, at 31, 25 of 40 cells, 8 s left");
  machine.Pass(7475ms);
  EXPECT_TRUE(machine.boxes.empty());
  machine.Pass(1ms);
  Reads("Write completed!");
  EXPECT_EQ(The<QProgressBar>("PBar").maximum(), 44);
  ExpectProgress("Progress", 0);
  ExpectBusy(false);

  EXPECT_EQ(logger.eeprom, expected);
  ASSERT_EQ(machine.wire.size(), 3 * 40u);
  const auto* sent = machine.wire.data();
  for (int tick = 1; tick <= 44; ++tick) {
    if (tick >= 25 && tick <= 28) continue;  // the bin cells: a tick without a byte
    const int address = tick == 44 ? 102 : Cells[tick - 1];
    const int bytes[] = {'p', address, expected[static_cast<std::size_t>(address)]};
    for (int n = 0; n < 3; ++n, ++sent)
      EXPECT_EQ(std::tuple(sent->byte, sent->at - start), std::tuple(bytes[n], tick * 500ms + n * 12ms));
  }
}

TEST_F(Configuration, WhatIsShownOrHiddenBecomesTheseBytes) {
  OpenAndRead();
  for (const bool shown : {true, false, true}) {
    ServiceChord();
    EXPECT_EQ(Offered("Tools", "EEPROM"), shown);
    EXPECT_EQ(The<QGroupBox>("fra100108").isVisibleTo(Form::Active()), shown);
  }
  for (const char* hidden : {"NumEdit26", "NumEdit28"}) EXPECT_FALSE(The<CWNumEdit>(hidden).isVisible());
  The<QAbstractButton>("opt75Hz").click();
  using Row = std::array<const char*, 4>;
  for (const auto& [entry, xTare, hiddenMinBin, cells] :
       {Row{"Show Min", "-180.000", "-90", "2=0 10=0 14=128 15=1 18=128 30=1 33=0 43=1 69=0 102=75"},
        Row{"Show Max", "180.000", "90", "2=4 3=0 10=4 14=127 18=127 24=127 31=16 33=5 43=3 68=4"},
        Row{"Show Defaults", "0.000", "0", "5=152 11=68 14=0 18=128 30=3 31=1 33=1 68=2 102=15"}}) {
    SCOPED_TRACE(entry);
    Choose("Tools", entry);
    EXPECT_EQ(Texts("NumEdit14", "NumEdit26"), std::string(xTare) + "|" + hiddenMinBin + "|");
    EXPECT_TRUE(machine.wire.empty());
    Choose("File", "Write");
    machine.Pass(23s);
    Reads("Write completed!");
    std::istringstream expected(cells);
    char equals;
    for (int address, byte; expected >> address >> equals >> byte;)
      EXPECT_EQ(logger.eeprom[static_cast<std::size_t>(address)], byte) << address;
    machine.wire.clear();
  }
  const auto& read = Shared.OnBoardParameters;
  EXPECT_TRUE(read.YOffset == 408 && read.XTare < -20) << "the record follows reads alone";
}

TEST_F(Configuration, APortThatVanishesStopsTheReadAndSkipsCellsOfTheWrite) {
  for (const int bytes : {0, 1, 2, 3, 52, 53, 105, 106}) {
    SCOPED_TRACE(bytes);
    logger.PlugFor(machine, 1, bytes);
    Open();
    machine.Pass(3s);
    EXPECT_NE(Form::Active()->OnActivity().phase, "Reading");
    if (bytes == 0) Reads("OpenCommPort");
    if (bytes < 2 || bytes % 2 == 1) Reads(bytes < 2 ? "mnuRead_Click" : "MSComm1_OnComm");
    ExpectBusy(true);
    Choose("File", "Return");
    ExpectIdle();
  }
  machine.Plug(logger, 1);
  OpenAndRead();
  for (const int bytes : {0, 1, 3, 60, 118, 120}) {
    SCOPED_TRACE(bytes);
    logger.PlugFor(machine, 1, bytes);
    Choose("File", "Write");
    machine.Pass(23s);
    if (bytes == 0) Reads("OpenCommPort");
    for (int cell = bytes / 3; cell < 40; ++cell) Reads("WriteRoutine");
    Reads("Write completed!");
    ExpectBusy(false);
    EXPECT_FALSE(machine.AnyPortOpen());
  }
}

}  // namespace bexlow::test
