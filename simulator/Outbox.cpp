#include "Outbox.h"

#include <algorithm>
#include <utility>

namespace bexlow::simulator {
namespace {

constexpr std::size_t MostWaiting = 1 << 20;  // bytes

}  // namespace

bool Outbox::Send(Reply reply, Time arrived) {
  if (waiting_ + ready_.size() + reply.bytes.size() > MostWaiting) return false;
  auto& lane = reply.stream ? streams_ : replies_;
  if (reply.stream) lane.clear();
  const Time spacing = std::max(reply.spacing, byteTime_);
  const Time start = arrived + reply.delay;
  if (!reply.stream) waiting_ += reply.bytes.size();
  lane.push_back({std::move(reply), 0, start, spacing});
  return true;
}

Time Outbox::DueAt(const std::deque<Chunk>& lane) {
  return lane.empty() ? Time::max() : lane.front().Due();
}

std::deque<Outbox::Chunk>& Outbox::NextLane() {
  return DueAt(replies_) <= DueAt(streams_) ? replies_ : streams_;
}

std::optional<Time> Outbox::NextDue() const {
  const Time due = std::min(DueAt(replies_), DueAt(streams_));
  if (due == Time::max()) return std::nullopt;
  return std::max(due, lastDue_ + byteTime_);
}

std::vector<Reply> Outbox::Advance(Time now) {
  std::vector<Reply> finished;
  for (auto due = NextDue(); due && *due <= now; due = NextDue()) {
    auto& lane = NextLane();
    Chunk& chunk = lane.front();
    if (chunk.sent < chunk.reply.bytes.size()) {
      lastDue_ = *due;
      ready_.push_back(chunk.reply.bytes[chunk.sent++]);
      if (&lane == &replies_) --waiting_;
    }
    if (chunk.sent < chunk.reply.bytes.size()) continue;
    finished.push_back(std::move(chunk.reply));
    lane.pop_front();
  }
  return finished;
}

void Outbox::Written(std::size_t count) {
  ready_.erase(ready_.begin(), ready_.begin() + static_cast<std::ptrdiff_t>(count));
}

void Outbox::Clear() {
  replies_.clear();
  streams_.clear();
  ready_.clear();
  waiting_ = 0;
}

}  // namespace bexlow::simulator
