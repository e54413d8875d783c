// What several tests do in other processes.
#pragma once

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "logic/Expect.h"

namespace bexlow::test {

/// Whether something is so in another process.
inline bool InAnotherProcess(const std::function<bool()>& so) {
  const pid_t child = fork();
  if (child == 0) ::_exit(so() ? 0 : 1);
  int status = -1;
  ::waitpid(child, &status, 0);
  return status == 0;
}

/// Another process that has done something and stands still until it is killed.
class StillProcess {
 public:
  explicit StillProcess(const std::function<void()>& action) {
    int ready[2];
    EXPECT_EQ(::pipe(ready), 0);
    child_ = fork();
    if (child_ == 0) {
      action();
      [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
      ::pause();
    }
    char mark = 0;
    EXPECT_EQ(::read(ready[0], &mark, 1), 1);
    for (const int end : ready) ::close(end);
  }
  void Kill() const {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }

 private:
  pid_t child_ = 0;
};

}  // namespace bexlow::test
