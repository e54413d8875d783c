// Requests to the byte and the millisecond, and what no story on the virtual line reaches.
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
                                                      {ReadEeprom(255), "72|12 FF|0"},
                                                      {WriteEeprom(32, 0), "70|12 20|12 00|0"},
                                                      {SampleAccelerometers(), "61|0"},
                                                      {SampleAngles(), "41|0"},
                                                      {DownloadPage(300), "64|12 01|12 2C|12"},
                                                      {EraseData(), "65|0"},
                                                      {LaunchLogging(), "58|0"},
                                                      {ReadFirmwareVersion(), "6C|0"},
                                                      {ReadSamplingFrequency(), "6D|0"}}) {
    EXPECT_EQ(Transcript(request), wire);
  }
}

TEST(Protocol, RefusesWhatIsNoByteNoWordAndNoSample) {
  for (const int bad : {-1, 256}) {
    FailureOf(std::errc::value_too_large, [&] { ReadEeprom(bad); });
    FailureOf(std::errc::value_too_large, [&] { WriteEeprom(0, bad); });
  }
  for (const int bad : {-256, 65536}) FailureOf(std::errc::value_too_large, [&] { DownloadPage(bad); });
  FailureOf(std::errc::invalid_argument, [] { MakeRequest(CommandName::ReadEeprom); });
  FailureOf(std::errc::invalid_argument, [] { Word(Bytes{1}, 0); });
  FailureOf(std::errc::invalid_argument, [] { Word(Bytes{1, 2}, 1); });
  for (const std::size_t length : {0u, 3u, 5u, 7u, 12u}) {
    EXPECT_FALSE(AngleWords(Bytes(length))) << length;
    EXPECT_FALSE(AccelerometerReadings(Bytes(length, 0xFF))) << length << ", before the range";
  }
}

TEST(Launch, ProgressAtItsEdges) {
  struct Row {
    double before;
    std::size_t count;
    double bytes, page;
  };
  for (const auto& [before, count, bytes, page] :
       {Row{0, 4, 2, 1}, Row{5.5, 4, 7.5, 2}, Row{9000, 4, 9002, 2047}}) {
    SCOPED_TRACE(before);
    LaunchProgress progress{before, 0};
    EXPECT_TRUE(progress.Count(count));
    EXPECT_EQ(progress.ErasedByteCount, bytes);
    EXPECT_EQ(progress.ErasedPageCount, page);
  }
}

}  // namespace
}  // namespace bexlow::link
