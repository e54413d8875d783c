// The serial control: a receive buffer, a threshold that raises OnComm, and a port that is open or closed.
#pragma once

#include <algorithm>
#include <utility>

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

inline constexpr int ReceiveEvent = 2;  ///< CommEvent: data received

class MSComm {
 public:
  /// @param owner  the screen that the control goes with: leaving the screen closes the port
  /// @param name   as it appears in reports of failures
  MSComm(Form& owner, const std::string& name) : owner_(owner), onComm_(name + "_OnComm") {
    owner.AtUnload([this] { Close(); });
  }
  ~MSComm() { Close(); }
  Q_DISABLE_COPY(MSComm)

  int CommPort = 1;                      ///< stays as it is while the port is open
  std::string Settings = "19200,n,8,1";  ///< all that the logger speaks: the line is opened with no other
  int InputLen = 0;                      ///< Input takes everything, whatever stands here
  int InBufferSize = 1024;               ///< the buffer has more room than any exchange needs

  bool PortOpen() const { return line_ != nullptr; }
  /// Opening throws std::system_error if the port does not exist, is taken, may not be used, or is open
  /// already. If a reply was still to come when the port was closed last, it waits until none can come and
  /// drops what comes. Closing drops what was received and never fails.
  void PortOpen(bool open) {
    if (!open) return Close();
    if (PortOpen()) Throw(std::errc::operation_not_permitted, PortName(CommPort) + " is open already");
    received_.clear();
    line_ = Machine::Get().OpenSerial(CommPort, [this](const Bytes& bytes) { Receive(bytes); });
    owner_.Engage(1);
    DropLateReplies();
  }

  int InBufferCount() const { return static_cast<int>(received_.size()); }

  int RThreshold() const { return rThreshold_; }
  /// Waiting bytes that raise OnComm; 0 silences it.
  void RThreshold(int count) {
    rThreshold_ = count;
    OfferWhenDue();
  }
  /// When the first of the waiting bytes came, on the high-resolution counter.
  std::int64_t FirstByteAt() const { return firstByteAt_; }
  /// When bytes were written last, on the high-resolution counter; nothing once bytes have been taken since.
  std::optional<std::int64_t> AskedAt() const { return askedAt_; }
  int CommEvent() const { return commEvent_; }
  std::function<void()> OnComm;

  /// Writes the bytes. Throws std::system_error if the port is closed or the line is gone.
  /// @param reply  how many bytes the logger answers to them
  void Output(std::span<const std::uint8_t> bytes, std::size_t reply = 0) {
    if (!PortOpen()) Throw(std::errc::bad_file_descriptor, PortName(CommPort) + " is not open");
    line_->Write(bytes);
    askedAt_ = Machine::Get().QueryPerformanceCounter();
    if (reply > 0) requestedAt_ = *askedAt_;
    bytesToCome_ += reply;
  }
  /// Takes all waiting bytes. Throws std::system_error if the port is closed.
  Bytes Input() {
    if (!PortOpen()) Throw(std::errc::bad_file_descriptor, PortName(CommPort) + " is not open");
    if (!received_.empty()) askedAt_.reset();
    return std::exchange(received_, {});
  }

 private:
  // A reply is at most 264 bytes and an erase some 6,200: a line that sends more than this is not a logger.
  static constexpr std::size_t BufferSize = std::size_t{64} * 1024;
  // The longest that the program itself waits for a reply, a page's, before it asks again.
  static constexpr std::int64_t ReplyTakesSeconds = 1;

  static std::string PortName(int commPort) { return "Comm " + std::to_string(commPort); }

  void Receive(const Bytes& bytes) {
    bytesToCome_ -= std::min(bytesToCome_, bytes.size());
    if (received_.empty()) firstByteAt_ = Machine::Get().QueryPerformanceCounter();
    const auto taken = std::min(bytes.size(), BufferSize - received_.size());
    received_.insert(received_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
    OfferWhenDue();
  }
  void OfferWhenDue() {
    if (!PortOpen() || rThreshold_ <= 0 || InBufferCount() < rThreshold_) return;
    EventGate::Get().Offer(this, {&owner_, onComm_}, [this] { Deliver(); });
  }
  // The threshold may have been silenced or the bytes taken since the event was offered.
  void Deliver() {
    if (!PortOpen() || rThreshold_ <= 0 || InBufferCount() < rThreshold_ || !OnComm) return;
    commEvent_ = ReceiveEvent;
    OnComm();
    commEvent_ = 0;
  }
  // The late reply of an exchange that was left would be taken for the reply to the next one's first request.
  void DropLateReplies() {
    auto& machine = Machine::Get();
    while (machine.QueryPerformanceCounter() < machine.lateUntil[CommPort]) {
      EventGate::Get().NoteWait();
      machine.Idle(std::chrono::milliseconds(1));
    }
    received_.clear();
  }
  void Close() {
    const bool wasOpen = PortOpen();
    if (std::exchange(bytesToCome_, 0) > 0) {
      auto& machine = Machine::Get();
      machine.lateUntil[CommPort] = requestedAt_ + ReplyTakesSeconds * machine.QueryPerformanceFrequency();
    }
    line_.reset();
    askedAt_.reset();
    received_.clear();
    EventGate::Get().Withdraw(this);
    if (wasOpen) owner_.Engage(-1);
  }

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
