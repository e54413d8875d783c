// The Calibrate screen: the sampling chain, the extremes it keeps, and the write of what they give.
#include <QProgressBar>

#include <vector>

#include "support/CutLogger.h"
#include "support/Story.h"

namespace bexlow::test {
namespace {

using namespace std::chrono_literals;

constexpr auto ShakerMessage = "Shaker will be disabled prior to calibration start!";
constexpr auto SampleTime = 4ms;  // request at once, six bytes back

class Calibrate : public Story {
 protected:
  void Open() {
    StartConnected();
    Reopen();
  }
  void Reopen() {
    Choose("Tools", "Calibrate");
    ASSERT_EQ(ScreenInFront(), "Calibrate");
    machine.wire.clear();
  }
  /// Runs until the samples have come, the last of them again and again; readings of X, the other axes stand
  /// still.
  void Sample(const std::vector<int>& readings) {
    std::size_t next = 0;
    logger.spoil = [&, next](Bytes& reply, microseconds&) mutable {
      const int x = readings[std::min(next++, readings.size() - 1)];
      reply[0] = static_cast<std::uint8_t>(x >> 8);
      reply[1] = static_cast<std::uint8_t>(x & 255);
    };
    Choose("Data", "Sample");
    Reads(ShakerMessage);
    machine.Pass(SampleTime * static_cast<int>(readings.size() + 1));
    logger.spoil = {};
    (void)next;
  }
  void Stop() { Choose("Data", "Sample"); }
  std::string Row(const char* letter) {
    std::string row;
    for (const char* box : {"txt", "txtMin", "txtMax", "txtOffset", "txtGain"})
      row += Text((std::string(box) + letter).c_str()) + " ";
    row.pop_back();
    return row;
  }
  std::string Caption() { return Text("fraProgress"); }
  int Bar() { return The<QProgressBar>("PBar").value(); }
  void LeaveAndComeBack() {
    Choose("Data", "Return");
    EXPECT_FALSE(machine.AnyPortOpen());
    EXPECT_FALSE(PointerIsBusy());
    const auto bytes = machine.wire.size();
    machine.Pass(10s);
    EXPECT_EQ(machine.wire.size(), bytes);
    machine.Plug(logger, 1);
    Reopen();
    Sample({330});
    EXPECT_EQ(Row("X"), "330 330 330 330 0");
    Stop();
    Choose("Data", "Return");
  }
};

TEST_F(Calibrate, SamplingStartsBehindTheMessageAndTheShaker) {
  Open();
  EXPECT_EQ(Caption(), "Write Progress");
  EXPECT_EQ(Row("X"), "    ");
  for (int run = 0; run < 2; ++run) {
    SCOPED_TRACE(run);
    logger.eeprom[32] = 1;
    machine.wire.clear();
    machine.whileBoxIsOpen = [&] {
      EXPECT_TRUE(machine.wire.empty());
      EXPECT_EQ(Row("Y"), " 1024 0  ");
    };
    Choose("Data", "Sample");
    Reads(ShakerMessage);
    EXPECT_TRUE(Checked("Data", "Sample"));
    EXPECT_FALSE(Offered("Data", "Write"));
    machine.Pass(10ms);
    EXPECT_TRUE(machine.Transcript().starts_with("0 70|12 20|24 00|1024 61|1027 61|1031 61"))
        << machine.Transcript();
    EXPECT_EQ(logger.eeprom[32], 0);
    EXPECT_EQ(Row("X"), "330 330 330 330 0");
    EXPECT_EQ(Row("Y"), "408 408 408 408 0");
    EXPECT_EQ(Row("Z"), "322 322 322 322 0");
    EXPECT_EQ(shell::Shared.LiveSample.AccY, 408);
    Stop();
    EXPECT_FALSE(Checked("Data", "Sample"));
    EXPECT_TRUE(Offered("Data", "Write"));
    EXPECT_FALSE(machine.AnyPortOpen());
  }
}

TEST_F(Calibrate, TheExtremesOnlyWiden) {
  struct Case {
    std::vector<int> readings;
    const char* row;
  };
  Open();
  for (const auto& [readings, row] : std::vector<Case>{{{330}, "330 330 330 330 0"},
                                                       {{200, 841}, "841 200 841 520.5 320.5"},
                                                       {{200, 841, 500}, "500 200 841 520.5 320.5"},
                                                       {{0, 1023}, "1023 0 1023 511.5 511.5"},
                                                       {{0}, "0 0 0 0 0"},
                                                       {{1024}, "1024 1024 1024 1024 0"},
                                                       {{2000}, "2000 1024 2000 1512 488"},
                                                       {{32767}, "32767 1024 32767 16895.5 15871.5"}}) {
    SCOPED_TRACE(row);
    Sample(readings);
    EXPECT_EQ(Row("X"), row);
    EXPECT_EQ(Row("Z"), "322 322 322 322 0");
    Stop();
    EXPECT_EQ(Row("X"), row);
  }
}

TEST_F(Calibrate, RepliesOfAnotherLengthAreAskedForAgain) {
  Open();
  int spoilt = 0;
  logger.spoil = [&](Bytes& reply, microseconds&) {
    if (++spoilt <= 2) reply.resize(spoilt == 1 ? 7 : 12, 0x80);
  };
  Choose("Data", "Sample");
  Reads(ShakerMessage);
  machine.Pass(200ms);  // twice until the line is silent
  EXPECT_EQ(Row("X"), "330 330 330 330 0");
  Stop();
}

TEST_F(Calibrate, AReadingBeyondItsRangeEndsTheChain) {
  for (const std::size_t high : {0u, 2u, 4u}) {
    SCOPED_TRACE(high);
    outer == nullptr ? Open() : Reopen();
    logger.spoil = [&](Bytes& reply, microseconds&) { reply[high] = 0x80; };
    Choose("Data", "Sample");
    Reads(ShakerMessage);
    machine.Pass(1s);
    ReadsError("MSComm1_OnComm");
    EXPECT_EQ(machine.wire.size(), 4u) << "no further request";
    EXPECT_EQ(Row("X"), " 1024 0  ");
    EXPECT_TRUE(Checked("Data", "Sample"));
    Stop();
    EXPECT_FALSE(Offered("Data", "Write")) << "a run without a sample";
    logger.spoil = {};
    LeaveAndComeBack();
  }
}

TEST_F(Calibrate, TheWriteIsOfferedOnlyBehindASample) {
  Open();
  EXPECT_FALSE(Offered("Data", "Write"));
  Sample({330});
  Stop();
  EXPECT_TRUE(Offered("Data", "Write"));
  logger.silent = true;
  Choose("Data", "Sample");
  Reads(ShakerMessage);
  machine.Pass(1s);
  Stop();
  EXPECT_FALSE(Offered("Data", "Write")) << "the first run's values are gone";
}

TEST_F(Calibrate, TheWriteSendsTwelveCells) {
  Open();
  Sample({200, 841});
  Stop();
  machine.wire.clear();
  const auto start = machine.Time();
  Choose("Data", "Write");
  EXPECT_TRUE(PointerIsBusy());
  EXPECT_FALSE(Offered("Data", "Sample"));
  machine.Pass(525ms);
  EXPECT_EQ(Caption(), "Writing 3");
  EXPECT_EQ(Bar(), 3);
  machine.Pass(5s);
  EXPECT_EQ(Caption(), "Writing 13");
  std::string last;
  QObject::connect(&The<QProgressBar>("PBar"), &QProgressBar::valueChanged, [&](int) { last += Caption(); });
  machine.Pass(1s);
  Reads("Write completed!");
  EXPECT_EQ(last, "Writing 13") << "the last tick shows no progress of its own";
  EXPECT_EQ(Caption(), "Writing Progress");
  EXPECT_EQ(Bar(), 0);
  EXPECT_EQ(The<QProgressBar>("PBar").maximum(), 14);
  EXPECT_TRUE(Offered("Data", "Sample"));
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_FALSE(machine.AnyPortOpen());
  const int bytes[] = {0x02, 0x08, 0x01, 0x98, 0x01, 0x42, 0x01, 0x40, 0, 0, 0, 0};
  ASSERT_EQ(machine.wire.size(), 36u);
  for (std::size_t i = 0; i < 12; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(machine.wire[3 * i].byte, 'p');
    EXPECT_EQ(machine.wire[3 * i].at - start, static_cast<int>(i + 1) * 500ms);
    EXPECT_EQ(machine.wire[3 * i + 1].byte, i + 2);
    EXPECT_EQ(machine.wire[3 * i + 2].byte, bytes[i]);
  }
}

TEST_F(Calibrate, ASecondWriteStartsOverOnTheSamePort) {
  Open();
  Sample({330});
  Stop();
  Choose("Data", "Write");
  machine.Pass(1600ms);
  machine.wire.clear();
  Choose("Data", "Write");
  EXPECT_TRUE(machine.boxes.empty());
  machine.Pass(7s);
  Reads("Write completed!");
  ASSERT_EQ(machine.wire.size(), 36u);
  EXPECT_EQ(machine.wire[1].byte, 2);
}

TEST_F(Calibrate, TheWriteOfAnotherScreenWaitsUntilThisOneHasEnded) {
  Open();
  Sample({330});
  Stop();
  outer->ShowChild(outer->Child("Main"));
  Choose("Tools", "Configuration");
  machine.Pass(2s);
  Reads("Read completed!");
  outer->ShowChild(outer->Child("Calibrate"));
  machine.wire.clear();
  Choose("Data", "Write");
  machine.Pass(1600ms);
  outer->ShowChild(outer->Child("Configuration"));
  Choose("File", "Write");
  Reads("Another screen is writing to the logger. Please wait until it has ended!");
  machine.Pass(7s);
  Reads("Write completed!");
  ASSERT_EQ(machine.wire.size(), 36u);
  for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(machine.wire[3 * i + 1].byte, i + 2);
}

TEST_F(Calibrate, LeftInTheMiddle) {
  Open();
  Sample({330});
  LeaveAndComeBack();
  Reopen();
  Sample({330});
  Stop();
  Choose("Data", "Write");
  machine.Pass(1700ms);
  LeaveAndComeBack();
}

TEST_F(Calibrate, APortThatVanishesAtEachByte) {
  struct Case {
    int bytes;
    bool open, sample;
    const char* error;
  };
  StartConnected();
  for (const auto& row : std::vector<Case>{{0, true, false, "mnuSample_Click"},
                                           {1, false, false, "mnuSample_Click"},
                                           {2, false, false, "mnuSample_Click"},
                                           {3, true, false, "mnuSample_Click"},
                                           {4, false, false, nullptr},
                                           {5, false, true, nullptr}}) {
    SCOPED_TRACE(row.bytes);
    CutLogger cut;
    cut.PlugFor(machine, 1, row.bytes);
    Reopen();
    Choose("Data", "Sample");
    Reads(ShakerMessage);
    machine.Pass(1s);
    if (row.open) ReadsError("OpenCommPort");
    if (row.error != nullptr) ReadsError(row.error);
    EXPECT_TRUE(Checked("Data", "Sample"));
    Stop();
    EXPECT_EQ(Offered("Data", "Write"), row.sample);
    LeaveAndComeBack();
  }
  Reopen();
  Sample({330});
  Stop();
  machine.Unplug(1);
  Choose("Data", "Write");
  machine.Pass(7s);
  ReadsError("OpenCommPort");
  for (int cell = 2; cell < 14; ++cell) ReadsError("WriteRoutine");
  Reads("Write completed!");
}

}  // namespace
}  // namespace bexlow::test
