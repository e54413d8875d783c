// Tells whether this user runs the program already.
#pragma once

#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <sys/file.h>

namespace bexlow::platform {

/// Holds a lock in the user's runtime folder for as long as it lives. The lock ends with the program, also
/// with one that crashed or was killed. If no lock file can be made, the program starts all the same: better
/// a second copy than none.
class RunningCopy {
 public:
  /// True if another copy holds the lock.
  bool AnotherRuns() const { return another_; }

 private:
  QFile file_{QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/bexlow.lock"};
  const bool another_ = file_.open(QIODevice::ReadWrite) && ::flock(file_.handle(), LOCK_EX | LOCK_NB) != 0 &&
                        errno == EWOULDBLOCK;
};

}  // namespace bexlow::platform
