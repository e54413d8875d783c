#include <algorithm>
#include <gtest/gtest.h>

#include "Bytes.h"
#include "Run.h"

namespace bexlow::simulator {
namespace {

std::size_t PushesIn(std::span<const std::uint8_t> bytes) {
  std::size_t count = 0;
  for (std::size_t n = 0; n + 1 < bytes.size(); n += 2) count += bytes[n] == 127 && bytes[n + 1] == 127;
  return count;
}

TEST(AngleByte, CountsTheNegativeHalfDownFrom255) {
  struct Row {
    double degrees, fullScale;
    int byte;
  };
  for (const auto& [degrees, fullScale, byte] :
       {Row{1.4, 180, 1}, Row{-1.4, 180, 254}, Row{-0.5, 180, 0}, Row{-90, 180, 191}, Row{180, 180, 128},
        Row{-180, 180, 129}, Row{45, 90, 64}, Row{400, 90, 128}}) {
    SCOPED_TRACE(degrees);
    EXPECT_EQ(AngleByte(degrees, fullScale), byte);
  }
}

TEST(StoreRun, WritesWhatThePlanSays) {
  struct Row {
    const char* what;
    int channels;
    std::size_t pages;
    PushPlan pushes;
    std::size_t wantedPushes;
    std::ptrdiff_t unwritten;  // bytes at the end of the last page
  };
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

TEST(StoreRun, PutsXBinsOnOddPagesAndYBinsBehindThem) {
  DataMemory memory;
  StoreRun(memory, {.linear = false, .pages = 5, .seed = 3});
  for (std::size_t page = 1; page <= 5; ++page) {
    SCOPED_TRACE(page);
    EXPECT_EQ(SamplesInBins(memory.Page(page)), 900);
    EXPECT_GT(PageSize - static_cast<std::size_t>(std::ranges::count(memory.Page(page), 0)), 3U);
  }
  EXPECT_EQ(memory.Page(6)[0], 0xFF);
  EXPECT_FALSE(std::ranges::equal(memory.Page(1), memory.Page(2)));
}

TEST(StoreRun, IsTheSameForTheSameSeedAlone) {
  DataMemory one, same, other;
  StoreRun(one, {.pages = 40, .seed = 3});
  StoreRun(same, {.pages = 40, .seed = 3});
  StoreRun(other, {.pages = 40, .seed = 4});
  EXPECT_TRUE(std::ranges::equal(one.All(), same.All()));
  EXPECT_FALSE(std::ranges::equal(one.All(), other.All()));
}

}  // namespace
}  // namespace bexlow::simulator
