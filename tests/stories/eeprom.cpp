// The EEPROM screen: one cell read or written, the filter of its value box, and how it recovers.
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>

#include <vector>

#include "platform/CWNumEdit.h"
#include "support/CutLogger.h"
#include "support/Story.h"

namespace bexlow::test {
namespace {

using platform::CWNumEdit;
using namespace std::chrono_literals;

constexpr auto WrongLength = "Read EEPROM error: packet length is <> 1 byte!";

class Eeprom : public Story {
 protected:
  void Open() {
    StartConnected();
    Choose("Tools", "Configuration");
    machine.Pass(1s);
    Reads("Read completed!");
    Key(Qt::Key_F11, Qt::ControlModifier);
    Reopen();
  }
  void Reopen() {
    Choose("Tools", "EEPROM");
    ASSERT_EQ(ScreenInFront(), "EEPROM");
    machine.wire.clear();
  }
  void Address(double address) { The<CWNumEdit>("NumEditAddress").Value(address); }
  QLineEdit& Box() { return The<QLineEdit>("txtValue"); }
  void ExpectReady(bool ready) {
    for (const char* control : {"cmdRead", "cmdWrite", "cmdOK", "NumEditAddress"})
      EXPECT_EQ(The<QWidget>(control).isEnabled(), ready) << control;
    EXPECT_NE(PointerIsBusy(), ready);
    EXPECT_NE(machine.IsOpen(1), ready);
  }
  void ReadCell() {
    Press("Read");
    machine.Pass(100ms);
  }
};

TEST_F(Eeprom, ReadsAndWritesAnyCell) {
  Open();
  EXPECT_EQ(Text("NumEditAddress"), "2");
  Box().setText("77");
  Press("Read");
  EXPECT_EQ(machine.Transcript(), "0 72|12 02");
  EXPECT_EQ(Text("txtValue"), "");
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
    ASSERT_EQ(machine.wire.size(), 3u);
    EXPECT_EQ(machine.wire[2].at - machine.wire[0].at, 24ms);
    EXPECT_EQ(logger.eeprom[static_cast<std::size_t>(address)], std::stoi(value));
    ReadCell();
    ReadCell();
    EXPECT_EQ(Text("txtValue"), std::to_string(std::stoi(value)));
  }
  EXPECT_NE(shell::Shared.OnBoardParameters.XOffset, 0);
  Press("OK");
  EXPECT_EQ(ScreenInFront(), "Configuration");
}

TEST_F(Eeprom, AReplyCountsIfItIsOneByteWithin100Ms) {
  struct Row {
    const char* what;
    Bytes reply;
    microseconds late;
    const char* shown;
  };
  Open();
  for (const auto& row : std::vector<Row>{{"in time", {9}, 98ms, "9"},
                                          {"too late", {9}, 100ms, ""},
                                          {"none", {}, 0ms, ""},
                                          {"two", {9, 9}, 0ms, ""}}) {
    SCOPED_TRACE(row.what);
    logger.spoil = [&](Bytes& reply, microseconds& delay) {
      std::tie(reply, delay) = std::tie(row.reply, row.late);
    };
    ReadCell();
    if (*row.shown == 0) Reads(WrongLength);
    EXPECT_EQ(Text("txtValue"), row.shown);
    ExpectReady(true);
    logger.spoil = {};
    machine.Pass(5ms);
    ReadCell();
    EXPECT_EQ(Text("txtValue"), "1") << "a late byte is not the next read's";
  }
}

TEST_F(Eeprom, RecoversFromWhatFitsNoByte) {
  struct Row {
    const char* button;
    double address;
    const char* value;
  };
  Open();
  const auto before = logger.eeprom;
  for (const auto& [button, address, value] : std::vector<Row>{{"Read", 256, ""},
                                                               {"Read", 263, ""},
                                                               {"Write", 256, "1"},
                                                               {"Write", 2, "256"},
                                                               {"Write", 2, "-1"},
                                                               {"Write", 2, "-"},
                                                               {"Write", 2, "99999999999999999999999"}}) {
    SCOPED_TRACE(std::string(button) + " " + value);
    Address(address);
    Type("txtValue", value);
    Press(button);
    ReadsError(std::string("cmd") + button + "_Click");
    ExpectReady(true);
    EXPECT_EQ(logger.eeprom, before);
    machine.Pass(1s);
    Address(2);
    ReadCell();
    EXPECT_EQ(Text("txtValue"), "1");
  }
  Box().clear();
  machine.wire.clear();
  Press("Write");
  Reads("No value has been entered!");
  EXPECT_TRUE(machine.wire.empty());
  ExpectReady(true);
}

TEST_F(Eeprom, APortThatVanishesAtEachByte) {
  struct Row {
    const char* button;
    int bytes;
  };
  Open();
  for (const auto& [button, bytes] : std::vector<Row>{
           {"Read", 0}, {"Read", 1}, {"Read", 2}, {"Write", 0}, {"Write", 1}, {"Write", 2}, {"Write", 3}}) {
    SCOPED_TRACE(std::string(button) + " " + std::to_string(bytes));
    CutLogger cut;
    cut.PlugFor(machine, 1, bytes);
    Box().setText("5");
    Press(button);
    machine.Pass(100ms);
    if (bytes == 0) ReadsError("OpenCommPort");
    if (bytes == 2 && *button == 'R') {
      Reads(WrongLength);
    } else if (bytes < 3) {
      ReadsError(std::string("cmd") + button + "_Click");
    }
    ExpectReady(true);
  }
}

TEST_F(Eeprom, LeftWhileItReads) {
  Open();
  Press("Read");
  platform::Form::Active()->close();
  machine.Settle();
  EXPECT_EQ(ScreenInFront(), "Configuration");
  EXPECT_FALSE(machine.AnyPortOpen());
  EXPECT_FALSE(PointerIsBusy());
  machine.Pass(1s);
  Reopen();
  ReadCell();
  EXPECT_EQ(Text("txtValue"), "1");
}

void Paste(QLineEdit& box, const QString& text) {
  QApplication::clipboard()->setText(text);
  QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
}
void Insert(QLineEdit& box, const QString& text) {
  box.insert(text);
}
void Drop(QLineEdit& box, const QString& text) {
  QMimeData data;
  data.setText(text);
  const QPoint behindTheText(box.width() - 4, box.height() / 2);
  QDragEnterEvent enter(behindTheText, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&box, &enter);
  QDropEvent drop(behindTheText, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&box, &drop);
}
void Compose(QLineEdit& box, const QString& text) {
  QInputMethodEvent commit;
  commit.setCommitString(text);
  QApplication::sendEvent(&box, &commit);
}
void Keys(QLineEdit& box, const QString& text) {
  Story::TypeInto(box, text);
}

TEST_F(Eeprom, TheValueBoxTakesDigitsAndALeadingMinus) {
  struct Way {
    const char* name;
    void (*enter)(QLineEdit& box, const QString& text);
  };
  struct Row {
    const char *before, *entered, *after;
  };
  Open();
  Box().setFocus();
  for (const auto& [way, enter] : {Way{"keys", Keys}, Way{"paste", Paste}, Way{"menu", Insert},
                                   Way{"drop", Drop}, Way{"input method", Compose}}) {
    for (const auto& [before, entered, after] : std::vector<Row>{{"", "1a2 .+e3", "123"},
                                                                 {"", "-5-6", "-56"},
                                                                 {"", "a-7", "-7"},
                                                                 {"1", "-2", "12"},
                                                                 {"-1", "-2", "-12"},
                                                                 {"", "\u0663\uFF15\u2212", ""}}) {
      SCOPED_TRACE(std::string(way) + ": " + before + " and " + entered);
      Box().clear();
      Box().setText(before);
      Box().end(false);
      enter(Box(), QString::fromUtf8(entered));
      EXPECT_EQ(Text("txtValue"), after);
    }
  }
  Box().setText("12");
  Box().home(false);
  Keys(Box(), "-");
  Paste(Box(), "-3");
  EXPECT_EQ(Text("txtValue"), "312") << "no minus in front of digits";
  QTest::keyClick(&Box(), Qt::Key_Backspace);
  EXPECT_EQ(Text("txtValue"), "12");
  Box().selectAll();
  Keys(Box(), "x-");
  EXPECT_EQ(Text("txtValue"), "12") << "a dropped key leaves the selection";
}

}  // namespace
}  // namespace bexlow::test
