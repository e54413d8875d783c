// The Configuration screen: the block read, the paced write and everything that can go wrong between them.
#include <QAbstractButton>
#include <QGroupBox>
#include <QProgressBar>

#include <vector>

#include "config/ParameterMap.h"
#include "platform/CWNumEdit.h"
#include "support/CutLogger.h"
#include "support/Story.h"

namespace bexlow::test {
namespace {

using platform::CWNumEdit;
using namespace std::chrono_literals;

/// The cells of the write in their order; the four bin cells behind 25 are ticks without a byte.
const std::vector<int> Written = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                  16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 30, 31, 32, 33,
                                  34, 42, 43, 62, 63, 64, 65, 66, 67, 68, 69, 102};
constexpr std::size_t CellsBeforeGap = 24;
constexpr int TicksInGap = 4;

std::vector<int> ReadCells() {
  std::vector<int> cells;
  for (const auto& [first, last] : {std::pair{2, 34}, {42, 43}, {62, 69}, {100, 109}}) {
    for (int cell = first; cell <= last; ++cell) cells.push_back(cell);
  }
  return cells;
}

class Configuration : public Story {
 protected:
  void Open() {
    StartConnected();
    Reopen();
  }
  void Reopen() {
    Choose("Tools", "Configuration");
    ASSERT_EQ(ScreenInFront(), "Configuration");
  }
  void OpenAndRead() {
    Open();
    machine.Pass(1s);
    Reads("Read completed!");
    machine.wire.clear();
  }
  void WriteAll() {
    Choose("File", "Write");
    machine.Pass(23s);
    Reads("Write completed!");
  }
  std::string Caption() { return Text("fraProgress"); }
  int Bar() { return The<QProgressBar>("PBar").value(); }
  bool Selected(const char* option) { return The<QAbstractButton>(option).isChecked(); }
  int Cell(int address) { return logger.eeprom[static_cast<std::size_t>(address)]; }
  void ExpectBusy(bool busy) {
    EXPECT_EQ(PointerIsBusy(), busy);
    EXPECT_NE(Offered("File", "Read"), busy);
    EXPECT_NE(Offered("File", "Write"), busy);
    EXPECT_NE(Offered("Tools", "Show Min"), busy);
    EXPECT_TRUE(Offered("File", "Return"));
  }
  /// Leaves in the middle: nothing goes on, and the next screen works.
  void LeaveAndComeBack() {
    Choose("File", "Return");
    EXPECT_EQ(ScreenInFront(), "Main");
    EXPECT_FALSE(PointerIsBusy());
    EXPECT_FALSE(machine.AnyPortOpen());
    const auto bytes = machine.wire.size();
    machine.Pass(30s);
    EXPECT_EQ(machine.wire.size(), bytes);
    machine.Plug(logger, 1);
    Reopen();
    machine.Pass(1s);
    Reads("Read completed!");
    ExpectBusy(false);
    Choose("File", "Return");
  }
};

TEST_F(Configuration, OpeningReads53CellsOneByOne) {
  Open();
  ExpectBusy(true);
  EXPECT_EQ(Text("NumEdit30"), "0") << "below its limit";
  EXPECT_FALSE(Selected("opt75Hz") || Selected("opt15Hz"));
  machine.Pass(1100us);
  EXPECT_EQ(Caption(), "Reading 3");
  EXPECT_EQ(Bar(), 1);
  std::string last;
  QObject::connect(&The<QProgressBar>("PBar"), &QProgressBar::valueChanged, [&](int value) {
    if (value == 0) last = Caption();
  });
  machine.Pass(1s);
  Reads("Read completed!");
  EXPECT_EQ(last, "Reading 55");
  EXPECT_EQ(Caption(), "Progress");
  EXPECT_EQ(Bar(), 0);
  ExpectBusy(false);
  EXPECT_FALSE(machine.AnyPortOpen());

  const auto cells = ReadCells();
  ASSERT_EQ(machine.wire.size(), 2 * cells.size());
  const auto start = machine.wire.front().at;
  const auto perCell = 12ms + 2 * ByteTime;  // nothing waits between a reply and the next request
  for (std::size_t i = 0; i < cells.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(machine.wire[2 * i].byte, 'r');
    EXPECT_EQ(machine.wire[2 * i].at - start, perCell * static_cast<int>(i));
    EXPECT_EQ(machine.wire[2 * i + 1].byte, cells[i]);
    EXPECT_EQ(machine.wire[2 * i + 1].at - machine.wire[2 * i].at, 12ms);
  }
}

TEST_F(Configuration, AReadFillsTheScreen) {
  OpenAndRead();
  struct Row {
    const char *name, *text;
  };
  for (const auto& [name, text] : std::vector<Row>{{"NumEdit2", "323"},
                                                   {"NumEdit4", "408"},
                                                   {"NumEdit12", "322"},
                                                   {"NumEdit14", "-20.001"},
                                                   {"NumEdit16", "0.000"},
                                                   {"NumEdit18", "-180.000"},
                                                   {"NumEdit24", "90.000"},
                                                   {"NumEdit30", "3"},
                                                   {"NumEdit32", "1"},
                                                   {"NumEdit43", "3"},
                                                   {"NumEdit64", "513"},
                                                   {"NumEdit68", "515"},
                                                   {"txtSerialNumber", "417"},
                                                   {"txtMonth", "3"},
                                                   {"txtDay", "9"},
                                                   {"txtYear", "2004"},
                                                   {"txtHour", "14"},
                                                   {"txtMinute", "5"},
                                                   {"txtSecond", "7"}}) {
    EXPECT_EQ(Text(name), text) << name;
  }
  EXPECT_NEAR(The<CWNumEdit>("NumEdit14").Value(), -20.00122, 0.000005) << "not rounded to what is shown";
  for (const auto& [byte, is75] : {std::pair{75, true}, {15, false}, {75, true}, {0, false}, {255, false}}) {
    logger.eeprom[102] = static_cast<std::uint8_t>(byte);
    Choose("File", "Read");
    machine.Pass(1s);
    Reads("Read completed!");
    EXPECT_EQ(Selected("opt75Hz"), is75) << byte;
    EXPECT_EQ(Selected("opt15Hz"), !is75) << byte;
  }
}

TEST_F(Configuration, ASpoiltReplyCostsARepeatOrStopsTheRead) {
  struct Row {
    const char* what;
    Bytes reply;
    microseconds late;
    std::size_t requests;  // 0: the read stands still
    microseconds secondAfter = 0s;
  };
  StartConnected();
  for (const auto& row : std::vector<Row>{{"doubled", {9, 9}, 0s, 54},
                                          {"three bytes", {9, 9, 9}, 0s, 54},
                                          {"doubled, and torn", {9}, 0s, 54, 600us},
                                          {"late", {77}, 4s, 53},
                                          {"lost", {}, 0s, 0}}) {
    SCOPED_TRACE(row.what);
    for (const int at : {1, 27, 53}) {
      SCOPED_TRACE(at);
      logger.replies = 0;
      logger.spoil = [&](Bytes& reply, microseconds& delay) {
        if (logger.replies != at) return;
        std::tie(reply, delay) = std::tie(row.reply, row.late);
        if (row.secondAfter > 0s) logger.Send({9}, row.secondAfter);
      };
      shell::Shared.OnBoardParameters = {};
      machine.wire.clear();
      Reopen();
      machine.Pass(row.late + 1s);
      EXPECT_EQ(machine.boxes.empty(), row.requests == 0);
      ExpectBusy(row.requests == 0);
      EXPECT_EQ(shell::Shared.OnBoardParameters.ZGain, row.requests == 0 ? 0 : 322)
          << "not touched by a part of a read";
      if (row.requests != 0) {
        Reads("Read completed!");
        EXPECT_EQ(machine.wire.size(), 2 * row.requests);
      }
      if (row.requests > 53) {
        const auto repeated = machine.wire[static_cast<std::size_t>(2 * at + 1)].byte;
        EXPECT_EQ(repeated, ReadCells()[static_cast<std::size_t>(at - 1)]);
      }
      logger.spoil = {};
      LeaveAndComeBack();
    }
  }
}

TEST_F(Configuration, AWriteSends40CellsIn44Ticks) {
  OpenAndRead();
  logger.eeprom[18] = logger.eeprom[19] = 0;  // what the screen holds is written, not what the logger has
  auto expected = logger.eeprom;
  expected[18] = 0x80;
  expected[19] = 0x01;
  const auto record = shell::Shared.OnBoardParameters.XLowAlarm;
  std::string last;
  int most = 0;
  QObject::connect(&The<QProgressBar>("PBar"), &QProgressBar::valueChanged, [&](int value) {
    if (value == 0) last = Caption();
    most = std::max(most, value);
  });
  const auto start = machine.Time();
  Choose("File", "Write");
  ExpectBusy(true);
  machine.Pass(525ms);
  EXPECT_EQ(Caption(), "Writing 3");
  EXPECT_EQ(Bar(), 1);
  machine.Pass(14s - 1ms);
  EXPECT_EQ(Caption(), "Writing 31") << "the bin cells too move the progress";
  machine.Pass(7475ms);
  EXPECT_TRUE(machine.boxes.empty());
  machine.Pass(1ms);
  Reads("Write completed!");
  EXPECT_EQ(last, "Writing 46");
  EXPECT_EQ(most, 44);
  EXPECT_EQ(The<QProgressBar>("PBar").maximum(), 44);
  EXPECT_EQ(Caption(), "Progress");
  ExpectBusy(false);

  EXPECT_EQ(logger.eeprom, expected);
  EXPECT_EQ(shell::Shared.OnBoardParameters.XLowAlarm, record);
  ASSERT_EQ(machine.wire.size(), 3 * Written.size());
  for (std::size_t i = 0; i < Written.size(); ++i) {
    SCOPED_TRACE(Written[i]);
    const int tick = static_cast<int>(i) + 1 + (i < CellsBeforeGap ? 0 : TicksInGap);
    const int bytes[] = {'p', Written[i], expected[static_cast<std::size_t>(Written[i])]};
    for (std::size_t n = 0; n < 3; ++n) {
      EXPECT_EQ(machine.wire[3 * i + n].byte, bytes[n]);
      EXPECT_EQ(machine.wire[3 * i + n].at - start, tick * 500ms + static_cast<int>(n) * 12ms);
    }
  }
}

TEST_F(Configuration, AValueIsReadAtEachTick) {
  OpenAndRead();
  Choose("File", "Write");
  machine.Pass(600ms);
  Type("NumEdit2", "1000");  // 0x03E8, between the two bytes of 323, 0x0143
  Type("NumEdit43", "2");
  machine.Pass(22s);
  Reads("Write completed!");
  EXPECT_EQ(Cell(2), 0x01);
  EXPECT_EQ(Cell(3), 0xE8);
  EXPECT_EQ(Cell(43), 2);
  Choose("File", "Read");
  machine.Pass(1s);
  Reads("Read completed!");
  EXPECT_EQ(Text("NumEdit2"), "488");
}

TEST_F(Configuration, ShowMinMaxDefaultsChangeTheScreenOnly) {
  struct Row {
    const char *entry, *xOffset, *yOffset, *xTare, *yHighAlarm, *increment, *minBin;
    double maxBin;
  };
  OpenAndRead();
  The<QAbstractButton>("opt75Hz").click();
  const auto record = shell::Shared.OnBoardParameters.XOffset;
  for (const auto& row :
       std::vector<Row>{{"Show Min", "0", "0", "-180.000", "-90.000", "1", "-90", -90},
                        {"Show Max", "1024", "1024", "180.000", "90.000", "255", "90", 90},
                        {"Show Defaults", "323", "408", "0.000", "90.000", "3", "0", 65535}}) {
    SCOPED_TRACE(row.entry);
    EXPECT_TRUE(Selected("opt75Hz")) << "only the defaults touch it";
    Choose("Tools", row.entry);
    EXPECT_EQ(Text("NumEdit2"), row.xOffset);
    EXPECT_EQ(Text("NumEdit4"), row.yOffset);
    EXPECT_EQ(Text("NumEdit14"), row.xTare);
    EXPECT_EQ(Text("NumEdit24"), row.yHighAlarm);
    EXPECT_EQ(Text("NumEdit30"), row.increment);
    EXPECT_EQ(Text("NumEdit26"), row.minBin);
    EXPECT_EQ(The<CWNumEdit>("NumEdit28").Value(), row.maxBin);
  }
  EXPECT_TRUE(Selected("opt15Hz"));
  EXPECT_TRUE(machine.wire.empty());
  EXPECT_EQ(shell::Shared.OnBoardParameters.XOffset, record);
}

TEST_F(Configuration, WhatIsShownBecomesTheseBytes) {
  struct Row {
    const char* what;
    std::function<void()> change;
    std::vector<std::pair<int, int>> cells;
  };
  OpenAndRead();
  for (const auto& [what, change, cells] :
       std::vector<Row>{{"defaults lose the tare",
                         [&] { Choose("Tools", "Show Defaults"); },
                         {{4, 0x01},
                          {5, 0x98},
                          {14, 0},
                          {15, 0},
                          {18, 0x80},
                          {19, 0x01},
                          {24, 0x7F},
                          {25, 0xFF},
                          {102, 15}}},
                        {"greatest",
                         [&] { Choose("Tools", "Show Max"); },
                         {{2, 4}, {3, 0}, {20, 0x7F}, {21, 0xFF}, {26, 0}, {31, 16}}},
                        {"7.5 Hz", [&] { The<QAbstractButton>("opt75Hz").click(); }, {{102, 75}}},
                        {"15 Hz", [&] { The<QAbstractButton>("opt15Hz").click(); }, {{102, 15}}},
                        {"beyond the limit", [&] { Type("NumEdit16", "-950"); }, {{16, 0x80}, {17, 0x01}}}}) {
    SCOPED_TRACE(what);
    change();
    WriteAll();
    for (const auto& [address, byte] : cells) EXPECT_EQ(Cell(address), byte) << address;
    EXPECT_EQ(Cell(101), 417 & 255) << "never written";
  }
}

TEST_F(Configuration, EveryAngleWordReadAndWrittenBackIsTheSame) {
  OpenAndRead();
  struct Row {
    const char* name;
    config::Form form;
  };
  for (const auto& [name, form] :
       {Row{"NumEdit14", config::Form::Angle180}, Row{"NumEdit16", config::Form::Angle90}}) {
    SCOPED_TRACE(name);
    auto& edit = The<CWNumEdit>(name);
    for (int word = 0; word < 65536; ++word) {
      const std::array cells = {static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word & 255)};
      edit.Value(config::Decode(form, cells));
      edit.interpretText();  // as Enter or leaving the box does
      ASSERT_EQ(config::Encode(form, edit.Value()), cells) << word;
      ASSERT_EQ(config::Encode(form, edit.text().toDouble()), cells) << word << " is shown as another word";
    }
  }
}

TEST_F(Configuration, LeftInTheMiddleOfASequence) {
  StartConnected();
  for (const auto after : {0ms, 13ms, 300ms}) {
    SCOPED_TRACE(after.count());
    Reopen();
    machine.Pass(after);
    LeaveAndComeBack();
  }
  for (const auto after : {0ms, 499ms, 600ms, 21999ms}) {
    SCOPED_TRACE(after.count());
    Reopen();
    machine.Pass(1s);
    Reads("Read completed!");
    Choose("File", "Write");
    machine.Pass(after);
    LeaveAndComeBack();
  }
}

TEST_F(Configuration, APortThatVanishesInTheRead) {
  StartConnected();
  for (const int bytes : {0, 1, 2, 3, 52, 53, 105, 106}) {
    SCOPED_TRACE(bytes);
    CutLogger cut;
    cut.PlugFor(machine, 1, bytes);
    Reopen();
    machine.Pass(1s);
    if (bytes == 0) ReadsError("OpenCommPort");
    if (bytes < 2) {
      ReadsError("mnuRead_Click");
    } else if (bytes % 2 == 1) {
      ReadsError("MSComm1_OnComm");
    }
    ExpectBusy(true);
    LeaveAndComeBack();
  }
}

TEST_F(Configuration, APortThatVanishesInTheWriteSkipsTheOtherCells) {
  OpenAndRead();
  for (const int bytes : {0, 1, 3, 60, 118, 120}) {
    SCOPED_TRACE(bytes);
    CutLogger cut;
    cut.PlugFor(machine, 1, bytes);
    Choose("File", "Write");
    machine.Pass(23s);
    if (bytes == 0) ReadsError("OpenCommPort");
    for (int cell = bytes / 3; cell < 40; ++cell) ReadsError("WriteRoutine");
    Reads("Write completed!");
    ExpectBusy(false);
    EXPECT_FALSE(machine.AnyPortOpen());
  }
}

TEST_F(Configuration, TheServiceChordTogglesWhatIsHidden) {
  OpenAndRead();
  for (const bool shown : {true, false, true}) {
    Key(Qt::Key_F11, Qt::ControlModifier);
    EXPECT_EQ(Offered("Tools", "EEPROM"), shown);
    EXPECT_EQ(The<QGroupBox>("fra100108").isVisibleTo(platform::Form::Active()), shown);
  }
  Key(Qt::Key_F11, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(Offered("Tools", "EEPROM"));
  for (const char* hidden : {"NumEdit26", "NumEdit28"}) EXPECT_FALSE(The<CWNumEdit>(hidden).isVisible());
}

TEST_F(Configuration, TheKeyboardGoesFromTopToBottom) {
  OpenAndRead();
  Key(Qt::Key_F11, Qt::ControlModifier);
  std::string order;
  auto& first = The<QWidget>("NumEdit2");
  QWidget* at = &first;
  do {
    const bool takesTab = (at->focusPolicy() & Qt::TabFocus) != 0 && at->isVisible();
    if (takesTab && !at->accessibleName().isEmpty()) order += at->objectName().toStdString() + " ";
    at = at->nextInFocusChain();
  } while (at != &first && order.size() < 1000);
  EXPECT_TRUE(order.starts_with(
      "NumEdit2 NumEdit4 NumEdit6 NumEdit8 NumEdit10 NumEdit12 NumEdit14 NumEdit16 NumEdit18 "
      "NumEdit20 NumEdit22 NumEdit24 NumEdit62 NumEdit64 NumEdit66 NumEdit68 NumEdit30 "
      "NumEdit31 NumEdit32 NumEdit33 NumEdit34 NumEdit42 NumEdit43 "))
      << order;
  EXPECT_NE(order.find("txtSerialNumber txtMonth txtDay txtYear txtHour txtMinute txtSecond"),
            std::string::npos)
      << order;
}

}  // namespace
}  // namespace bexlow::test
