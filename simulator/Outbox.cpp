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

Time Outbox::DueAt(const std::deque<Chunk>& lane) { return lane.empty() ? Time::max() : lane.front().Due(); }

std::deque<Outbox::Chunk>& Outbox::NextLane() {
  return DueAt(replies_) <= DueAt(streams_) ? replies_ : streams_;
}

Time Outbox::NextByte() const {
  const Time due = std::min(DueAt(replies_), DueAt(streams_));
  return due == Time::max() ? due : std::max(due, lastDue_ + byteTime_);
}

std::optional<Time> Outbox::NextDue() const {
  const Time due = std::min(NextByte(), handOnAt_);
  if (due == Time::max()) return std::nullopt;
  return due;
}

void Outbox::Arrive(std::uint8_t byte, Time now) {
  if (port_.tick == Time{0}) {
    handOnAt_ = now + port_.quiet;
  } else if (gathered_.empty()) {
    handOnAt_ = (now / port_.tick + 1) * port_.tick;
  }
  gathered_.push_back(byte);
  if (gathered_.size() >= port_.bytes) HandOn();
}

void Outbox::HandOn() {
  ready_.insert(ready_.end(), gathered_.begin(), gathered_.end());
  gathered_.clear();
  handOnAt_ = Time::max();
}

std::vector<Reply> Outbox::Advance(Time now) {
  std::vector<Reply> finished;
  for (auto due = NextDue(); due && *due <= now; due = NextDue()) {
    if (*due == handOnAt_) {
      HandOn();
      continue;
    }
    auto& lane = NextLane();
    Chunk& chunk = lane.front();
    if (chunk.sent < chunk.reply.bytes.size()) {
      lastDue_ = *due;
      Arrive(chunk.reply.bytes[chunk.sent++], *due);
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
  gathered_.clear();
  handOnAt_ = Time::max();
  ready_.clear();
  waiting_ = 0;
}

}  // namespace bexlow::simulator
