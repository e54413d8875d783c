// Requests to the byte and the millisecond, replies to the byte.
#include <cstdio>
#include <vector>

#include "link/LaunchProgress.h"
#include "link/Protocol.h"
#include "logic/Expect.h"

namespace bexlow::link {
namespace {

/// "64|12 01|0": each byte in hexadecimal and the pause behind it.
std::string Transcript(const Request& request) {
  std::string text;
  for (const auto& [byte, pauseMs] : request) {
    char step[24];
    std::snprintf(step, sizeof step, "%s%02X|%d", text.empty() ? "" : " ", byte, pauseMs);
    text += step;
  }
  return text;
}

TEST(Protocol, EveryCommandByteForByte) {
  struct Row {
    Request request;
    const char* wire;
  };
  for (const auto& [request, wire] : std::vector<Row>{{Ping(), "66|0"},
                                                      {ReadEeprom(14), "72|12 0E|0"},
                                                      {ReadEeprom(255), "72|12 FF|0"},
                                                      {WriteEeprom(32, 0), "70|12 20|12 00|0"},
                                                      {SampleAccelerometers(), "61|0"},
                                                      {SampleAngles(), "41|0"},
                                                      {DownloadPage(300), "64|12 01|12 2C|12"},
                                                      {DownloadPage(2047), "64|12 07|12 FF|12"},
                                                      {EraseData(), "65|0"},
                                                      {LaunchLogging(), "58|0"},
                                                      {ReadFirmwareVersion(), "6C|0"},
                                                      {ReadSamplingFrequency(), "6D|0"}}) {
    SCOPED_TRACE(wire);
    EXPECT_EQ(Transcript(request), wire);
  }
}

TEST(Protocol, RefusesWhatIsNoByte) {
  for (const int bad : {-1, 256, 70000}) {
    SCOPED_TRACE(bad);
    FailureOf(std::errc::value_too_large, [&] { ReadEeprom(bad); });
    FailureOf(std::errc::value_too_large, [&] { WriteEeprom(bad, 0); });
    FailureOf(std::errc::value_too_large, [&] { WriteEeprom(0, bad); });
  }
  for (const int bad : {-1, -256, 65536}) FailureOf(std::errc::value_too_large, [&] { DownloadPage(bad); });
  FailureOf(std::errc::invalid_argument, [] { MakeRequest(CommandName::ReadEeprom); });
}

TEST(Protocol, RepliesAreKnownByTheirLength) {
  struct Row {
    CommandName name;
    std::size_t reply;
  };
  for (const auto& [name, reply] : std::vector<Row>{{CommandName::Ping, 1},
                                                    {CommandName::ReadEeprom, 1},
                                                    {CommandName::WriteEeprom, 0},
                                                    {CommandName::SampleAccelerometers, 6},
                                                    {CommandName::SampleAngles, 4},
                                                    {CommandName::DownloadPage, 264},
                                                    {CommandName::EraseData, 0},
                                                    {CommandName::LaunchLogging, 0},
                                                    {CommandName::ReadFirmwareVersion, 2},
                                                    {CommandName::ReadSamplingFrequency, 2}}) {
    EXPECT_EQ(CommandOf(name).reply, reply) << CommandOf(name).letter;
  }
  const Bytes six = {0x01, 0x43, 0x00, 0x00, 0x7F, 0xFF};
  const auto readings = AccelerometerReadings(six);
  ASSERT_TRUE(readings);
  EXPECT_EQ(readings->x, 323);
  EXPECT_EQ(readings->y, 0);
  EXPECT_EQ(readings->z, 32767);
  const auto words = AngleWords(Bytes{0xFF, 0xFE, 0x80, 0x00});
  ASSERT_TRUE(words);
  EXPECT_EQ(words->x, 65534);
  EXPECT_EQ(words->y, 32768);
  for (const std::size_t length : {0u, 1u, 3u, 5u, 7u, 8u, 12u}) {
    SCOPED_TRACE(length);
    EXPECT_FALSE(AngleWords(Bytes(length)));
    EXPECT_FALSE(AccelerometerReadings(Bytes(length, 0xFF))) << "length before range";
  }
  for (const std::size_t high : {0u, 2u, 4u}) {
    Bytes reply(6, 0);
    reply[high] = 0x80;
    FailureOf(std::errc::result_out_of_range, [&] { AccelerometerReadings(reply); });
    reply[high] = 0;
    reply[high + 1] = 0xFF;
    EXPECT_TRUE(AccelerometerReadings(reply)) << "only high bytes are limited";
  }
  FailureOf(std::errc::invalid_argument, [] { Word(Bytes{1}, 0); });
  FailureOf(std::errc::invalid_argument, [] { Word(Bytes{1, 2}, 1); });
}

TEST(Blocks, AskForTheirCellsInOrder) {
  struct Row {
    Block block;
    int lead, pause;
    std::vector<int> cells;
  };
  for (const auto& [block, lead, pause, cells] : std::vector<Row>{
           {TareBlock(), 0, 250, {14, 15, 16, 17, 30}},
           {ModeBlock(), 250, 250, {42, 43}},
           {IdentityBlock(), 0, 100, {100, 101, 102, 103, 104, 105, 106, 107, 108, 109}},
           {CalibrationBlock(), 0, 100, {2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17}}}) {
    SCOPED_TRACE(block.name);
    EXPECT_EQ(block.leadPauseMs, lead);
    EXPECT_EQ(block.pauseMs, pause);
    EXPECT_EQ(block.reply, cells.size());
    ASSERT_EQ(block.requests.size(), cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) EXPECT_EQ(block.requests[i], ReadEeprom(cells[i]));
  }
  const Block firmware = FirmwareBlock();
  EXPECT_EQ(firmware.requests, (std::vector<Request>{{{0x6C, 0}}, {{0x6D, 0}}}));
  EXPECT_EQ(firmware.leadPauseMs, 0);
  EXPECT_EQ(firmware.pauseMs, 500);
  EXPECT_EQ(firmware.reply, 4u);
}

TEST(Launch, ProgressAtItsEdges) {
  struct Row {
    const char* what;
    double before;
    std::size_t count;
    bool erasing;
    double bytes, page;
  };
  for (const auto& [what, before, count, erasing, bytes, page] :
       std::vector<Row>{{"a whole buffer", 0, 3000, true, 2998, 999},
                        {"three bytes end it", 10, 3, false, 10, 0},
                        {"silence ends it", 10, 0, false, 10, 0},
                        {"four bytes count two", 0, 4, true, 2, 1},
                        {"a half to the even page", 5.5, 4, true, 7.5, 2},
                        {"last page", 6139, 4, true, 6141, 2047},
                        {"beyond the last page", 9000, 4, true, 9002, 2047}}) {
    SCOPED_TRACE(what);
    LaunchProgress progress{before, 0};
    EXPECT_EQ(progress.Take(count), erasing);
    EXPECT_EQ(progress.ErasedByteCount, bytes);
    EXPECT_EQ(progress.ErasedPageCount, page);
  }
}

TEST(Launch, TimeGoesOutWithTheMonthLast) {
  const std::array<EepromCell, 7> cells = {
      {{103, 3}, {104, 0x07}, {105, 0xD4}, {106, 14}, {107, 5}, {108, 9}, {109, 2}}};
  EXPECT_EQ(LaunchCells(3, 2, 2004, 14, 5, 9), cells);
}

}  // namespace
}  // namespace bexlow::link
