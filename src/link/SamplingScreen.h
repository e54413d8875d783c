// What all live screens share: one request is outstanding at a time, and its reply sends the next, so that
// the logger and the line set the pace. There is no timer and no stop command.
#pragma once

#include "link/Protocol.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

namespace bexlow::link {

/// How many samples come, and since when none does.
class Pace {
 public:
  void Begin();
  void Count();
  /// Samples a second over the last second, rounded; 0 where none was watched to its end.
  std::int64_t PerSecond();
  /// Whole seconds since the last sample, or since the beginning.
  std::int64_t SilentSeconds() const;

 private:
  std::int64_t samples_ = 0, counted_ = 0, perSecond_ = 0;
  std::int64_t lastAt_ = 0, countedAt_ = 0;  ///< readings of the high-resolution counter
};

/// From here on a screen says that no sample comes.
inline constexpr std::int64_t SilentAfterSeconds = 2;

class SamplingScreen : public platform::Form {
 protected:
  /// @param command  the request that is repeated; the length of its reply is the threshold
  SamplingScreen(const char* name, const QString& caption, CommandName command);

  /// Gets each reply of exactly the right length; others are dropped and asked for again. A failure in it is
  /// reported under "MSComm1_OnComm", and no request follows.
  virtual void Take(const Bytes& reply) = 0;
  /// Shows what was taken last; must not fail. It is called for each frame, not for each sample, and within
  /// 40 ms of a sample or of ShowSoon.
  virtual void Show() {}
  void ShowSoon();
  /// Shows it now, unless a frame was shown less than 30 ms ago.
  void ShowIfDue();
  /// Sampling is about to start; the port is not open yet.
  virtual void Starting() {}
  /// Sampling has stopped: clears what showed samples.
  virtual void Stopped() {}
  /// What the status line says of the chain.
  virtual platform::Activity Activity();

  /// Shows the last sample and takes no more, so that other requests can use the open port.
  void PauseSampling();
  /// Drops what came in meanwhile, a late sample included, and goes on. Throws std::system_error if the
  /// request cannot be sent.
  void ResumeSampling();
  /// The next request waits for a second, so that a user who is told of a failure at each sample can stop.
  void DelayNextRequest() { delayed_ = true; }
  /// The chain stands still until the user stops and starts it.
  bool HasStopped() const;

  platform::MSComm MSComm1;
  QMenu* mnuData;
  QAction* mnuSample;

 private:
  void mnuSample_Click();
  void MSComm1_OnComm();
  Bytes TakeReply();
  bool CameTooSoon(std::int64_t firstByteAt) const;
  void SendRequest();
  void ShowWhatWasTaken();

  const int threshold_;
  const Request request_;
  std::unique_ptr<platform::Alarm> showing_;  ///< shows a sample that no other follows
  platform::Timer delaying_;
  bool delayed_ = false;
  bool showDue_ = false;      ///< a sample was taken since the last frame
  std::int64_t shownAt_ = 0;  ///< reading of the high-resolution counter
  Pace pace_;
  std::int64_t requestedAt_ = 0,
               resumedAt_ = -(std::int64_t{1} << 62);  ///< readings of the high-resolution counter
};

/// "1 sample", "1,846 samples".
std::string SamplesText(std::int64_t count);

}  // namespace bexlow::link
