#include "download/Retrieval.h"

#include <exception>

#include "link/Communications.h"
#include "shared/Records.h"

namespace bexlow::download {

using link::Bytes;
using shared::Shared;

namespace {

void TakeMode(const Bytes& reply) {
  Shared.OnBoardParameters.BinLinearMode = reply[0];
  Shared.OnBoardParameters.LinearChannels = reply[1];
}

struct Retrieval {
  const char* what;
  link::Block (*block)();
  void (*take)(const Bytes& reply);
};

constexpr Retrieval Retrievals[] = {
    {"MODE", link::ModeBlock, TakeMode},
    {"FIRMWARE", link::FirmwareBlock,
     [](const Bytes& reply) { files::FillFirmware(reply, Shared.DownloadHeader); }},
    {"HEADER(1)", link::IdentityBlock,
     [](const Bytes& reply) { files::FillHeader1(reply, Shared.DownloadHeader); }},
    {"HEADER(2)", link::CalibrationBlock,
     [](const Bytes& reply) { files::FillHeader2(reply, Shared.DownloadHeader); }}};

/// Nothing unless exactly the block's bytes came.
Bytes Retrieve(platform::MSComm& comm, const platform::Form& screen, const link::Block& block) {
  try {
    auto reply = link::ReadBlock(comm, screen, block);
    if (reply.size() == block.reply) return reply;
  } catch (const std::exception&) {
    comm.PortOpen(false);
  }
  return {};
}

}  // namespace

const char* RetrieveParameters(platform::MSComm& comm, const platform::Form& screen,
                               const std::function<void(int)>& done) {
  int count = 0;
  for (const auto& [what, block, take] : Retrievals) {
    const auto reply = Retrieve(comm, screen, block());
    if (reply.empty()) return what;
    take(reply);
    done(++count);
  }
  return nullptr;
}

}  // namespace bexlow::download
