#include "platform/controls/MSComm.h"

#include <algorithm>
#include <utility>

#include "platform/controls/Form.h"
#include "platform/machine/EventGate.h"

namespace bexlow::platform {

namespace {

// A reply is at most 264 bytes and an erase some 6,200: a line that sends more than this is not a logger.
constexpr std::size_t BufferSize = std::size_t{64} * 1024;

// The longest that the program itself waits for a reply, a page's, before it asks again.
constexpr std::int64_t ReplyTakesSeconds = 1;

std::string PortName(int commPort) { return "Comm " + std::to_string(commPort); }

}  // namespace

MSComm::MSComm(Form& owner, const std::string& name) : owner_(owner), onComm_(name + "_OnComm") {
  owner.AtUnload([this] { Close(); });
}

MSComm::~MSComm() { Close(); }

void MSComm::PortOpen(bool open) {
  if (!open) return Close();
  if (PortOpen()) Throw(std::errc::operation_not_permitted, PortName(CommPort) + " is open already");
  received_.clear();
  line_ = Machine::Get().OpenSerial(CommPort, [this](const Bytes& bytes) { Receive(bytes); });
  owner_.Engage(1);
  DropLateReplies();
}

// The late reply of an exchange that was left would be taken for the reply to the next one's first request.
void MSComm::DropLateReplies() {
  auto& machine = Machine::Get();
  while (machine.QueryPerformanceCounter() < machine.lateUntil[CommPort])
    machine.Idle(std::chrono::milliseconds(1));
  received_.clear();
}

void MSComm::Close() {
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

void MSComm::RThreshold(int count) {
  rThreshold_ = count;
  OfferWhenDue();
}

void MSComm::Output(std::span<const std::uint8_t> bytes, std::size_t reply) {
  if (!PortOpen()) Throw(std::errc::bad_file_descriptor, PortName(CommPort) + " is not open");
  line_->Write(bytes);
  askedAt_ = Machine::Get().QueryPerformanceCounter();
  if (reply > 0) requestedAt_ = *askedAt_;
  bytesToCome_ += reply;
}

Bytes MSComm::Input() {
  if (!PortOpen()) Throw(std::errc::bad_file_descriptor, PortName(CommPort) + " is not open");
  if (!received_.empty()) askedAt_.reset();
  return std::exchange(received_, {});
}

void MSComm::Receive(const Bytes& bytes) {
  bytesToCome_ -= std::min(bytesToCome_, bytes.size());
  if (received_.empty()) firstByteAt_ = Machine::Get().QueryPerformanceCounter();
  const auto taken = std::min(bytes.size(), BufferSize - received_.size());
  received_.insert(received_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(taken));
  OfferWhenDue();
}

void MSComm::OfferWhenDue() {
  if (!PortOpen() || rThreshold_ <= 0 || InBufferCount() < rThreshold_) return;
  EventGate::Get().Offer(this, {&owner_, onComm_}, [this] { Deliver(); });
}

// The threshold may have been silenced or the bytes taken since the event was offered.
void MSComm::Deliver() {
  if (!PortOpen() || rThreshold_ <= 0 || InBufferCount() < rThreshold_ || !OnComm) return;
  commEvent_ = ReceiveEvent;
  OnComm();
  commEvent_ = 0;
}

}  // namespace bexlow::platform
