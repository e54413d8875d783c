// Cases of requests, replies and progress that no story on the virtual line reaches.

#include "link/Protocol.h"
#include "logic/Expect.h"
#include "values/Conversions.h"

namespace bexlow::link {
namespace {

TEST(Protocol, RefusesWhatIsNoByteNoWordAndNoSample) {
  for (const int bad : {-1, 256}) {
    FailureOf(std::errc::value_too_large, [&] { ReadEeprom(bad); });
    FailureOf(std::errc::value_too_large, [&] { WriteEeprom(0, bad); });
  }
  for (const int bad : {-256, 65536}) FailureOf(std::errc::value_too_large, [&] { DownloadPage(bad); });
  FailureOf(std::errc::invalid_argument, [] { MakeRequest(CommandName::ReadEeprom); });
  FailureOf(std::errc::invalid_argument, [] { values::Word(Bytes{1}, 0); });
  FailureOf(std::errc::invalid_argument, [] { values::Word(Bytes{1, 2}, 1); });
  for (const std::size_t length : {0u, 3u, 5u, 7u, 12u}) {
    EXPECT_FALSE(AngleWords(Bytes(length))) << length;
    EXPECT_FALSE(AccelerometerReadings(Bytes(length, 0xFF))) << length << ", tested before the range";
  }
}

}  // namespace
}  // namespace bexlow::link
