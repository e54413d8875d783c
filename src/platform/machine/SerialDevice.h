// A serial device of the system, used by system calls. Qt's serial class sends nothing before the event loop
// runs, locks by the name that was opened, and reports a vanished line again and again; working around these
// takes more code than the system calls.
#pragma once

#include <QSocketNotifier>

#include <list>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

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
