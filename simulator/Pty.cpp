#include "Pty.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace bexlow::simulator {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

int OpenMaster() {
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (master < 0) Fail("no pseudo-terminal");
  if (::grantpt(master) != 0 || ::unlockpt(master) != 0 || ::fcntl(master, F_SETFL, O_NONBLOCK) != 0) {
    const int error = errno;
    ::close(master);
    throw std::system_error(error, std::generic_category(), "no pseudo-terminal");
  }
  return master;
}

std::string DeviceOf(int master) {
  std::array<char, 256> name{};
  if (::ptsname_r(master, name.data(), name.size()) != 0) Fail("no pseudo-terminal");
  return name.data();
}

int OpenOwnEnd(const std::string& device) {
  const int end = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
  if (end < 0) Fail(device);
  return end;
}

void MakeRaw(int end) {
  termios line{};
  if (::tcgetattr(end, &line) != 0) return;
  ::cfmakeraw(&line);
  ::cfsetspeed(&line, B19200);
  ::tcsetattr(end, TCSANOW, &line);
}

int WatchOpenings(const std::string& device) {
  const int watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (watch < 0) return -1;
  if (::inotify_add_watch(watch, device.c_str(), IN_OPEN | IN_CLOSE) >= 0) return watch;
  ::close(watch);
  return -1;
}

std::string LinkTarget(const std::string& link) {
  std::array<char, PATH_MAX> target{};
  const auto size = ::readlink(link.c_str(), target.data(), target.size());
  return size < 0 ? std::string{} : std::string(target.data(), static_cast<std::size_t>(size));
}

}  // namespace

Descriptor::~Descriptor() {
  if (number_ >= 0) ::close(number_);
}

Pty::Pty(std::string link)
    : master_(OpenMaster()),
      device_(DeviceOf(master_.Number())),
      ownEnd_(OpenOwnEnd(device_)),
      watch_(WatchOpenings(device_)),
      link_(std::move(link)) {
  MakeRaw(ownEnd_.Number());
  MakeLink();
}

// A stand-in that was started later may have taken the link over: that one stays.
Pty::~Pty() {
  if (!link_.empty() && LinkTarget(link_) == device_) ::unlink(link_.c_str());
}

void Pty::MakeLink() {
  if (link_.empty()) return;
  if (::access(link_.c_str(), F_OK) == 0 && LinkTarget(link_).empty()) {
    throw std::system_error(std::make_error_code(std::errc::file_exists), link_ + " is no link");
  }
  const std::string fresh = link_ + "." + std::to_string(::getpid());
  ::unlink(fresh.c_str());
  if (::symlink(device_.c_str(), fresh.c_str()) != 0) Fail(link_);
  if (::rename(fresh.c_str(), link_.c_str()) == 0) return;
  const int error = errno;
  ::unlink(fresh.c_str());
  throw std::system_error(error, std::generic_category(), link_);
}

bool Pty::TakeClosing() {
  if (watch_.Number() < 0) return false;
  bool closed = false;
  alignas(inotify_event) std::array<char, 4096> buffer{};
  for (ssize_t size = 0; (size = ::read(watch_.Number(), buffer.data(), buffer.size())) > 0;) {
    for (std::size_t place = 0; place < static_cast<std::size_t>(size);) {
      inotify_event event{};
      std::memcpy(&event, &buffer[place], sizeof event);
      place += sizeof event + event.len;
      if (event.mask & IN_OPEN) ++opened_;
      if ((event.mask & IN_CLOSE) && opened_ > 0 && --opened_ == 0) closed = true;
    }
  }
  return closed;
}

// The exclusive flag lives as long as the pseudo-terminal does; left behind by a killed program it would shut
// out the next one.
void Pty::Reset() {
  ::tcflush(ownEnd_.Number(), TCIFLUSH);
  ::ioctl(ownEnd_.Number(), TIOCNXCL);
  MakeRaw(ownEnd_.Number());
}

std::size_t Pty::Read(std::span<std::uint8_t> bytes) {
  const auto size = ::read(master_.Number(), bytes.data(), bytes.size());
  return size > 0 ? static_cast<std::size_t>(size) : 0;
}

std::size_t Pty::Write(std::span<const std::uint8_t> bytes) {
  const auto size = ::write(master_.Number(), bytes.data(), bytes.size());
  return size > 0 ? static_cast<std::size_t>(size) : 0;
}

}  // namespace bexlow::simulator
