// A machine with simulated time: an hour of silence takes a moment, and each byte is kept with its time.
#pragma once

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimeZone>

#include <gtest/gtest.h>
#include <set>

#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"

namespace bexlow::test {

namespace fs = std::filesystem;
using namespace platform;
using namespace std::literals;
using std::chrono::microseconds, std::chrono::milliseconds;

/// 10 bits a byte at 19200 baud.
inline constexpr microseconds ByteTime{521};

struct Peer {
  virtual ~Peer() = default;
  virtual void Receive(std::uint8_t byte) = 0;  ///< a byte, as it is written
  class VirtualMachine* machine = nullptr;      ///< and the port: those it is plugged into
  int comm = 0;
};

struct WireByte {
  microseconds at;
  int comm;
  std::uint8_t byte;
};

class VirtualMachine : public Machine {
 public:
  VirtualMachine() { Install(*this); }

  // What a test sets up.
  void Plug(Peer& peer, int comm) {
    peer.machine = this;
    peer.comm = comm;
    peers_[comm] = &peer;
  }
  void Unplug(int comm) { peers_.erase(comm); }  ///< the device vanishes, also while it is open
  std::string devices = "/dev/virtual";          ///< their paths, without the Comm number
  std::set<int> taken;                           ///< Comm numbers that another program holds
  LocalTime clock{2004, 2, 3, 14, 5, 9, 0};      ///< the local time at virtual time 0
  void WillAnswer(Answer answer) { answers_.push_back(answer); }
  void WillChooseFile(const std::string& path) { files_.push_back(path); }
  void WillCancelFile() { files_.push_back(std::nullopt); }
  std::function<void()> whileBoxIsOpen;  ///< runs while the next box or file dialog is open, once

  // What a test looks at.
  std::deque<std::string> boxes;  ///< texts of the boxes shown and not yet read
  std::vector<CommonDialog> fileQuestions;
  std::vector<WireByte> wire;
  std::vector<Buttons> buttons;     ///< of all boxes shown
  std::vector<fs::path> documents;  ///< what was opened in other programs
  bool ended = false;               ///< the program asked to end
  microseconds Time() const { return now_; }
  bool IsOpen(int comm) const { return lines_.contains(comm); }
  bool AnyPortOpen() const { return !lines_.empty(); }
  /// The written bytes since a mark as "ms byte|ms byte", milliseconds from the first, bytes in hexadecimal.
  std::string Transcript(std::size_t from = 0) const {
    std::string text;
    for (std::size_t i = from; i < wire.size(); ++i) {
      const long long ms = (wire[i].at - wire[from].at) / 1ms;
      text += QString::asprintf("%s%lld %02X", text.empty() ? "" : "|", ms, wire[i].byte).toStdString();
    }
    return text;
  }

  /// Lets time pass and events be delivered.
  void Pass(microseconds time) {
    const auto end = now_ + time;
    Settle();
    while (!happenings_.empty() && happenings_.begin()->first <= end) {
      RunNext();
      Settle();
    }
    now_ = std::max(now_, end);
  }
  /// Delivers what waits, without any time passing.
  void Settle() {
    while (EventGate::Get().DeliverOne()) {}
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  void At(microseconds due, const std::function<void()>& happening) { happenings_.emplace(due, happening); }
  void Deliver(int comm, const Bytes& bytes) {
    if (peers_.contains(comm) && lines_.contains(comm)) lines_[comm](bytes);
  }

  std::int64_t QueryPerformanceCounter() override { return now_.count(); }
  std::int64_t QueryPerformanceFrequency() override { return 1'000'000; }
  LocalTime Now() override {
    const QDateTime start({clock.year, clock.month, clock.day}, {clock.hour, clock.minute, clock.second},
                          QTimeZone::utc());
    const auto now = start.addMSecs(std::chrono::duration_cast<milliseconds>(now_).count());
    const auto [date, at] = std::pair{now.date(), now.time()};
    return {date.year(), date.month(),          date.day(), at.hour(), at.minute(),
            at.second(), now.toSecsSinceEpoch()};
  }
  void Idle(microseconds atMost) override {
    const auto end = now_ + atMost;
    if (!happenings_.empty() && happenings_.begin()->first <= end) return RunNext();
    now_ = end;
  }
  void Repaint() override {}
  PortInfo DescribePort(int comm) override {
    const auto* told = peers_.contains(comm) ? "virtual adapter" : "no such device";
    return {devices + std::to_string(comm), told};
  }
  std::unique_ptr<SerialLine> OpenSerial(int comm, std::function<void(Bytes)> received) override {
    if (!peers_.contains(comm)) throw std::system_error(ENOENT, std::generic_category(), "no such device");
    const bool isFree = !taken.contains(comm) && !lines_.contains(comm);
    if (!isFree) throw std::system_error(EBUSY, std::generic_category(), "in use");
    lines_[comm] = std::move(received);
    return std::make_unique<Line>(*this, comm);
  }
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> tick) override {
    return std::make_unique<VirtualAlarm>(*this, std::move(tick));
  }
  Answer Ask(const std::string& text, Buttons offered) override {
    boxes.push_back(text);
    buttons.push_back(offered);
    OpenBox();
    if (offered == Buttons::Ok) return Answer::Ok;
    const bool error = offered == Buttons::RetryCancel;
    if (error && (answers_.empty() || answers_.front() != Answer::Cancel)) return Answer::Retry;
    return Prepared(answers_, text);
  }
  std::optional<std::string> AskFile(const CommonDialog& question) override {
    fileQuestions.push_back(question);
    OpenBox();
    return Prepared(files_, "a file dialog");
  }
  bool OpenDocument(const fs::path& file) override {
    documents.push_back(file);
    return true;
  }
  fs::path ProgramFolder() override { return folder_.path().toStdString(); }
  void EndProgram() override { ended = true; }

 private:
  struct Line : SerialLine {
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
    VirtualMachine& machine_;
    int comm_;
  };
  struct VirtualAlarm : Alarm {
    VirtualAlarm(VirtualMachine& machine, std::function<void()> tick)
        : machine_(machine), tick_(std::move(tick)) {}
    void Start(milliseconds interval) override {
      run_ = std::make_shared<milliseconds>(interval);
      Schedule();
    }
    void Stop() override { run_.reset(); }
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
  /// The next of the answers that the test prepared.
  template <class T>
  static T Prepared(std::deque<T>& answers, const std::string& question) {
    if (answers.empty()) {
      ADD_FAILURE() << "no answer prepared to: " << question;
      return {};
    }
    T first = answers.front();
    answers.pop_front();
    return first;
  }
  void RunNext() {
    const auto first = happenings_.begin();
    now_ = std::max(now_, first->first);
    happenings_.extract(first).mapped()();
  }
  void OpenBox() {
    if (const auto happening = std::exchange(whileBoxIsOpen, {})) happening();
  }

  microseconds now_{0};
  std::multimap<microseconds, std::function<void()>> happenings_;
  std::map<int, Peer*> peers_;
  std::map<int, std::function<void(Bytes)>> lines_;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> files_;
  QTemporaryDir folder_;
};

}  // namespace bexlow::test
