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

/// Checks something while another process, which has done something, stands still; then kills that process.
inline void WithStillProcess(const std::function<void()>& action, const std::function<void()>& check) {
  int ready[2];
  ASSERT_EQ(::pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    action();
    [[maybe_unused]] const auto written = ::write(ready[1], "x", 1);
    ::pause();
  }
  ::close(ready[1]);
  char mark = 0;
  EXPECT_EQ(::read(ready[0], &mark, 1), 1);
  ::close(ready[0]);
  check();
  ::kill(child, SIGKILL);
  ::waitpid(child, nullptr, 0);
}

}  // namespace bexlow::test
