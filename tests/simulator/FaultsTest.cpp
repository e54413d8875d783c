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
                        {"short:4", "01 02", 0ms, {}},
                        {"short:9", "", 0ms, {}},
                        {"long:2", "01 02 03 04 05 06 55 55", 0ms, {}},
                        {"late", "01 02 03 04 05 06", 1500ms, {}},
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

// The pattern shows twelve replies, to 'a' and 'd' in turn, a second apart: x for each that is lost.
TEST(Faults, StrikeTheRepliesThatTheyName) {
  struct Row {
    const char* fault;
    const char* pattern;
  };
  for (const auto& [fault, pattern] : std::vector<Row>{{"drop@3", "--x---------"},
                                                       {"drop%5", "----x----x--"},
                                                       {"drop/d@3", "-----x------"},
                                                       {"drop/d%2", "---x---x---x"},
                                                       {"drop~0", "------------"},
                                                       {"drop~1", "xxxxxxxxxxxx"},
                                                       {"silence@9", "--------xxxx"},
                                                       {"silence:2500@4", "---xxx------"}}) {
    SCOPED_TRACE(fault);
    FaultPlan plan({ParseFault(fault)}, 1);
    std::string seen;
    for (int n = 0; n < 12; ++n) {
      Reply reply = Six(n % 2 == 0 ? 'a' : 'd');
      seen += plan.Apply(reply, std::chrono::seconds(n)) ? '-' : 'x';
    }
    EXPECT_EQ(seen, pattern);
  }
}

TEST(Faults, StrikeByChanceTheSameRepliesForTheSameSeed) {
  const auto pattern = [](std::uint64_t seed) {
    FaultPlan plan({ParseFault("drop~0.25")}, seed);
    std::string seen;
    for (int n = 0; n < 1000; ++n) {
      Reply reply = Six();
      seen += plan.Apply(reply, 0ns) ? '-' : 'x';
    }
    return seen;
  };
  const auto one = pattern(1);
  EXPECT_EQ(one, pattern(1));
  EXPECT_NE(one, pattern(2));
  EXPECT_NEAR(static_cast<double>(std::ranges::count(one, 'x')), 250, 60);
}

TEST(Options, RefuseWhatTheyDoNotKnow) {
  for (const std::vector<const char*>& arguments :
       std::vector<std::vector<const char*>>{{"--nonsense"},
                                             {"stray"},
                                             {"--pages"},
                                             {"--pages", "2048"},
                                             {"--pages", "-1"},
                                             {"--pages=3x"},
                                             {"--channels", "0"},
                                             {"--mode", "both"},
                                             {"--pace", ""},
                                             {"--still=1"},
                                             {"--erase-seconds", "nan"},
                                             {"--pushes", "101%"},
                                             {"--fault", "explode"},
                                             {"--fault", "drop@0"},
                                             {"--fault", "drop~1.5"},
                                             {"--fault", "late:soon"},
                                             {"--fault", "drop/dd"},
                                             {"--fault", ""}}) {
    SCOPED_TRACE(arguments.back());
    EXPECT_THROW(ParseOptions(arguments), std::invalid_argument);
  }
}

TEST(Options, AreTakenInBothSpellings) {
  const std::vector<const char*> arguments{"--mode=bin", "--channels",      "2",      "--pages",
                                           "0",          "--pushes=all",    "--pace", "off",
                                           "--still",    "--erase-seconds", "0.5",    "--seed=9"};
  const Options options = ParseOptions(arguments);
  EXPECT_FALSE(options.logger.stored.linear);
  EXPECT_EQ(options.logger.stored.channels, 2);
  EXPECT_EQ(options.logger.stored.pages, 0U);
  EXPECT_EQ(options.logger.stored.pushes.share, 1);
  EXPECT_EQ(options.logger.byteTime, 0ns);
  EXPECT_EQ(options.logger.motion, Motion::Still);
  EXPECT_EQ(options.logger.eraseTime, 500ms);
  EXPECT_EQ(options.logger.stored.seed, 9U);
}

}  // namespace
}  // namespace bexlow::simulator
