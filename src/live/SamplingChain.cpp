#include "live/SamplingChain.h"

#include <utility>

#include "link/Communications.h"
#include "shell/ErrorHandler.h"

namespace bexlow::live {

SamplingChain::SamplingChain(platform::Form& screen, platform::MSComm& comm, link::CommandName command, Take take)
    : screen_(screen),
      comm_(comm),
      threshold_(static_cast<int>(link::CommandOf(command).reply)),
      request_(link::MakeRequest(command)),
      take_(std::move(take)) {
  comm_.OnComm = [this] { MSComm1_OnComm(); };
}

void SamplingChain::Start() {
  comm_.RThreshold(threshold_);
  link::OpenCommPort(comm_, screen_);
  Request();
}

void SamplingChain::Stop() { link::CloseCommPort(comm_, screen_); }

void SamplingChain::Pause() { comm_.RThreshold(0); }

void SamplingChain::Resume() {
  comm_.Input();
  comm_.RThreshold(threshold_);
  Request();
}

void SamplingChain::Request() { link::Send(comm_, request_); }

void SamplingChain::MSComm1_OnComm() {
  shell::Guarded(screen_, "MSComm1_OnComm", [this] {
    if (comm_.CommEvent() != platform::ReceiveEvent) return;
    const link::Bytes reply = comm_.Input();
    if (static_cast<int>(reply.size()) == threshold_) take_(reply);
    Request();
  });
}

}  // namespace bexlow::live
