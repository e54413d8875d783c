// The logger's answers, its memory and the runs in it.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "Bytes.h"
#include "Logger.h"
#include "Run.h"

namespace bexlow::simulator {
namespace {

using namespace std::chrono_literals;

LoggerSetup SmallSetup() {
  LoggerSetup setup;
  setup.stored.pages = 3;
  setup.motion = Motion::Still;
  return setup;
}

// 12 ms lie between two bytes of a request.
TEST(LoggerTest, AnswersEachCommandWithItsLiteralBytes) {
  using Row = std::tuple<const char*, const char*, const char*>;
  for (const auto& [what, request, reply] :
       {Row{"ping", "66", "66"},
        Row{"tares, the Y one negative", "72 0E 72 0F 72 10 72 11", "01 | C7 | FD | 71"},
        Row{"cell without meaning", "72 C8", "FF"},
        Row{"15 Hz after a write, which itself is not answered", "70 66 0F 6D", "00 96"},
        Row{"accelerometers at X 12, Y -3 degrees", "61", "01 8D 01 81 02 78"},
        Row{"angles less the tares", "41", "06 C1 FE 4B"},
        Row{"angles with the tare off", "70 22 00 41", "08 88 FB BC"},
        Row{"page beyond the memory", "64 08 00", ""},
        Row{"unknown letters are passed over", "7A 00 FF 66", "66"},
        Row{"a letter as an operand", "72 66", "4B"}, Row{"launch", "58", ""}}) {
    SCOPED_TRACE(what);
    Time now = 1h;
    Logger logger(SmallSetup(), now);
    std::string heard;
    for (const auto byte : FromHex(request)) {
      const auto answer = logger.Take(byte, now += 12ms);
      if (answer) heard.append(heard.empty() ? "" : " | ").append(ToHex(answer->bytes));
    }
    EXPECT_EQ(heard, reply);
  }
}

TEST(LoggerTest, DropsARequestThatWasBrokenOff) {
  Logger logger(SmallSetup(), 1h);
  logger.Take('r', 1h);
  EXPECT_EQ(ToHex(logger.Take(0x66, 1h + 1s)->bytes), "4B");
  logger.Take('r', 1h + 5s);
  EXPECT_EQ(ToHex(logger.Take(0x66, 1h + 6001ms)->bytes), "66");
}

std::size_t PushesIn(std::span<const std::uint8_t> bytes) {
  std::size_t count = 0;
  for (std::size_t n = 0; n + 1 < bytes.size(); n += 2) count += bytes[n] == 127 && bytes[n + 1] == 127;
  return count;
}

TEST(StoreRun, WritesWhatThePlanSays) {
  using Row = std::tuple<const char*, int, std::size_t, PushPlan, std::size_t, std::ptrdiff_t>;
  for (const auto& [what, channels, pages, pushes, wantedPushes, unwritten] :
       {Row{"seven", 3, 3, {.count = 7}, 7, 88}, Row{"more than pairs", 3, 3, {.count = 5000}, 352, 88},
        Row{"a quarter", 3, 3, {.share = 0.25}, 88, 88},
        Row{"stuck button, full memory", 3, 2047, {.share = 1}, 270204, 0},
        Row{"X alone", 1, 3, {.count = 7}, 0, 88}, Row{"Y alone", 2, 3, {.count = 7}, 0, 88},
        Row{"nothing", 3, 0, {.count = 7}, 0, 0}}) {
    SCOPED_TRACE(what);
    DataMemory memory;
    std::ranges::fill(memory.Pages(0, PageCount), std::uint8_t{0x11});
    StoreRun(memory, {.linear = true, .channels = channels, .pages = pages, .pushes = pushes, .seed = 3});
    const auto run = memory.Pages(1, pages);
    EXPECT_EQ(PushesIn(run), wantedPushes);
    EXPECT_EQ(std::ranges::count(run, 0xFF), unwritten);
    const auto last = run.last(static_cast<std::size_t>(unwritten));
    EXPECT_EQ(std::ranges::count(last, 0xFF), unwritten);
    const auto untouched = static_cast<std::ptrdiff_t>((PageCount - pages) * PageSize);
    EXPECT_GE(std::ranges::count(memory.All(), 0x11), untouched);
    EXPECT_EQ(memory.Page(0)[0], 0x11);
  }
}

}  // namespace
}  // namespace bexlow::simulator
