// The machine that the program runs on.
#pragma once

#include <list>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

class SerialDevice;

class RealMachine : public Machine {
 public:
  /// @param programFolder  the folder that holds the executable
  explicit RealMachine(std::filesystem::path programFolder);

  std::int64_t QueryPerformanceCounter() override { return Clock::now().time_since_epoch().count(); }
  std::int64_t QueryPerformanceFrequency() override { return Clock::period::den; }
  LocalTime Now() override;
  void Idle(std::chrono::microseconds atMost) override;
  void Repaint() override;
  PortInfo DescribePort(int comm) override;
  std::unique_ptr<SerialLine> OpenSerial(int comm, std::function<void(Bytes)> received) override;
  std::unique_ptr<Alarm> MakeAlarm(std::function<void()> tick) override;
  Answer Ask(const std::string& text, Buttons buttons) override;
  std::optional<std::string> AskFile(const CommonDialog& question) override;
  bool OpenDocument(const std::filesystem::path& file) override;
  std::filesystem::path ProgramFolder() override { return programFolder_; }
  void EndProgram() override;

 private:
  using Clock = std::chrono::steady_clock;

  std::filesystem::path programFolder_;
  std::list<SerialDevice*> open_;
};

}  // namespace bexlow::platform
