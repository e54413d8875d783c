// The serial control on a real pseudo-terminal.
#include <QTest>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#include "platform/EventGate.h"
#include "platform/Form.h"
#include "platform/MSComm.h"
#include "platform/Ports.h"
#include "platform/RealMachine.h"

namespace bexlow::test {

using platform::Bytes;
using platform::MSComm;
namespace fs = std::filesystem;

/// A scratch program folder whose Comm 1 is the slave of a pseudo-terminal.
class Serial : public ::testing::Test {
 protected:
  Serial() {
    char pattern[] = "/tmp/bexlow-serial-XXXXXX";
    folder = mkdtemp(pattern);
    fs::create_directories(folder / "Ports");
    master = posix_openpt(O_RDWR | O_NOCTTY);
    grantpt(master);
    unlockpt(master);
    device = ptsname(master);
    Link(1, device);
    machine = std::make_unique<platform::RealMachine>(folder);
    platform::Machine::Install(*machine);
  }
  ~Serial() override {
    Vanish();
    fs::remove_all(folder);
  }

  void Link(int number, const fs::path& to) {
    fs::create_symlink(to, folder / "Ports" / ("COM" + std::to_string(number)));
  }
  void Vanish() {
    if (master >= 0) ::close(std::exchange(master, -1));
  }
  void LoggerSends(const Bytes& bytes) {
    ASSERT_EQ(::write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  Bytes LoggerHears(std::size_t count) {
    Bytes heard(count);
    std::size_t filled = 0;
    while (filled < count) {
      const auto read = ::read(master, heard.data() + filled, count - filled);
      if (read <= 0) break;
      filled += static_cast<std::size_t>(read);
    }
    return heard;
  }
  static std::string Words(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::system_error& error) {
      return error.what();
    }
    return "";
  }
  /// The words of a failed opening in another process.
  std::string WordsElsewhere(int number) {
    int pipes[2];
    EXPECT_EQ(::pipe(pipes), 0);
    const pid_t child = fork();
    if (child == 0) {
      MSComm other(form, "Other");
      other.CommPort(number);
      const auto words = Words([&] { other.PortOpen(true); });
      [[maybe_unused]] const auto written = ::write(pipes[1], words.data(), words.size());
      ::_exit(0);
    }
    ::close(pipes[1]);
    char words[300] = {};
    [[maybe_unused]] const auto read = ::read(pipes[0], words, sizeof words - 1);
    ::close(pipes[0]);
    ::waitpid(child, nullptr, 0);
    return words;
  }

  fs::path folder, device;
  int master = -1;
  std::unique_ptr<platform::RealMachine> machine;
  platform::Form form{"Form", "Form"};
  MSComm comm{form, "MSComm1"};
};

TEST_F(Serial, CarriesEveryByteBothWays) {
  Bytes all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  comm.PortOpen(true);
  for (const auto byte : all) comm.Output({&byte, 1});
  EXPECT_EQ(LoggerHears(all.size()), all);
  LoggerSends(all);
  ASSERT_TRUE(QTest::qWaitFor([&] { return comm.InBufferCount() == 256; }));
  EXPECT_EQ(comm.Input(), all);
  EXPECT_EQ(comm.Input(), Bytes{});
}

TEST_F(Serial, RaisesItsEventAtTheThresholdOnly) {
  int events = 0, kind = 0;
  comm.OnComm = [&] {
    ++events;
    kind = comm.CommEvent();
    comm.Input();
  };
  comm.RThreshold(4);
  comm.PortOpen(true);
  LoggerSends({1, 2, 3});
  QTest::qWait(30);
  EXPECT_EQ(events, 0);
  LoggerSends({4});
  ASSERT_TRUE(QTest::qWaitFor([&] { return events == 1; }));
  EXPECT_EQ(kind, platform::ReceiveEvent);
  comm.RThreshold(0);
  LoggerSends({1, 2, 3, 4, 5});
  QTest::qWait(30);
  EXPECT_EQ(events, 1);
}

TEST_F(Serial, CollectsWhileTheProgramWaits) {
  comm.PortOpen(true);
  LoggerSends(Bytes(3000, 7));
  const platform::EventGate::Hold hold;
  for (int i = 0; i < 100 && comm.InBufferCount() < 3000; ++i) machine->Idle(std::chrono::milliseconds(2));
  EXPECT_EQ(comm.InBufferCount(), 3000) << "more than InBufferSize, and none of it lost";
}

TEST_F(Serial, StaleBytesDoNotOutliveAnOpening) {
  comm.PortOpen(true);
  comm.PortOpen(false);
  LoggerSends({9, 9, 9});
  comm.PortOpen(true);
  QTest::qWait(20);
  EXPECT_EQ(comm.InBufferCount(), 0);
}

TEST_F(Serial, IsHeldByOneControlAlone) {
  Link(2, folder / "Ports" / "COM1");  // the same device through another name
  MSComm second(form, "MSComm2");
  second.CommPort(2);
  comm.PortOpen(true);
  EXPECT_NE(Words([&] { second.PortOpen(true); }).find("it is in use"), std::string::npos);
  EXPECT_NE(WordsElsewhere(2).find("it is in use"), std::string::npos);
  EXPECT_NE(Words([&] { comm.PortOpen(true); }), "") << "opening twice is an error too";
  comm.PortOpen(false);
  EXPECT_EQ(Words([&] { second.PortOpen(true); }), "");
}

TEST_F(Serial, AKilledHolderFreesThePort) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t holder = fork();
  if (holder == 0) {
    comm.PortOpen(true);
    [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
    ::pause();
  }
  char mark = 0;
  ASSERT_EQ(::read(ready[0], &mark, 1), 1);
  EXPECT_NE(Words([&] { comm.PortOpen(true); }), "");
  ::kill(holder, SIGKILL);
  ::waitpid(holder, nullptr, 0);
  EXPECT_EQ(Words([&] { comm.PortOpen(true); }), "");
}

TEST_F(Serial, AVanishedLineFailsAtTheNextUseAndCostsNothing) {
  comm.PortOpen(true);
  Vanish();
  const auto cpu = [] {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used.ru_utime.tv_sec * 1'000'000 + used.ru_utime.tv_usec + used.ru_stime.tv_usec;
  };
  const auto before = cpu();
  QTest::qWait(200);
  EXPECT_LT(cpu() - before, 100'000) << "an event without end spins";
  const std::uint8_t byte = 'f';
  EXPECT_NE(Words([&] { comm.Output({&byte, 1}); }).find("takes no bytes"), std::string::npos);
  EXPECT_TRUE(comm.PortOpen());
  comm.PortOpen(false);
  EXPECT_NE(Words([&] { comm.PortOpen(true); }).find("no such device"), std::string::npos);
}

TEST_F(Serial, SaysWhyAPortDoesNotOpen) {
  Link(2, "/nowhere/at/all");
  Link(3, "/dev/null");
  Link(4, folder / "forbidden");
  ::close(::open((folder / "forbidden").c_str(), O_CREAT | O_WRONLY, 0));
  struct Row {
    int comm;
    const char* words;
  };
  for (const auto& [number, words] : {Row{2, "no such device"}, Row{3, "no such device"},
                                      Row{0, "no such port"}, Row{17, "no such port"}, Row{4, "dialout"}}) {
    if (number == 4 && geteuid() == 0) continue;  // nothing is forbidden to root
    comm.CommPort(number);
    EXPECT_NE(Words([&] { comm.PortOpen(true); }).find(words), std::string::npos) << number;
  }
  comm.CommPort(1);
  comm.Settings("19200,e,8,1");
  EXPECT_NE(Words([&] { comm.PortOpen(true); }).find("not supported"), std::string::npos);
}

TEST_F(Serial, AClosedPortTakesAndGivesNothing) {
  const std::uint8_t byte = 0;
  EXPECT_NE(Words([&] { comm.Output({&byte, 1}); }), "");
  EXPECT_NE(Words([&] { comm.Input(); }), "");
  comm.PortOpen(true);
  EXPECT_NE(Words([&] { comm.InBufferSize(2100); }), "");
  comm.PortOpen(false);
  comm.InBufferSize(2100);
  EXPECT_EQ(comm.InBufferSize(), 2100);
}

TEST_F(Serial, NumbersStandForDevices) {
  for (const auto& [number, path] : {std::pair{1, device.string()},
                                     {2, std::string("/dev/ttyS1")},
                                     {4, std::string("/dev/ttyS3")},
                                     {5, std::string("/dev/ttyUSB0")},
                                     {12, std::string("/dev/ttyUSB7")},
                                     {13, std::string("/dev/ttyACM0")},
                                     {16, std::string("/dev/ttyACM3")},
                                     {0, std::string()},
                                     {17, std::string()}})
    EXPECT_EQ(platform::DeviceOfComm(number, folder), path) << number;
}

}  // namespace bexlow::test
