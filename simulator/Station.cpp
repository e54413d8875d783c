#include "Station.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <system_error>
#include <utility>

namespace bexlow::simulator {
namespace {

volatile sig_atomic_t stopAsked = 0;
volatile sig_atomic_t cableAsked = 0;  // SIGUSR1 or SIGUSR2, whichever came last

void AskStop(int) { stopAsked = 1; }
void AskCable(int signal) { cableAsked = signal; }

// Signals are blocked except during the wait itself, so that none comes between the test and the wait.
void HoldSignals() {
  sigset_t held;
  sigemptyset(&held);
  const std::pair<int, void (*)(int)> handlers[] = {
      {SIGTERM, AskStop}, {SIGINT, AskStop}, {SIGHUP, AskStop}, {SIGUSR1, AskCable}, {SIGUSR2, AskCable}};
  for (const auto& [number, handler] : handlers) {
    struct sigaction action {};
    action.sa_handler = handler;
    ::sigaction(number, &action, nullptr);
    sigaddset(&held, number);
  }
  ::pthread_sigmask(SIG_BLOCK, &held, nullptr);
  ::signal(SIGPIPE, SIG_IGN);
}

Time Now() { return std::chrono::steady_clock::now().time_since_epoch(); }

timespec Span(Time time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {static_cast<time_t>(seconds.count()), static_cast<long>((time - seconds).count())};
}

}  // namespace

Station::Station(const Options& options)
    : options_(options),
      recorder_(options),
      logger_(options.logger, Now()),
      faults_(options.faults, options.logger.stored.seed),
      outbox_(options.logger.byteTime, options.port) {}

void Station::Run() {
  HoldSignals();
  ::prctl(PR_SET_TIMERSLACK, 1);  // nanoseconds; the usual 50 us would be a tenth of a byte
  recorder_.DumpPages(logger_);
  recorder_.DumpEeprom(logger_);
  PlugIn();
  while (!stopAsked) {
    const Time now = Wait();
    ObeySignals(now);
    if (returnsAt_ && now >= *returnsAt_) PlugIn();
    const auto bytes = Read();
    FollowHolder(now);
    Receive(bytes, now);
    logger_.Advance(now);
    SendDue(Now());
    RecordChanges();
  }
}

void Station::PlugIn() {
  returnsAt_.reset();
  line_ = std::make_unique<Pty>(options_.link);
  logger_.SetLineOpen(line_->IsOpen(), Now());
  std::printf("ready %s\n", line_->Device().c_str());
  std::fflush(stdout);
}

void Station::Vanish(Time away, Time now) {
  recorder_.Note("vanished", now);
  outbox_.Clear();
  logger_.SetLineOpen(false, now);
  line_.reset();
  if (away != Time::max()) returnsAt_ = now + away;
}

void Station::ObeySignals(Time now) {
  const int asked = std::exchange(cableAsked, 0);
  if (asked == 0) return;
  unplugged_ = asked == SIGUSR1;
  while (!Read().empty()) continue;  // bytes sent while the cable was out are lost, even if seen late
  outbox_.Clear();
  logger_.SetLineOpen(Connected() && line_->IsOpen(), now);
  recorder_.Note(unplugged_ ? "unplugged" : "plugged in", now);  // last: a reader of it may send at once
}

std::optional<Time> Station::NextWork() const {
  std::optional<Time> next = returnsAt_;
  for (const auto& other : {outbox_.NextDue(), logger_.NextEvent()}) {
    if (other && (!next || *other < *next)) next = other;
  }
  return next;
}

// Sleeps until the next work is due or the line has something, and returns that time. A program wakes some
// 40 us after its time; on an exchange of five byte times that would be 3 % of the pace. So the alarm is set
// earlier by the usual lag, and the remaining microseconds pass in a busy loop.
Time Station::Wait() {
  const short wanted = outbox_.Ready().empty() ? POLLIN : POLLIN | POLLOUT;
  std::array<pollfd, 2> sources{pollfd{line_ ? line_->Master() : -1, wanted, 0},
                                pollfd{line_ ? line_->Watch() : -1, POLLIN, 0}};
  sigset_t none;
  sigemptyset(&none);
  const auto next = NextWork();
  const Time begin = Now();
  const Time alarm = std::max(next.value_or(begin) - wakeLag_, begin);
  const timespec span = Span(alarm - begin);
  const int ready = ::ppoll(sources.data(), sources.size(), next ? &span : nullptr, &none);
  if (ready < 0 && errno != EINTR)
    throw std::system_error(errno, std::generic_category(), "waiting for the line");
  if (ready != 0) return std::max(begin, Now() - wakeLag_);
  if (alarm > begin) LearnWakeLag(Now() - alarm);
  while (Now() < *next) continue;
  return Now();
}

void Station::LearnWakeLag(Time late) {
  constexpr Time most = std::chrono::microseconds(60);  // longer lags must not set the alarm too early
  wakeLag_ += (std::min(late, most) - wakeLag_) / 16;
}

void Station::FollowHolder(Time now) {
  if (!line_ || line_->Watch() < 0) return;
  if (line_->TakeClosing()) {
    outbox_.Clear();  // a reply still on its way is lost
    line_->Reset();
    logger_.SetLineOpen(false, now);
    recorder_.Note("closed", now);  // last: a reader of it may open the line at once
  }
  if (Connected() && line_->IsOpen()) logger_.SetLineOpen(true, now);
}

// Called before FollowHolder: whoever sent these bytes has opened the device, which FollowHolder then sees,
// however late this program was woken. In the other order a closing that is seen late, with the next opening
// and request right after it, would discard the reply to that request.
std::vector<std::uint8_t> Station::Read() {
  std::vector<std::uint8_t> bytes(256);
  bytes.resize(line_ ? line_->Read(bytes) : 0);
  return bytes;
}

void Station::Receive(std::span<const std::uint8_t> bytes, Time now) {
  if (bytes.empty() || unplugged_) return;
  recorder_.Received(bytes, now);
  for (const auto byte : bytes) Hear(byte, now);
}

// A pseudo-terminal hands a byte over at once; on a real line it arrives one byte time later.
void Station::Hear(std::uint8_t byte, Time now) {
  inputFree_ = std::max(inputFree_, now) + options_.logger.byteTime;
  auto reply = logger_.Take(byte, inputFree_);
  if (!reply || !faults_.Apply(*reply, inputFree_) || !line_ || !line_->IsOpen()) return;
  if (!outbox_.Send(std::move(*reply), inputFree_)) recorder_.Note("reply lost, nobody reads", now);
}

void Station::SendDue(Time now) {
  const auto finished = outbox_.Advance(now);
  if (line_ && !outbox_.Ready().empty()) outbox_.Written(line_->Write(outbox_.Ready()));
  for (const auto& reply : finished) {
    recorder_.Sent(reply, now);
    if (reply.vanish) return Vanish(*reply.vanish, now);
  }
}

void Station::RecordChanges() {
  if (logger_.TakeMemoryChange()) recorder_.DumpPages(logger_);
  if (logger_.TakeEepromChange()) recorder_.DumpEeprom(logger_);
}

}  // namespace bexlow::simulator
