// The EEPROM screen: one cell read or written, the filter of its value box, and how it recovers.
#include "support/Story.h"

namespace bexlow::test {

constexpr auto WrongLength = "Read EEPROM error: packet length is <> 1 byte!";

struct Eeprom : Story {
  /// Opened from Configuration, which shows the entry after the service chord.
  void SetUp() override {
    StartConnected("Configuration");
    machine.Pass(1s);
    Reads("Read completed!");
    ServiceChord();
    Choose("Tools", "EEPROM");
    machine.wire.clear();
  }
  void Address(double address) { The<CWNumEdit>("NumEditAddress").Value(address); }
  QLineEdit& Box() { return The<QLineEdit>("txtValue"); }
  void ExpectReady(bool ready) {
    for (const char* control : {"cmdRead", "cmdWrite", "cmdOK", "NumEditAddress"})
      EXPECT_EQ(The(control).isEnabled(), ready) << control;
    EXPECT_EQ(std::pair(PointerIsBusy(), machine.IsOpen(1)), std::pair(!ready, !ready));
  }
  void ReadCell() {
    Press("Read");
    machine.Pass(100ms);
  }
};

TEST_F(Eeprom, ReadsAndWritesAnyCell) {
  EXPECT_EQ(Text("NumEditAddress"), "2");
  Box().setText("77");
  Press("Read");
  EXPECT_EQ(machine.Transcript() + Text("txtValue"), "0 72|12 02");
  ExpectReady(false);
  machine.Pass(99ms);
  EXPECT_EQ(Text("txtValue"), "");
  machine.Pass(1ms);
  EXPECT_EQ(Text("txtValue"), "1");
  ExpectReady(true);
  for (const auto& [address, value] : {std::pair{100, "200"}, {101, "0"}, {255, "255"}, {0, "007"}}) {
    SCOPED_TRACE(address);
    machine.wire.clear();
    Address(address);
    Type("txtValue", value);
    Press("Write");
    ExpectReady(true);
    const auto sent = QString::asprintf("0 70|12 %02X|24 %02X", address, std::stoi(value));
    EXPECT_EQ(machine.Transcript(), sent.toStdString());
    EXPECT_EQ(logger.eeprom[static_cast<std::size_t>(address)], std::stoi(value));
    ReadCell();
    ReadCell();
    EXPECT_EQ(Text("txtValue"), std::to_string(std::stoi(value)));
  }
  Press("OK");
  EXPECT_EQ(ScreenInFront(), "Configuration");
}

TEST_F(Eeprom, AReplyCountsIfItIsOneByteWithin100Ms) {
  using Row = std::tuple<Bytes, microseconds, std::string>;
  for (const auto& [reply, late, shown] : {Row{{9}, 98ms, "9"}, Row{{9}, 100ms, ""}, Row{{9}, 150ms, ""},
                                           Row{{}, 0ms, ""}, Row{{9, 9}, 0ms, ""}}) {
    SCOPED_TRACE(reply.size());
    logger.SpoilOne(1, Instead(reply, late));
    ReadCell();
    if (shown.empty()) Reads(WrongLength);
    EXPECT_EQ(Text("txtValue"), shown);
    ExpectReady(true);
    machine.Pass(5ms);
    ReadCell();
    EXPECT_EQ(Text("txtValue"), "1") << "a late byte is not the next read's";
  }
  Press("Read");
  Close();
  ExpectIdle();
}

TEST_F(Eeprom, RecoversFromWhatFitsNoByte) {
  using Row = std::tuple<const char*, double, const char*>;
  const auto before = logger.eeprom;
  for (const auto& [button, address, value] :
       {Row{"Read", 256, ""}, Row{"Write", 256, "1"}, Row{"Write", 2, "256"}, Row{"Write", 2, "-1"},
        Row{"Write", 2, "-"}, Row{"Write", 2, "99999999999999999999999"}}) {
    SCOPED_TRACE(std::string(button) + " " + value);
    Address(address);
    Type("txtValue", value);
    Press(button);
    Reads("cmd"s + button + "_Click");
    ExpectReady(true);
    EXPECT_EQ(logger.eeprom, before);
    machine.Pass(1s);
    Address(2);
    ReadCell();
    EXPECT_EQ(Text("txtValue"), "1");
  }
  Type("NumEditAddress", "264");
  EXPECT_EQ(The<CWNumEdit>("NumEditAddress").Value(), 263) << "typed, it ends at the limit";
  Box().clear();
  machine.wire.clear();
  Press("Write");
  Reads("No value has been entered!");
  EXPECT_TRUE(machine.wire.empty());
  ExpectReady(true);
}

TEST_F(Eeprom, TheValueBoxTakesDigitsAndALeadingMinus) {
  Box().setFocus();
  for (const auto& [before, typed, after, inFront] :
       {std::tuple{"", "1a2 .+e3", "123", false}, std::tuple{"", "-5-6", "-56", false},
        std::tuple{"1", "-2", "12", false}, std::tuple{"", "\u0663\uFF15\u2212", "", false},
        std::tuple{"12", "-3", "312", true}, std::tuple{"-5", "1", "1-5", true}}) {
    Box().setText(before);
    inFront ? Box().home(false) : Box().end(false);
    TypeInto(Box(), QString::fromUtf8(typed));
    EXPECT_EQ(Text("txtValue"), after) << typed;
  }
  Press("Write");  // 1-5
  Reads("cmdWrite_Click");
  Box().selectAll();
  TypeInto(Box(), "x-");
  EXPECT_EQ(Text("txtValue"), "1-5") << "a dropped key leaves the selection";
  for (const char* pasted : {"2x", "2"}) {
    QApplication::clipboard()->setText(pasted);
    QTest::keyClick(&Box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text("txtValue"), std::string(pasted) == "2" ? "2" : "1-5") << pasted;
  }
}

}  // namespace bexlow::test
