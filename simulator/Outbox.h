// Sends bytes to the host: replies one after the other, also between the bytes of a progress stream, each
// byte at the time when its stop bit has passed; then through the host's port, which may gather bytes before
// it hands them on.
#pragma once
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "Reply.h"
#include "Time.h"

namespace bexlow::simulator {

/// When the host's port hands on what has arrived: as soon as there are `bytes` bytes, or else `quiet` after
/// the last of them, or, if `tick` is set, at the next tick.
struct HostPort {
  std::size_t bytes = 1;
  Time quiet{0};
  Time tick{0};
};
/// A 16550: its buffer's usual mark, and its receive time-out of four characters.
inline constexpr HostPort PlainPort{8, 4 * ByteTime, Time{0}};
/// An adapter without the low-latency flag: USB packets of 64 bytes, two of them status, every 16 ms. At
/// 19200 baud some 30 bytes arrive in between.
inline constexpr HostPort AdapterPort{62, Time{0}, std::chrono::milliseconds(16)};

class Outbox {
 public:
  /// @param byteTime  line time of a byte; 0 = unpaced
  explicit Outbox(Time byteTime, HostPort port = {}) : byteTime_(byteTime), port_(port) {}

  /// Queues a reply whose request was complete at `arrived`. A stream takes the place of an older one. False,
  /// and the reply is dropped, if so much waits already that nobody can be reading.
  bool Send(Reply reply, Time arrived);

  /// Moves what is due at `now` to Ready and gives the replies whose last byte has passed the line.
  std::vector<Reply> Advance(Time now);

  /// Bytes for the device, and how many of them it took.
  std::span<const std::uint8_t> Ready() const { return ready_; }
  void Written(std::size_t count);

  std::optional<Time> NextDue() const;

  /// Forgets everything: a closed line loses what is on its way.
  void Clear();

 private:
  struct Chunk {
    Reply reply;
    std::size_t sent;
    Time start;  // as asked for; a busy line starts later
    Time spacing;
    Time Due() const { return start + spacing * static_cast<Time::rep>(sent + 1); }
  };
  static Time DueAt(const std::deque<Chunk>& lane);
  std::deque<Chunk>& NextLane();
  Time NextByte() const;
  void Arrive(std::uint8_t byte, Time now);
  void HandOn();

  Time byteTime_;
  HostPort port_;
  std::deque<Chunk> replies_;
  std::deque<Chunk> streams_;  // one at most
  Time lastDue_ = Time::min() / 2;
  std::size_t waiting_ = 0;             // bytes of replies_
  std::vector<std::uint8_t> gathered_;  // in the host's port
  Time handOnAt_ = Time::max();
  std::vector<std::uint8_t> ready_;
};

}  // namespace bexlow::simulator
