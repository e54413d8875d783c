// Text files, settings and the running-copy test on the real file system.
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

#include "platform/CommonDialog.h"
#include "platform/RunningCopy.h"
#include "platform/TextFile.h"
#include "support/VirtualMachine.h"

namespace bexlow::test {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
 protected:
  Files() {
    char pattern[] = "/tmp/bexlow-files-XXXXXX";
    folder = mkdtemp(pattern);
  }
  ~Files() override { fs::remove_all(folder); }
  static int ErrorOf(const std::function<void()>& action) {
    try {
      action();
    } catch (const std::system_error& error) {
      return error.code().value();
    }
    return 0;
  }
  fs::path folder;
};

TEST_F(Files, AppendKeepsWhatIsThere) {
  const auto path = folder / "run one.qbx";
  platform::WriteWhole(path, "header\r\n");
  platform::Append(path, "1,2\r\n");
  platform::Append(path, std::string("\0\xFF", 2));
  EXPECT_EQ(platform::ReadWhole(path), std::string("header\r\n1,2\r\n\0\xFF", 15));
  platform::WriteWhole(path, "new");
  EXPECT_EQ(platform::ReadWhole(path), "new");
}

TEST_F(Files, FailuresBearTheSystemsNumber) {
  EXPECT_EQ(ErrorOf([&] { platform::Append("/dev/full", "x"); }), ENOSPC);
  EXPECT_EQ(ErrorOf([&] { platform::WriteWhole("/dev/full", "x"); }), ENOSPC);
  EXPECT_EQ(ErrorOf([&] { platform::Append(folder / "none" / "x", "x"); }), ENOENT);
  EXPECT_EQ(ErrorOf([&] { platform::ReadWhole(folder / "none"); }), ENOENT);
  EXPECT_EQ(ErrorOf([&] { platform::ReadWhole(folder); }), EISDIR);
  EXPECT_EQ(ErrorOf([&] { platform::ReadWhole("/dev/zero"); }), EINVAL) << "a file without an end";
}

TEST_F(Files, AFolderWithoutWritePermissionIsToldAsSuch) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && setuid(65534) != 0) ::_exit(2);  // nothing is forbidden to root
    ::_exit(ErrorOf([&] { platform::WriteWhole("/etc/run.qbx", "x"); }) == EACCES ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

// A disk that fills up in the middle of a record must not leave half of it.
TEST_F(Files, APartOfARecordIsCutBack) {
  const auto path = folder / "full.qbx";
  platform::WriteWhole(path, "whole\r\n");
  const pid_t child = fork();
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{10, 10};
    setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(ErrorOf([&] { platform::Append(path, "a record"); }) == EFBIG ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(platform::ReadWhole(path), "whole\r\n");
}

TEST_F(Files, ACancelledDialogThrowsWhereItIsAskedTo) {
  VirtualMachine machine;
  platform::CommonDialog dialog;
  dialog.FileName = "before";
  machine.WillCancelFile();
  dialog.ShowOpen();
  dialog.CancelError = true;
  machine.WillCancelFile();
  EXPECT_EQ(ErrorOf([&] { dialog.ShowSave(); }), platform::CancelSelected);
  EXPECT_EQ(dialog.FileName, "before");
}

TEST_F(Files, ACopyThatWasKilledLeavesNoLock) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t first = fork();
  if (first == 0) {
    const platform::RunningCopy copy;
    [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
    ::pause();
  }
  char mark = 0;
  ASSERT_EQ(::read(ready[0], &mark, 1), 1);
  EXPECT_TRUE(platform::RunningCopy().AnotherRuns());
  ::kill(first, SIGKILL);
  ::waitpid(first, nullptr, 0);
  EXPECT_FALSE(platform::RunningCopy().AnotherRuns());
}

}  // namespace bexlow::test
