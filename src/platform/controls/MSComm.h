// The serial control: a receive buffer, a threshold that raises OnComm, and a port that is open or closed.
#pragma once

#include "platform/machine/Machine.h"

namespace bexlow::platform {

class Form;

inline constexpr int ReceiveEvent = 2;  ///< CommEvent: data received

class MSComm {
 public:
  /// @param owner  the screen that the control goes with: leaving the screen closes the port
  /// @param name   as it appears in reports of failures
  MSComm(Form& owner, const std::string& name);
  ~MSComm();
  MSComm(const MSComm&) = delete;
  MSComm& operator=(const MSComm&) = delete;

  int CommPort = 1;                      ///< stays as it is while the port is open
  std::string Settings = "19200,n,8,1";  ///< all that the logger speaks: the line is opened with no other
  int InputLen = 0;                      ///< Input takes everything, whatever stands here
  int InBufferSize = 1024;               ///< the buffer has more room than any exchange needs

  bool PortOpen() const { return line_ != nullptr; }
  /// Opening throws std::system_error if the port does not exist, is taken, may not be used, or is open
  /// already. If a reply was still to come when the port was closed last, it waits until none can come and
  /// drops what comes. Closing drops what was received and never fails.
  void PortOpen(bool open);

  int InBufferCount() const { return static_cast<int>(received_.size()); }

  int RThreshold() const { return rThreshold_; }
  /// Waiting bytes that raise OnComm; 0 silences it.
  void RThreshold(int count);
  /// When the first of the waiting bytes came, on the high-resolution counter.
  std::int64_t FirstByteAt() const { return firstByteAt_; }
  /// When bytes were written last, on the high-resolution counter; nothing once bytes have been taken since.
  std::optional<std::int64_t> AskedAt() const { return askedAt_; }
  int CommEvent() const { return commEvent_; }
  std::function<void()> OnComm;

  /// Writes the bytes. Throws std::system_error if the port is closed or the line is gone.
  /// @param reply  how many bytes the logger answers to them
  void Output(std::span<const std::uint8_t> bytes, std::size_t reply = 0);
  /// Takes all waiting bytes. Throws std::system_error if the port is closed.
  Bytes Input();

 private:
  void Receive(const Bytes& bytes);
  void OfferWhenDue();
  void Deliver();
  void DropLateReplies();
  void Close();

  Form& owner_;
  std::string onComm_;  ///< name of the handler
  int rThreshold_ = 0;
  int commEvent_ = 0;
  Bytes received_;
  std::int64_t firstByteAt_ = 0;
  std::optional<std::int64_t> askedAt_;
  std::int64_t requestedAt_ = 0;  ///< when bytes that have a reply were written last
  std::size_t bytesToCome_ = 0;   ///< of the replies to what was written
  std::unique_ptr<SerialLine> line_;
};

}  // namespace bexlow::platform
