// The stand-in logger on a bare line: how fast any program on this machine can use it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <span>

#include "rig/Rig.h"

namespace bexlow::bench {

class BareLine {
 public:
  BareLine(const char* logger, const std::filesystem::path& folder, bool paced = true);
  ~BareLine();
  BareLine(const BareLine&) = delete;
  BareLine& operator=(const BareLine&) = delete;

  /// Writes a request with a pause ahead of each byte but the first, and reads its reply. Throws
  /// std::runtime_error if that does not come.
  void Exchange(std::initializer_list<std::uint8_t> request, std::size_t reply, double pauseMs = 0) const;

 private:
  rig::StandIn standIn_;
  int line_;
};

/// Exchanges a second, each of them one byte and its reply.
double BareExchanges(const BareLine& line, char request, std::size_t reply, double seconds);
/// Median time of a page in ms.
double BarePageMs(const BareLine& line, int pages);

}  // namespace bexlow::bench
