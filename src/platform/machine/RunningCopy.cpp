#include "platform/machine/RunningCopy.h"

#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace bexlow::platform {

namespace {

std::string LockPath() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  if (!folder.isEmpty()) return folder.toStdString() + "/bexlow.lock";
  return "/tmp/bexlow-" + std::to_string(::getuid()) + ".lock";
}

}  // namespace

// If no lock file can be made, the program starts all the same: better a second copy than none.
RunningCopy::RunningCopy()
    : handle_(::open(LockPath().c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600)) {
  another_ = handle_ >= 0 && ::flock(handle_, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

RunningCopy::~RunningCopy() {
  if (handle_ >= 0) ::close(handle_);
}

}  // namespace bexlow::platform
