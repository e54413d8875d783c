#include "platform/machine/Ports.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <linux/serial.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace fs = std::filesystem;

namespace {

struct Range {
  int first, last;
  const char* prefix;
};
constexpr Range Ranges[] = {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}};

constexpr int WriteLimitMs = 1000;  // a driver that takes no byte for so long has lost its line

// Adapters that bundle bytes for 16 ms would stretch every round trip; drivers without the flag refuse it.
void AskForLowLatency(int handle) {
  serial_struct serial{};
  if (ioctl(handle, TIOCGSERIAL, &serial) != 0) return;
  serial.flags |= ASYNC_LOW_LATENCY;
  ioctl(handle, TIOCSSERIAL, &serial);
}

}  // namespace

std::string WhyNoOpening(int error) {
  const auto isOneOf = [error](auto... errors) { return ((error == errors) || ...); };
  if (isOneOf(ENOENT, ENXIO, ENODEV, ENOTTY, EIO)) return NoSuchDevice;
  if (isOneOf(EBUSY, EWOULDBLOCK)) return "it is in use";
  if (isOneOf(EACCES, EPERM)) return "no permission: add your user to the group dialout, then log in again";
  return "it cannot be opened";
}

fs::path DeviceOfComm(int comm, const fs::path& programFolder) {
  if (comm < 1 || comm > LastComm) return {};
  const fs::path link = programFolder / "Ports" / ("COM" + std::to_string(comm));
  std::error_code ignored;
  if (fs::is_symlink(link, ignored)) {
    const fs::path device = fs::weakly_canonical(link, ignored);
    return ignored ? link : device;
  }
  for (const auto& range : Ranges) {
    if (comm >= range.first && comm <= range.last) return range.prefix + std::to_string(comm - range.first);
  }
  return {};
}

// The maker and the product stand in the folder of the USB device, some folders above that of its line.
std::string AdapterWords(const fs::path& systemDevice) {
  const auto lineOf = [](const fs::path& file) {
    std::string line;
    std::getline(std::ifstream(file), line);
    return line;
  };
  std::error_code ignored;
  for (fs::path folder = fs::canonical(systemDevice, ignored); folder.has_relative_path();
       folder = folder.parent_path()) {
    const auto product = lineOf(folder / "product");
    if (product.empty()) continue;
    const auto maker = lineOf(folder / "manufacturer");
    return maker.empty() ? product : std::string(maker).append(" ").append(product);
  }
  return {};
}

SerialDevice::SerialDevice(std::list<SerialDevice*>& open, const std::string& label,
                           const std::filesystem::path& device, std::function<void(Bytes)> received)
    : open_(open), label_(label + " (" + device.string() + ")"), received_(std::move(received)) {
  try {
    OpenForUsAlone(device);
    SetLineParameters();
    AskForLowLatency(handle_);
    tcflush(handle_, TCIFLUSH);  // what was written before the last closing may still be on its way
  } catch (...) {
    if (handle_ >= 0) ::close(handle_);
    throw;
  }
  notifier_ = std::make_unique<QSocketNotifier>(handle_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    EventGate::Get().CollectAndDeliver([this] { Collect(); });  // may well end this device
  });
  open_.push_back(this);
}

SerialDevice::~SerialDevice() {
  open_.remove(this);
  Abandon();
}

// The lock holds for the device, whatever name it was opened by, also against root, and ends with the program
// however that ends. The exclusive flag keeps out programs that do not use locks; a pseudo-terminal would
// keep the flag after a kill.
void SerialDevice::OpenForUsAlone(const std::filesystem::path& device) {
  const auto refuse = [this](int error) {
    throw std::system_error(error, std::generic_category(),
                            label_ + " does not open: " + WhyNoOpening(error));
  };
  handle_ = ::open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (handle_ < 0) refuse(errno);
  if (flock(handle_, LOCK_EX | LOCK_NB) != 0) refuse(errno);
  if (termios probe{}; tcgetattr(handle_, &probe) != 0) refuse(errno);
  if (!IsPseudoTerminal(device) && ioctl(handle_, TIOCEXCL) != 0) refuse(errno);
}

// A port keeps the settings of an earlier program, so all are set anew: no flow control of either kind, no
// byte changed or dropped. Closing the port drops its control lines (HUPCL), as is the system's default and
// as an adapter powered by them has always seen here.
void SerialDevice::SetLineParameters() {
  termios line{};
  line.c_cflag = CS8 | CREAD | CLOCAL | HUPCL;
  cfsetspeed(&line, B19200);
  if (tcsetattr(handle_, TCSANOW, &line) != 0)
    throw std::system_error(errno, std::generic_category(), label_ + ": the line parameters were refused");
}

void SerialDevice::Write(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = handle_ < 0 ? -1 : ::write(handle_, bytes.data(), bytes.size());
    if (count > 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(count));
      continue;
    }
    const int error = handle_ < 0 ? EIO : count == 0 ? EAGAIN : errno;
    if (error == EINTR) continue;
    pollfd ready{handle_, POLLOUT, 0};
    if (error == EAGAIN && ::poll(&ready, 1, WriteLimitMs) > 0) continue;
    throw std::system_error(error == EAGAIN ? ETIMEDOUT : error, std::generic_category(),
                            label_ + " takes no bytes");
  }
}

void SerialDevice::Collect() {
  std::array<std::uint8_t, 4096> buffer{};
  while (handle_ >= 0) {
    const ssize_t count = ::read(handle_, buffer.data(), buffer.size());
    if (count > 0) {
      received_(Bytes(buffer.begin(), buffer.begin() + count));
      if (static_cast<std::size_t>(count) < buffer.size()) return;  // that was all
      continue;
    }
    // A line that vanished stays readable for ever: at its first sign the device is given up, and the next
    // use fails.
    pollfd state{handle_, POLLIN, 0};
    const bool gone = count < 0 ? errno != EAGAIN && errno != EINTR
                                : ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR)) != 0;
    if (gone) Abandon();
    return;
  }
}

void SerialDevice::Abandon() {
  if (handle_ < 0) return;
  if (notifier_) notifier_->setEnabled(false);
  ioctl(handle_, TIOCNXCL);
  ::close(std::exchange(handle_, -1));
}

}  // namespace bexlow::platform
