// The program itself on a real pseudo-terminal: started, opened as a serial device, signalled, ended.
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "Bytes.h"

namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class EndToEnd : public testing::Test {
 protected:
  EndToEnd() { fs::create_directory(folder_); }
  ~EndToEnd() override { fs::remove_all(folder_); }

  pid_t Start() const {
    const pid_t program = ::fork();
    if (program != 0) return program;
    ::execl(BEXLOW_LOGGER, BEXLOW_LOGGER, "--link", link_.c_str(), "--log", (folder_ / "log").c_str(),
            "--fault", "late:300/f@1", nullptr);
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

  // Reads `count` bytes, each within 10 s.
  static std::string Read(int device, std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    pollfd source{device, POLLIN, 0};
    for (auto& byte : bytes)
      if (::poll(&source, 1, 10'000) != 1 || ::read(device, &byte, 1) != 1) return "nothing";
    return ToHex(bytes);
  }

  // Whether it becomes true within 20 seconds.
  static bool Within(const std::function<bool()>& so) {
    for (int i = 0; i < 2000 && !so(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return so();
  }
  bool Logged(const std::string& text) const {
    return Within([&] { return Contents(folder_ / "log").find(text) != std::string::npos; });
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
  EXPECT_EQ(Contents(link_), "precious");
}

}  // namespace
