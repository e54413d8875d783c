// The stand-in logger: answers, runs, a reply's way to the line, and the program on a pseudo-terminal.
#include <algorithm>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iomanip>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "Options.h"
#include "support/DataFiles.h"

namespace bexlow::simulator {
using namespace std::chrono_literals;
namespace fs = std::filesystem;

std::vector<std::uint8_t> FromHex(const std::string& text) {
  std::vector<std::uint8_t> bytes;
  std::istringstream words(text);
  for (unsigned byte = 0; words >> std::hex >> byte;) bytes.push_back(static_cast<std::uint8_t>(byte));
  return bytes;
}

std::string ToHex(std::span<const std::uint8_t> bytes) {
  std::ostringstream text;
  text << std::uppercase << std::hex << std::setfill('0');
  for (const unsigned byte : bytes) text << (text.tellp() > 0 ? " " : "") << std::setw(2) << byte;
  return text.str();
}

const LoggerSetup Small{.stored = {.pages = 3}, .motion = Motion::Still};

// 12 ms lie between two bytes of a request.
TEST(LoggerTest, AnswersEachCommandWithItsLiteralBytes) {
  for (const auto& [what, request, reply] :
       {std::tuple{"ping", "66", "66"},
        std::tuple{"tares, the Y one negative", "72 0E 72 0F 72 10 72 11", "01 | C7 | FD | 71"},
        std::tuple{"cell without meaning", "72 C8", "FF"},
        std::tuple{"15 Hz after a write, which itself is not answered", "70 66 0F 6D", "00 96"},
        std::tuple{"accelerometers at X 12, Y -3 degrees", "61", "01 8D 01 81 02 78"},
        std::tuple{"angles less the tares", "41", "06 C1 FE 4B"},
        std::tuple{"angles with the tare off", "70 22 00 41", "08 88 FB BC"},
        std::tuple{"page beyond the memory", "64 08 00", ""},
        std::tuple{"unknown letters are passed over", "7A 00 FF 66", "66"},
        std::tuple{"a letter as an operand", "72 66", "4B"}, std::tuple{"launch", "58", ""}}) {
    Time now = 1h;
    Logger logger(Small, now);
    std::string heard;
    for (const auto byte : FromHex(request)) {
      const auto answer = logger.Take(byte, now += 12ms);
      if (answer) heard.append(heard.empty() ? "" : " | ").append(ToHex(answer->bytes));
    }
    EXPECT_EQ(heard, reply) << what;
  }
}

TEST(LoggerTest, DropsARequestThatWasBrokenOff) {
  Logger logger(Small, 1h);
  logger.Take('r', 1h);
  EXPECT_EQ(ToHex(logger.Take(0x66, 1h + 1s)->bytes), "4B");
  logger.Take('r', 1h + 5s);
  EXPECT_EQ(ToHex(logger.Take(0x66, 1h + 6001ms)->bytes), "66");
}

TEST(StoreRun, WritesWhatThePlanSays) {
  using Row = std::tuple<const char*, int, std::size_t, PushPlan, int, std::ptrdiff_t>;
  for (const auto& [what, channels, pages, pushes, wantedPushes, unwritten] :
       {Row{"seven", 3, 3, {.count = 7}, 7, 88}, Row{"more than pairs", 3, 3, {.count = 5000}, 352, 88},
        Row{"stuck button, full memory", 3, 2047, {.share = 1}, 270204, 0},
        Row{"X alone", 1, 3, {.count = 7}, 0, 88}, Row{"nothing", 3, 0, {.count = 7}, 0, 0}}) {
    SCOPED_TRACE(what);
    DataMemory memory;
    std::ranges::fill(memory.Pages(0, PageCount), std::uint8_t{0x11});
    StoreRun(memory, {.linear = true, .channels = channels, .pages = pages, .pushes = pushes, .seed = 3});
    const auto run = memory.Pages(1, pages);
    int marks = 0;
    for (std::size_t n = 0; n + 1 < run.size(); n += 2) marks += run[n] == 127 && run[n + 1] == 127;
    EXPECT_EQ(marks, wantedPushes);
    EXPECT_EQ(std::ranges::count(run.last(static_cast<std::size_t>(unwritten)), 0xFF), unwritten);
    EXPECT_GE(std::ranges::count(memory.All(), 0x11), std::ptrdiff_t((PageCount - pages) * PageSize));
  }
}

Reply Bytes(std::size_t count, std::uint8_t value = 1) {
  return {.bytes = std::vector<std::uint8_t>(count, value)};
}

// What may leave at each moment, bytes or the number of many; moments in byte times from the start.
std::string Moments(Outbox& outbox, Time start) {
  std::string text;
  for (auto due = outbox.NextDue(); due; due = outbox.NextDue()) {
    outbox.Advance(*due - 1ns);
    EXPECT_TRUE(outbox.Ready().empty()) << "early";
    outbox.Advance(*due);
    const auto ready = outbox.Ready();
    if (ready.empty()) continue;
    text += (text.empty() ? "" : "|") + std::to_string((*due - start) / ByteTime) + " " +
            (ready.size() > 2 ? "x" + std::to_string(ready.size()) : ToHex(ready));
    outbox.Written(ready.size());
  }
  return text;
}

TEST(Outbox, PutsAByteTimeBetweenBytesFromTheRequestOn) {
  Outbox outbox(ByteTime);
  outbox.Send(Bytes(2, 1), 0ns);
  outbox.Send(Bytes(2, 2), 0ns);            // asked for at once: behind the first
  outbox.Send(Bytes(1, 3), 10 * ByteTime);  // asked for later
  EXPECT_EQ(Moments(outbox, 0ns), "1 01|2 01|3 02|4 02|11 03");
  outbox.Send(Bytes(264), 5s);
  outbox.Advance(5s + 137'490us);
  EXPECT_EQ(outbox.Ready().size(), 263U) << "a page takes 137.5 ms";
  EXPECT_EQ(outbox.Advance(5s + 137'510us).size(), 1U) << "and is reported when it is complete";
}

TEST(Outbox, LetsRepliesIntoAStreamWithoutCrowdingTheLine) {
  Outbox outbox(ByteTime);
  Reply stream = Bytes(4, 0xEE);
  stream.stream = true;
  stream.spacing = 3 * ByteTime;
  outbox.Send(stream, 0ns);
  outbox.Send(Bytes(2, 1), 4 * ByteTime);
  EXPECT_EQ(Moments(outbox, 0ns), "3 EE|5 01|6 01|7 EE|9 EE|12 EE");
}

TEST(Outbox, HandsBytesOnAsTheHostsPortGathersThem) {
  using Row = std::tuple<HostPort, std::size_t, const char*>;
  for (const auto& [port, bytes, moments] :
       {Row{{}, 3, "1 01|2 01|3 01"}, Row{PlainPort, 16, "8 x8|16 x8"},
        Row{PlainPort, 18, "8 x8|16 x8|22 01 01"}, Row{AdapterPort, 6, "30 x6"},
        Row{AdapterPort, 70, "30 x30|61 x31|92 x9"}}) {
    Outbox outbox(ByteTime, port);
    outbox.Send(Bytes(bytes), 0ns);
    EXPECT_EQ(Moments(outbox, 0ns), moments);
  }
}

Reply Six(char command = 'a') { return {.command = command, .bytes = {1, 2, 3, 4, 5, 6}}; }

TEST(Faults, SpoilAReplyEachInItsWay) {
  using Row = std::tuple<const char*, const char*, Time, std::optional<Time>>;
  for (const auto& [fault, bytes, delay, vanish] :
       {Row{"silence", "", 0ms, {}}, Row{"drop", "", 0ms, {}}, Row{"short", "01 02 03 04 05", 0ms, {}},
        Row{"short:9", "", 0ms, {}}, Row{"long:2", "01 02 03 04 05 06 55 55", 0ms, {}},
        Row{"late:40", "01 02 03 04 05 06", 40ms, {}},
        Row{"double", "01 02 03 04 05 06 01 02 03 04 05 06", 0ms, {}}, Row{"cut:2", "01 02 05 06", 0ms, {}},
        Row{"cut:9", "", 0ms, {}}, Row{"vanish", "01 02 03", 0ms, Time::max()},
        Row{"vanish:250", "01 02 03", 0ms, 250ms}, Row{"short/d", "01 02 03 04 05 06", 0ms, {}}}) {
    SCOPED_TRACE(fault);
    FaultPlan plan({ParseFault(fault)}, 1);
    Reply reply = Six();
    const bool goesOut = plan.Apply(reply, 0ns);
    EXPECT_EQ(goesOut, !reply.bytes.empty());
    EXPECT_EQ(ToHex(reply.bytes), bytes);
    EXPECT_TRUE(reply.delay == delay && reply.vanish == vanish);
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
  using Row = std::pair<const char*, const char*>;
  for (const auto& [fault, pattern] :
       {Row{"drop@3", "--x---------"}, Row{"drop%5", "----x----x--"}, Row{"drop/d@3", "-----x------"},
        Row{"drop/d%2", "---x---x---x"}, Row{"drop~0", "------------"}, Row{"drop~1", "xxxxxxxxxxxx"},
        Row{"silence@9", "--------xxxx"}, Row{"silence:2500@4", "---xxx------"}})
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
        Arguments{"--pages=3x"}, Arguments{"--mode", "both"}, Arguments{"--still=1"},
        Arguments{"--erase-seconds", "nan"}, Arguments{"--pushes", "101%"}, Arguments{"--fault", "explode"},
        Arguments{"--fault", "drop@0"}, Arguments{"--fault", "late:soon"}, Arguments{"--fault", ""}})
    EXPECT_THROW(ParseOptions(arguments), std::invalid_argument) << arguments.back();
}

struct EndToEnd : testing::Test {
  EndToEnd() { fs::create_directory(folder_); }
  ~EndToEnd() override { fs::remove_all(folder_); }

  pid_t Start() const {
    const pid_t program = ::fork();
    if (program != 0) return program;
    ::execl(BEXLOW_LOGGER, BEXLOW_LOGGER, "--link", link_.c_str(), "--log", (folder_ / "log").c_str(),
            "--fault", "late:3000/f@1", nullptr);
    ::_exit(127);
  }

  static int ExitCode(pid_t program) {
    int status = -1;
    ::waitpid(program, &status, 0);
    return WEXITSTATUS(status);
  }

  int Open() const { return ::open(link_.c_str(), O_RDWR | O_NOCTTY); }

  static void Write(int device, const std::string& hex) {
    const auto bytes = FromHex(hex);
    ASSERT_EQ(::write(device, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  static std::string Read(int device, std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    pollfd source{device, POLLIN, 0};
    for (auto& byte : bytes)
      if (::poll(&source, 1, 10'000) != 1 || ::read(device, &byte, 1) != 1) return "nothing";
    return ToHex(bytes);
  }

  static bool Within(const std::function<bool()>& so) {
    for (int i = 0; i < 2000 && !so(); ++i) std::this_thread::sleep_for(10ms);
    return so();
  }
  bool Logged(const std::string& text) const {
    return Within([&] { return test::FileText(folder_ / "log").find(text) != std::string::npos; });
  }

  const fs::path folder_ = fs::temp_directory_path() / ("bexlow-logger-" + std::to_string(::getpid()));
  const fs::path link_ = folder_ / "COM1";
};

// A write just before the closing still counts. The closing discards a reply that is still on its way and the
// holder's exclusive flag. A pulled cable carries nothing.
TEST_F(EndToEnd, OutlivesTheClosingOfTheLineAndThePullingOfTheCable) {
  const pid_t program = Start();
  ASSERT_TRUE(Within([&] { return fs::exists(link_); }));
  const int first = Open();
  ASSERT_EQ(::ioctl(first, TIOCEXCL), 0);
  Write(first, "66 70 1E 07");
  ::close(first);
  ASSERT_TRUE(Logged("closed"));
  const int second = Open();
  int exclusive = -1;
  ASSERT_EQ(::ioctl(second, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
  ::kill(program, SIGUSR1);
  ASSERT_TRUE(Logged("unplugged"));
  Write(second, "66 66");
  ::kill(program, SIGUSR2);
  ASSERT_TRUE(Logged("plugged in"));
  Write(second, "6C 72 1E");
  EXPECT_EQ(Read(second, 3), "0C E4 07");
  ::close(second);
  ::kill(program, SIGTERM);
  EXPECT_EQ(ExitCode(program), 0);
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link_)));
}

TEST_F(EndToEnd, RefusesToReplaceAFile) {
  std::ofstream(link_) << "precious";
  EXPECT_EQ(ExitCode(Start()), 1);
  EXPECT_EQ(test::FileText(link_), "precious");
}

}  // namespace bexlow::simulator
