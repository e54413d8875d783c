// The way out to the line: replies one behind the other, and a progress stream that lets them in between,
// each byte with the time at which its stop bit has passed.
#pragma once
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "Reply.h"
#include "Time.h"

namespace bexlow::simulator {

class Outbox {
 public:
  /// @param byteTime  line time of a byte; 0 = unpaced
  explicit Outbox(Time byteTime) : byteTime_(byteTime) {}

  /// Queues a reply whose request was complete at `arrived`. A stream takes the place of an older one. Gives
  /// false, and drops the reply, where so much waits already that nobody can be reading.
  bool Send(Reply reply, Time arrived);

  /// Moves what is due at `now` to Ready and gives the replies whose last byte went there.
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
    Time start;  // what was asked for; a line still busy makes it later
    Time spacing;
    Time Due() const { return start + spacing * static_cast<Time::rep>(sent + 1); }
  };
  static Time DueAt(const std::deque<Chunk>& lane);
  std::deque<Chunk>& NextLane();

  Time byteTime_;
  std::deque<Chunk> replies_;
  std::deque<Chunk> streams_;  // one at most
  Time lastDue_ = Time::min() / 2;
  std::size_t waiting_ = 0;  // bytes of replies_
  std::vector<std::uint8_t> ready_;
};

}  // namespace bexlow::simulator
