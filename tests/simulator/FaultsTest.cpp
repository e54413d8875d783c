#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

#include "Bytes.h"
#include "Faults.h"
#include "Options.h"

namespace bexlow::simulator {
namespace {

using namespace std::chrono_literals;

Reply Six(char command = 'a') {
  Reply reply;
  reply.command = command;
  reply.bytes = FromHex("01 02 03 04 05 06");
  return reply;
}

TEST(Faults, SpoilAReplyEachInItsWay) {
  struct Row {
    const char* fault;
    const char* bytes;
    Time delay;
    std::optional<Time> vanish;
  };
  for (const auto& [fault, bytes, delay, vanish] :
       std::vector<Row>{{"silence", "", 0ms, {}},
                        {"drop", "", 0ms, {}},
                        {"short", "01 02 03 04 05", 0ms, {}},
                        {"short:9", "", 0ms, {}},
                        {"long:2", "01 02 03 04 05 06 55 55", 0ms, {}},
                        {"late:40", "01 02 03 04 05 06", 40ms, {}},
                        {"double", "01 02 03 04 05 06 01 02 03 04 05 06", 0ms, {}},
                        {"cut:2", "01 02 05 06", 0ms, {}},
                        {"cut:9", "", 0ms, {}},
                        {"vanish", "01 02 03", 0ms, Time::max()},
                        {"vanish:250", "01 02 03", 0ms, 250ms},
                        {"short/d", "01 02 03 04 05 06", 0ms, {}}}) {
    SCOPED_TRACE(fault);
    FaultPlan plan({ParseFault(fault)}, 1);
    Reply reply = Six();
    const bool goesOut = plan.Apply(reply, 0ns);
    EXPECT_EQ(goesOut, !reply.bytes.empty());
    EXPECT_EQ(ToHex(reply.bytes), bytes);
    EXPECT_EQ(reply.delay, delay);
    EXPECT_EQ(reply.vanish, vanish);
  }
}

// Of so many replies, to 'a' and 'd' in turn, a second apart: x for each that is lost.
std::string Pattern(const char* fault, int replies, std::uint64_t seed = 1) {
  FaultPlan plan({ParseFault(fault)}, seed);
  std::string seen;
  for (int n = 0; n < replies; ++n) {
    Reply reply = Six(n % 2 == 0 ? 'a' : 'd');
    seen += plan.Apply(reply, std::chrono::seconds(n)) ? '-' : 'x';
  }
  return seen;
}

TEST(Faults, StrikeTheRepliesThatTheyName) {
  for (const auto& [fault, pattern] : {std::pair{"drop@3", "--x---------"},
                                       {"drop%5", "----x----x--"},
                                       {"drop/d@3", "-----x------"},
                                       {"drop/d%2", "---x---x---x"},
                                       {"drop~0", "------------"},
                                       {"drop~1", "xxxxxxxxxxxx"},
                                       {"silence@9", "--------xxxx"},
                                       {"silence:2500@4", "---xxx------"}})
    EXPECT_EQ(Pattern(fault, 12), pattern) << fault;
  const auto byChance = Pattern("drop~0.25", 1000);
  EXPECT_EQ(byChance, Pattern("drop~0.25", 1000));
  EXPECT_NE(byChance, Pattern("drop~0.25", 1000, 2)) << "another seed";
  EXPECT_NEAR(static_cast<double>(std::ranges::count(byChance, 'x')), 250, 60);
}

TEST(Options, RefuseWhatTheyDoNotKnow) {
  using Arguments = std::vector<const char*>;
  for (const auto& arguments :
       {Arguments{"--nonsense"}, Arguments{"stray"}, Arguments{"--pages"}, Arguments{"--pages", "2048"},
        Arguments{"--pages", "-1"}, Arguments{"--pages=3x"}, Arguments{"--mode", "both"},
        Arguments{"--still=1"}, Arguments{"--erase-seconds", "nan"}, Arguments{"--pushes", "101%"},
        Arguments{"--fault", "explode"}, Arguments{"--fault", "drop@0"}, Arguments{"--fault", "drop~1.5"},
        Arguments{"--fault", "late:soon"}, Arguments{"--fault", "drop/dd"}, Arguments{"--fault", ""}}) {
    SCOPED_TRACE(arguments.back());
    EXPECT_THROW(ParseOptions(arguments), std::invalid_argument);
  }
}

TEST(Options, AreTakenInBothSpellings) {
  const auto logger =
      ParseOptions(std::vector{"--mode=bin", "--channels", "2", "--pages", "0", "--pushes=all", "--pace",
                               "off", "--still", "--erase-seconds", "0.5", "--seed=9"})
          .logger;
  EXPECT_FALSE(logger.stored.linear);
  EXPECT_EQ(logger.stored.channels, 2);
  EXPECT_EQ(logger.stored.pages, 0U);
  EXPECT_EQ(logger.stored.pushes.share, 1);
  EXPECT_EQ(logger.byteTime, 0ns);
  EXPECT_EQ(logger.motion, Motion::Still);
  EXPECT_EQ(logger.eraseTime, 500ms);
  EXPECT_EQ(logger.stored.seed, 9U);
}

}  // namespace
}  // namespace bexlow::simulator
