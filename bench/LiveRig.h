// A live screen in real time on the stand-in logger, and what is counted while it samples.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "rig/Rig.h"

class QPushButton;

namespace bexlow::bench {

/// Counts the bytes that go out, and the boxes.
class CountingMachine : public rig::AnsweredMachine {
 public:
  explicit CountingMachine(const std::filesystem::path& folder);
  std::unique_ptr<platform::SerialLine> OpenSerial(int comm,
                                                   std::function<void(platform::Bytes)> received) override;

  std::int64_t requests = 0;  ///< a live chain's requests are one byte each
  int boxes = 0;
};

struct LiveScreen {
  const char* name;
  char request;
  int bytesASample;  ///< on the line: the request and its reply
};
inline constexpr LiveScreen LiveScreens[] = {{"Angles", 'A', 1 + 4}, {"Accelerometers", 'a', 1 + 6}};

/// What the line allows: 10 bits a byte at 19200 baud.
inline double LineLimit(const LiveScreen& screen) { return 1920.0 / screen.bytesASample; }

struct Figures {
  double samplesASecond = 0;
  double repaintsASecond = 0;
  double clickMsMedian = 0, clickMsMost = 0;
  double cpuShare = 0;      ///< of one core
  double longestGapMs = 0;  ///< without an event being served
  std::int64_t samples = 0;
};

class LiveRig : public QObject {
 public:
  /// @param logger  path of the stand-in logger's program
  /// @param folder  for the port, the settings and the file
  LiveRig(const char* logger, const std::filesystem::path& folder, const LiveScreen& screen, bool paced,
          bool saving);

  /// Starts and stops sampling.
  void Toggle();
  /// Counts for so long while it samples.
  Figures Watch(double seconds);

 private:
  void Open(const LiveScreen& screen, bool saving);
  void Trigger(const char* entry);
  void Click();
  bool eventFilter(QObject* watched, QEvent* event) override;

  rig::StandIn standIn_;
  CountingMachine machine_;
  rig::Program program_;
  platform::Form* form_ = nullptr;
  QPushButton* probe_ = nullptr;
  QElapsedTimer clicked_, served_;
  std::vector<double> clickMs_;
  std::int64_t repaints_ = 0;
  double longestGapMs_ = 0;
};

/// Resident memory of this program.
double ResidentMiB();

}  // namespace bexlow::bench
