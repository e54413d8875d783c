// The program itself on a real pseudo-terminal: started, opened as a serial device, signalled, ended.
#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "Bytes.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// Looks until it is so, 20 seconds at most; says whether it came to be.
bool Within(const std::function<bool()>& so) {
  const auto end = std::chrono::steady_clock::now() + 20s;
  while (!so()) {
    if (std::chrono::steady_clock::now() > end) return false;
    ::usleep(500);
  }
  return true;
}

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class EndToEnd : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "bexlow-logger-XXXXXX").string();
    ASSERT_TRUE(::mkdtemp(pattern.data()));
    folder_ = pattern;
    link_ = folder_ / "COM1";
  }

  void TearDown() override {
    if (program_ > 0) End();
    fs::remove_all(folder_);
  }

  void Start(std::vector<std::string> options) {
    options.insert(options.begin(), {BEXLOW_LOGGER, "--link", link_, "--log", folder_ / "log"});
    int out[2];
    ASSERT_EQ(::pipe(out), 0);
    program_ = ::fork();
    if (program_ == 0) {
      ::dup2(out[1], 1);
      std::vector<char*> arguments;
      for (auto& option : options) arguments.push_back(option.data());
      arguments.push_back(nullptr);
      ::execv(BEXLOW_LOGGER, arguments.data());
      ::_exit(127);
    }
    ::close(out[1]);
    char line[256]{};
    EXPECT_GT(::read(out[0], line, sizeof line - 1), 0);
    ::close(out[0]);
    EXPECT_EQ("ready " + fs::read_symlink(link_).string() + "\n", line);
  }

  int End() {
    ::kill(program_, SIGTERM);
    int status = -1;
    ::waitpid(std::exchange(program_, 0), &status, 0);
    return status;
  }

  int Open() const { return ::open(link_.c_str(), O_RDWR | O_NOCTTY); }

  static void Write(int device, const std::string& hex) {
    const auto bytes = FromHex(hex);
    ASSERT_EQ(::write(device, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  // As many bytes as are wanted, or those that came until the line was quiet for so long.
  static std::string Read(int device, std::size_t count, int quietMs = 10'000) {
    std::vector<std::uint8_t> bytes;
    pollfd source{device, POLLIN, 0};
    while (bytes.size() < count && ::poll(&source, 1, quietMs) == 1) {
      std::uint8_t byte = 0;
      if (::read(device, &byte, 1) != 1) return ToHex(bytes) + " gone";
      bytes.push_back(byte);
    }
    return ToHex(bytes);
  }

  bool Logged(const std::string& text) const {
    return Within([&] { return Contents(folder_ / "log").find(text) != std::string::npos; });
  }

  fs::path folder_, link_;
  pid_t program_ = 0;
};

// A write that is followed by the closing at once still counts. Lost with the closing are a reply that was
// still on its way and the holder's exclusive flag.
TEST_F(EndToEnd, OutlivesTheClosingOfTheLineAndLeavesNoLink) {
  Start({"--fault", "late:300/f@1"});
  const int first = Open();
  ASSERT_EQ(::ioctl(first, TIOCEXCL), 0);
  Write(first, "66 70 1E 07");
  ::close(first);
  ASSERT_TRUE(Logged("closed"));
  const int second = Open();
  int exclusive = -1;
  ASSERT_EQ(::ioctl(second, TIOCGEXCL, &exclusive), 0);
  EXPECT_EQ(exclusive, 0);
  Write(second, "6C 72 1E");
  EXPECT_EQ(Read(second, 3), "0C E4 07");
  ::close(second);
  EXPECT_EQ(End(), 0);
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link_)));
}

TEST_F(EndToEnd, HearsNothingWhileUnpluggedAndComesBackFromAFault) {
  Start({"--fault", "vanish:1000/l@1"});
  int device = Open();
  ::kill(program_, SIGUSR1);
  ASSERT_TRUE(Logged("unplugged"));
  Write(device, "6C");
  EXPECT_EQ(Read(device, 1, 50), "");
  ::kill(program_, SIGUSR2);
  ASSERT_TRUE(Logged("plugged in"));
  Write(device, "6C");
  EXPECT_TRUE(Read(device, 2).ends_with("gone"));
  ::close(device);
  EXPECT_TRUE(Within([&] { return fs::exists(link_); }));
  device = Open();
  Write(device, "6C");
  EXPECT_EQ(Read(device, 2), "0C E4");
  ::close(device);
}

TEST_F(EndToEnd, RefusesToReplaceAFile) {
  std::ofstream(link_) << "precious";
  const std::string command = std::string(BEXLOW_LOGGER) + " --link " + link_.string() + " 2>/dev/null";
  EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
  EXPECT_EQ(Contents(link_), "precious");
}

}  // namespace
