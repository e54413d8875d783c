#include "support/VirtualMachine.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QTimeZone>

#include <gtest/gtest.h>

#include "platform/machine/EventGate.h"
#include "support/VirtualLogger.h"

namespace bexlow::test {

/// The next of the answers that the test prepared.
template <class T>
T Prepared(std::deque<T>& answers, const std::string& question) {
  if (answers.empty()) {
    ADD_FAILURE() << "no answer prepared to: " << question;
    return {};
  }
  T first = answers.front();
  answers.pop_front();
  return first;
}

class VirtualMachine::Line : public platform::SerialLine {
 public:
  Line(VirtualMachine& machine, int comm) : machine_(machine), comm_(comm) {}
  ~Line() override { machine_.lines_.erase(comm_); }
  void Write(std::span<const std::uint8_t> bytes) override {
    if (!machine_.peers_.contains(comm_))
      throw std::system_error(EIO, std::generic_category(), "takes no bytes");
    for (const auto byte : bytes) {
      machine_.wire.push_back({machine_.now_, comm_, byte});
      machine_.peers_[comm_]->Receive(byte);
    }
  }

 private:
  VirtualMachine& machine_;
  int comm_;
};

class VirtualMachine::VirtualAlarm : public platform::Alarm {
 public:
  VirtualAlarm(VirtualMachine& machine, std::function<void()> tick)
      : machine_(machine), tick_(std::move(tick)) {}
  void Start(milliseconds interval) override {
    run_ = std::make_shared<milliseconds>(interval);
    Schedule();
  }
  void Stop() override { run_.reset(); }

 private:
  void Schedule() {
    machine_.At(machine_.now_ + *run_, [this, run = std::weak_ptr(run_)] {
      if (run.expired()) return;
      Schedule();
      tick_();
    });
  }

  VirtualMachine& machine_;
  std::function<void()> tick_;
  std::shared_ptr<milliseconds> run_;  // its interval, while it runs
};

void VirtualMachine::Plug(VirtualLogger& peer, int comm) {
  peer.machine = this;
  peer.comm = comm;
  peers_[comm] = &peer;
}

std::string VirtualMachine::Transcript(std::size_t from) const {
  std::string text;
  for (std::size_t i = from; i < wire.size(); ++i) {
    const long long ms = (wire[i].at - wire[from].at) / milliseconds{1};
    text += QString::asprintf("%s%lld %02X", text.empty() ? "" : "|", ms, wire[i].byte).toStdString();
  }
  return text;
}

void VirtualMachine::Deliver(int comm, const Bytes& bytes) {
  if (!peers_.contains(comm)) return;
  if (const auto line = lines_.find(comm); line != lines_.end()) line->second(bytes);
}

void VirtualMachine::RunNext() {
  const auto first = happenings_.begin();
  now_ = std::max(now_, first->first);
  const auto happening = std::move(first->second);
  happenings_.erase(first);
  happening();
}

void VirtualMachine::Settle() {
  while (platform::EventGate::Get().DeliverOne()) {}
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void VirtualMachine::Pass(microseconds time) {
  const auto end = now_ + time;
  Settle();
  while (!happenings_.empty() && happenings_.begin()->first <= end) {
    RunNext();
    Settle();
  }
  now_ = std::max(now_, end);
}

platform::LocalTime VirtualMachine::Now() {
  const QDateTime start({clock.year, clock.month, clock.day}, {clock.hour, clock.minute, clock.second},
                        QTimeZone::utc());
  const auto now = start.addMSecs(std::chrono::duration_cast<milliseconds>(now_).count());
  const auto [date, time] = std::pair{now.date(), now.time()};
  return {date.year(),   date.month(),          date.day(), time.hour(), time.minute(),
          time.second(), now.toSecsSinceEpoch()};
}

void VirtualMachine::Idle(microseconds atMost) {
  const auto end = now_ + atMost;
  if (!happenings_.empty() && happenings_.begin()->first <= end) return RunNext();
  now_ = end;
}

platform::PortInfo VirtualMachine::DescribePort(int comm) {
  return {"/dev/virtual" + std::to_string(comm),
          peers_.contains(comm) ? "virtual adapter" : "no such device"};
}

std::unique_ptr<platform::SerialLine> VirtualMachine::OpenSerial(int comm,
                                                                 std::function<void(Bytes)> received) {
  if (!peers_.contains(comm)) throw std::system_error(ENOENT, std::generic_category(), "no such device");
  if (taken.contains(comm) || lines_.contains(comm))
    throw std::system_error(EBUSY, std::generic_category(), "in use");
  lines_[comm] = std::move(received);
  return std::make_unique<Line>(*this, comm);
}

std::unique_ptr<platform::Alarm> VirtualMachine::MakeAlarm(std::function<void()> tick) {
  return std::make_unique<VirtualAlarm>(*this, std::move(tick));
}

void VirtualMachine::OpenBox() {
  if (const auto happening = std::exchange(whileBoxIsOpen, {})) happening();
}

Answer VirtualMachine::Ask(const std::string& text, platform::Buttons offered) {
  boxes.push_back(text);
  buttons.push_back(offered);
  OpenBox();
  if (offered == platform::Buttons::Ok) return Answer::Ok;
  const bool error = offered == platform::Buttons::RetryCancel;
  if (error && (answers_.empty() || answers_.front() != Answer::Cancel)) return Answer::Retry;
  return Prepared(answers_, text);
}

std::optional<std::string> VirtualMachine::AskFile(const platform::CommonDialog& question) {
  fileQuestions.push_back(question);
  OpenBox();
  return Prepared(files_, "a file dialog");
}

}  // namespace bexlow::test
