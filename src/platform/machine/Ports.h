// Which device stands behind a Comm number, and the device.
#pragma once

#include <QSocketNotifier>

#include <list>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

inline constexpr int LastComm = 16;

/// The device of Comm 1 to 16: the link Ports/COM<n> in the program's folder if there is one, else 1 to 4 are
/// /dev/ttyS0-3, 5 to 12 /dev/ttyUSB0-7, 13 to 16 /dev/ttyACM0-3. Empty for other numbers.
std::filesystem::path DeviceOfComm(int comm, const std::filesystem::path& programFolder);

inline bool IsPseudoTerminal(const std::filesystem::path& device) {
  return device.string().starts_with("/dev/pts/");
}

inline constexpr auto NoSuchDevice = "no such device";
/// Why a port does not open, in words, by the system's error number; with the remedy where there is one.
std::string WhyNoOpening(int error);

/// Maker and product of the adapter to which a device of the system (a folder below /sys) belongs; empty
/// where the system knows neither.
std::string AdapterWords(const std::filesystem::path& systemDevice);

/// A serial device of the system, used by system calls. Qt's serial class sends nothing before the event loop
/// runs, locks by the name that was opened, and reports a vanished line again and again; working around these
/// takes more code than the system calls.
class SerialDevice : public SerialLine {
 public:
  /// Opens a device raw and for this program alone.
  /// @param open   lists the device as long as it exists
  /// @param label  what a failure calls the port, such as "Comm 3"
  /// Throws std::system_error whose words tell no such device, in use, or no permission.
  SerialDevice(std::list<SerialDevice*>& open, const std::string& label, const std::filesystem::path& device,
               std::function<void(Bytes)> received);
  ~SerialDevice() override;

  void Write(std::span<const std::uint8_t> bytes) override;
  /// Moves what the system holds to the receiver.
  void Collect();
  int Handle() const { return handle_; }

 private:
  void OpenForUsAlone(const std::filesystem::path& device);
  void SetLineParameters();
  void Abandon();

  std::list<SerialDevice*>& open_;
  std::string label_;
  std::function<void(Bytes)> received_;
  int handle_ = -1;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace bexlow::platform
