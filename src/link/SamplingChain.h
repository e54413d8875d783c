// The chain that all live screens share: one request is outstanding at a time, and its reply sends the next,
// so that the logger and the line set the pace. There is no timer and no stop command.
#pragma once

#include <cstdint>
#include <functional>

#include "link/Protocol.h"
#include "platform/controls/Form.h"
#include "platform/controls/MSComm.h"
#include "platform/controls/Timer.h"

namespace bexlow::link {

class SamplingChain {
 public:
  using Take = std::function<void(const link::Bytes& reply)>;
  using Show = std::function<void()>;

  /// Takes over OnComm of the screen's MSComm1.
  /// @param command  the request that is repeated; the length of its reply is the threshold
  /// @param take     gets each reply of exactly that length; others are dropped and asked for again. A
  ///                 failure in it is reported under "MSComm1_OnComm", and no request follows.
  /// @param show     brings the controls up to date with what was taken last; must not fail. It is called for
  ///                 each frame, not for each sample, and within 50 ms of the last sample.
  SamplingChain(platform::Form& screen, platform::MSComm& comm, link::CommandName command, Take take,
                Show show = {});

  /// What mnuSample does, whose mark tells whether sampling runs. Starts it unless another screen has the
  /// logger: calls `prepare`, opens the port and asks for the first sample. Or stops it: closes the port and
  /// calls `finish`.
  void Toggle(QAction& mnuSample, const std::function<void()>& prepare, const std::function<void()>& finish);

  /// Shows the last sample and takes no more, so that other requests can use the open port.
  void Pause();
  /// Sampling, and how many samples a second over the last whole second.
  platform::Activity Activity();

  /// The next request waits for a second, so that a user who is told of a failure at each sample can stop.
  void Rest() { restWanted_ = true; }

  /// Drops what came in meanwhile, a late sample included, and goes on. Throws std::system_error if the
  /// request cannot be sent.
  void Resume();

 private:
  void Start();
  void Stop();
  void MSComm1_OnComm();
  link::Bytes TakeReply();
  bool CameTooSoon(std::int64_t firstByteAt) const;
  void Request();
  void ShowWhatWasTaken();
  double Rate();

  platform::Form& screen_;
  platform::MSComm& comm_;
  const int threshold_;
  const link::Request request_;
  const Take take_;
  const Show show_;
  platform::Timer showing_;  ///< shows a sample that no other follows
  platform::Timer resting_;
  bool restWanted_ = false;
  bool unshown_ = false;
  std::int64_t samples_ = 0;
  std::int64_t countedSamples_ = 0, countedAt_ = 0;  ///< at the last calculation of the rate
  double rate_ = 0;
  std::int64_t requestedAt_ = 0;  ///< reading of the high-resolution counter
};

}  // namespace bexlow::link
