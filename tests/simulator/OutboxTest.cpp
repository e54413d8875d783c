#include <gtest/gtest.h>

#include "Bytes.h"
#include "Outbox.h"

namespace bexlow::simulator {
namespace {

using namespace std::chrono_literals;

Reply Bytes(std::size_t count, std::uint8_t value = 1) {
  Reply reply;
  reply.bytes.assign(count, value);
  return reply;
}

// Every byte with the moment at which it may leave, in byte times from the start.
std::string Moments(Outbox& outbox, Time start) {
  std::string text;
  for (auto due = outbox.NextDue(); due; due = outbox.NextDue()) {
    outbox.Advance(*due - 1ns);
    EXPECT_TRUE(outbox.Ready().empty()) << "early";
    outbox.Advance(*due);
    if (!text.empty()) text += '|';
    text += std::to_string((*due - start) / ByteTime);
    text.append(" ").append(ToHex(outbox.Ready()));
    outbox.Written(outbox.Ready().size());
  }
  return text;
}

TEST(Outbox, PutsAByteTimeBetweenBytesFromTheRequestOn) {
  Outbox outbox(ByteTime);
  outbox.Send(Bytes(2, 1), 0ns);
  outbox.Send(Bytes(2, 2), 0ns);            // asked for at once: behind the first
  outbox.Send(Bytes(1, 3), 10 * ByteTime);  // asked for later
  EXPECT_EQ(Moments(outbox, 0ns), "1 01|2 01|3 02|4 02|11 03");
  outbox.Send(Bytes(264), 5s);
  outbox.Advance(5s + 137'490us);
  EXPECT_EQ(outbox.Ready().size(), 263U) << "a page takes 137.5 ms";
  EXPECT_EQ(outbox.Advance(5s + 137'510us).size(), 1U) << "and is told when it is through";
}

TEST(Outbox, HoldsBackTheRepliesBehindALateOne) {
  Outbox outbox(ByteTime);
  Reply late = Bytes(1, 1);
  late.delay = 20 * ByteTime;
  outbox.Send(std::move(late), 0ns);
  outbox.Send(Bytes(1, 2), 3 * ByteTime);
  EXPECT_EQ(Moments(outbox, 0ns), "21 01|22 02");
}

TEST(Outbox, LetsRepliesIntoAStreamWithoutCrowdingTheLine) {
  Outbox outbox(ByteTime);
  Reply stream = Bytes(4, 0xEE);
  stream.stream = true;
  stream.spacing = 3 * ByteTime;
  outbox.Send(stream, 0ns);
  outbox.Send(Bytes(2, 1), 4 * ByteTime);
  EXPECT_EQ(Moments(outbox, 0ns), "3 EE|5 01|6 01|7 EE|9 EE|12 EE");
  stream.spacing = Time{0};  // wanted faster than the line is
  outbox.Send(stream, 100 * ByteTime);
  outbox.Send(stream, 102 * ByteTime);  // a new erase: the old stream ends
  EXPECT_EQ(Moments(outbox, 100 * ByteTime), "3 EE|4 EE|5 EE|6 EE");
}

TEST(Outbox, SendsAtOnceWithoutPaceAndNothingAfterAClosing) {
  Outbox outbox(Time{0});
  outbox.Send(Bytes(264), 5s);
  EXPECT_EQ(outbox.Advance(5s).size(), 1U);
  EXPECT_EQ(outbox.Ready().size(), 264U);
  outbox.Send(Bytes(6), 6s);
  outbox.Clear();
  EXPECT_TRUE(outbox.Ready().empty());
  EXPECT_EQ(outbox.NextDue(), std::nullopt);
}

TEST(Outbox, DoesNotGrowWithoutBoundWhereNobodyReads) {
  Outbox outbox(ByteTime);
  int taken = 0;
  while (taken < 100'000 && outbox.Send(Bytes(264), 0ns)) ++taken;
  EXPECT_EQ(taken, (1 << 20) / 264);
}

}  // namespace
}  // namespace bexlow::simulator
