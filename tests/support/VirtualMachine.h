// A machine with simulated time: an hour of silence takes a moment, and each byte is kept with its time.
#pragma once

#include <QTemporaryDir>

#include <deque>
#include <set>

#include "platform/machine/Machine.h"

namespace bexlow::test {

using platform::Answer;
using platform::Bytes;
using std::chrono::microseconds;
using std::chrono::milliseconds;

/// 10 bits a byte at 19200 baud.
inline constexpr microseconds ByteTime{521};

class VirtualLogger;

/// One byte that the program wrote, and when.
struct WireByte {
  microseconds at;
  int comm;
  std::uint8_t byte;
};

class VirtualMachine : public platform::Machine {
 public:
  VirtualMachine() { Install(*this); }

  // What a test sets up.
  void Plug(VirtualLogger& peer, int comm);
  void Unplug(int comm) { peers_.erase(comm); }        ///< the device vanishes, also while it is open
  std::set<int> taken;                                 ///< Comm numbers that another program holds
  platform::LocalTime clock{2004, 2, 3, 14, 5, 9, 0};  ///< the local time at virtual time 0
  void WillAnswer(Answer answer) { answers_.push_back(answer); }
  void WillChooseFile(const std::string& path) { files_.push_back(path); }
  void WillCancelFile() { files_.push_back(std::nullopt); }
  std::function<void()> whileBoxIsOpen;  ///< runs while the next box or file dialog is open, once

  // What a test looks at.
  std::deque<std::string> boxes;  ///< texts of the boxes shown and not yet read
  std::vector<platform::CommonDialog> fileQuestions;
  std::vector<WireByte> wire;
  std::vector<platform::Buttons> buttons;        ///< of all boxes shown
  std::vector<std::filesystem::path> documents;  ///< what was opened in other programs
  bool ended = false;                            ///< the program asked to end
  microseconds Time() const { return now_; }
  bool IsOpen(int comm) const { return lines_.contains(comm); }
  bool AnyPortOpen() const { return !lines_.empty(); }
  /// The written bytes since a mark as "ms byte|ms byte", milliseconds from the first, bytes in hexadecimal.
  std::string Transcript(std::size_t from = 0) const;

  void Pass(microseconds time);  ///< lets time pass and events be delivered
  void Settle();                 ///< delivers what waits, without any time passing
  void At(microseconds due, const std::function<void()>& happening) { happenings_.emplace(due, happening); }
  void Deliver(int comm, const Bytes& bytes);

  std::int64_t QueryPerformanceCounter() override { return now_.count(); }
  std::int64_t QueryPerformanceFrequency() override { return 1'000'000; }
  platform::LocalTime Now() override;
  void Idle(microseconds atMost) override;
  void Repaint() override {}
  platform::PortInfo DescribePort(int comm) override;
  std::unique_ptr<platform::SerialLine> OpenSerial(int comm, std::function<void(Bytes)> received) override;
  std::unique_ptr<platform::Alarm> MakeAlarm(std::function<void()> tick) override;
  Answer Ask(const std::string& text, platform::Buttons offered) override;
  std::optional<std::string> AskFile(const platform::CommonDialog& question) override;
  bool OpenDocument(const std::filesystem::path& file) override {
    documents.push_back(file);
    return true;
  }
  std::filesystem::path ProgramFolder() override { return folder_.path().toStdString(); }
  void EndProgram() override { ended = true; }

 private:
  class Line;
  class VirtualAlarm;
  void RunNext();
  void OpenBox();

  microseconds now_{0};
  std::multimap<microseconds, std::function<void()>> happenings_;
  std::map<int, VirtualLogger*> peers_;
  std::map<int, std::function<void(Bytes)>> lines_;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> files_;
  QTemporaryDir folder_;
};

}  // namespace bexlow::test
