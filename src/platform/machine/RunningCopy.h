// Tells whether this user runs the program already.
#pragma once

namespace bexlow::platform {

/// Holds a lock in the user's runtime folder for as long as it lives. The lock ends with the program, also
/// with one that crashed or was killed.
class RunningCopy {
 public:
  RunningCopy();
  ~RunningCopy();
  RunningCopy(const RunningCopy&) = delete;
  RunningCopy& operator=(const RunningCopy&) = delete;

  /// True if another copy holds the lock.
  bool AnotherRuns() const { return another_; }

 private:
  int handle_ = -1;
  bool another_ = false;
};

}  // namespace bexlow::platform
