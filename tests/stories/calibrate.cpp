// The Calibrate screen: the sampling chain, the extremes it keeps, and the write of what they give.
#include "support/Story.h"

namespace bexlow::test {

struct Calibrate : Story {
  void SetUp() override { StartConnected("Calibrate"); }
  void StartSampling() {
    machine.wire.clear();
    Choose("Data", "Sample");
    Reads("Shaker will be disabled prior to calibration start!");
  }
  void Stop() {
    EXPECT_TRUE(Checked("Data", "Sample"));
    Choose("Data", "Sample");
  }
  /// A run of these X readings, the last one repeatedly; the other axes stand still.
  void SampleAndStop(const std::vector<int>& readings) {
    logger.spoil = [&readings, next = std::size_t{0}](Bytes& reply, microseconds&) mutable {
      const int x = readings[std::min(next++, readings.size() - 1)];
      reply[0] = static_cast<std::uint8_t>(x >> 8);
      reply[1] = static_cast<std::uint8_t>(x & 255);
    };
    StartSampling();
    machine.Pass(4ms * (std::ssize(readings) + 1));  // a sample takes less
    logger.spoil = {};
    Stop();
  }
  std::string Row(const std::string& axis) {
    std::string row;
    for (const char* box : {"txt", "txtMin", "txtMax", "txtOffset", "txtGain"}) row += Text(box + axis) + " ";
    return row.substr(0, row.size() - 1);
  }
};

TEST_F(Calibrate, SamplingStartsBehindTheMessageAndTheShaker) {
  EXPECT_FALSE(Offered("Data", "Write"));
  for (int run = 0; run < 2; ++run) {
    SCOPED_TRACE(run);
    logger.eeprom[32] = 1;
    machine.whileBoxIsOpen = [&] {
      EXPECT_TRUE(machine.wire.empty());
      EXPECT_EQ(Row("Y"), " 1024 0  ");
    };
    StartSampling();
    EXPECT_FALSE(Offered("Data", "Write"));
    machine.Pass(10ms);
    EXPECT_EQ(machine.Transcript().substr(0, 40), "0 70|12 20|24 00|1024 61|1027 61|1031 61");
    EXPECT_EQ(logger.eeprom[32], 0);
    EXPECT_EQ(Row("X") + "; " + Row("Y"), "330 330 330 330 0; 408 408 408 408 0");
    EXPECT_EQ(Shared.LiveSample.AccY, 408);
    Stop();
    EXPECT_TRUE(Offered("Data", "Write") && !Checked("Data", "Sample") && !machine.AnyPortOpen());
  }
  logger.accelerometers[4] = 0x80;
  StartSampling();
  machine.Pass(1s);
  Reads("MSComm1_OnComm");
  EXPECT_EQ(machine.wire.size(), 4u) << "a reading beyond its range ends the chain";
  EXPECT_EQ(Row("X"), " 1024 0  ");
  Stop();
  EXPECT_FALSE(Offered("Data", "Write")) << "the values of the run before are gone";
}

TEST_F(Calibrate, TheExtremesOnlyWiden) {
  for (const auto& [readings, row] : std::vector<std::pair<std::vector<int>, const char*>>{
           {{200, 841}, "841 200 841 520.5 320.5"},
           {{0}, "0 0 0 0 0"},
           {{1024}, "1024 1024 1024 1024 0"},
           {{2000}, "2000 1024 2000 1512 488"},
           {{200, 201, 841, 840, 500}, "500 200 841 520.5 320.5"}}) {
    SampleAndStop(readings);
    EXPECT_EQ(Row("X") + "; " + Row("Z"), std::string(row) + "; 322 322 322 322 0");
    const bool usual = std::string(row).ends_with("320.5");
    EXPECT_EQ(Text("lblRemarkX"), usual ? "bits" : "bits, far from a logger's usual gain of about 323");
  }
}

TEST_F(Calibrate, TheWriteSendsTwelveCellsAndASecondStartsOver) {
  SampleAndStop({200, 841});
  Choose("Data", "Write");
  EXPECT_TRUE(PointerIsBusy() && !Offered("Data", "Sample"));
  machine.Pass(1600ms);
  machine.wire.clear();
  Choose("Data", "Write");
  EXPECT_TRUE(machine.boxes.empty());
  machine.Pass(5425ms);
  ExpectProgress("Writing 13", 13);
  machine.Pass(1s);
  Reads("Write completed!");
  ExpectProgress("Writing Progress", 0);
  EXPECT_EQ(The<QProgressBar>("PBar").maximum(), 14);
  EXPECT_TRUE(Offered("Data", "Sample"));
  const int bytes[] = {0x02, 0x08, 0x01, 0x98, 0x01, 0x42, 0x01, 0x40, 0, 0, 0, 0};
  ASSERT_EQ(machine.wire.size(), 36u);
  for (int i = 0; i < 12; ++i) {
    const auto* cell = &machine.wire[static_cast<std::size_t>(3 * i)];
    EXPECT_EQ(cell->at - machine.wire[0].at, i * 500ms);
    EXPECT_EQ(std::tuple(cell[0].byte, cell[1].byte, cell[2].byte), std::tuple('p', i + 2, bytes[i]));
  }
  ExpectIdle();
}

}  // namespace bexlow::test
