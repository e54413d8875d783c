// A stand-in logger that records what it holds and sends, and the expected contents of files downloaded from
// it, computed from its memory by formulas of the tour's own.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "rig/Rig.h"

namespace bexlow::tour {

class RecordedStandIn : public rig::StandIn {
 public:
  /// Records in the folder's "stand-in".
  RecordedStandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                  const QStringList& options);

  std::array<std::uint8_t, 256> Eeprom() const;
  std::vector<std::uint8_t> Pages() const;        ///< 2048 pages of 264 bytes
  std::vector<std::vector<int>> Samples() const;  ///< the words of each live sample sent
  bool MemoryIsBlank() const;

  /// The data file of a download of what it holds now.
  std::string ExpectedDataFile() const;

 private:
  std::string Record(int page) const;

  std::filesystem::path records_;
};

/// Degrees of a sampled word as files and datagrams hold them, one decimal at most: .7 and -.7.
std::string AngleOfWord(int word, double fullScale);

}  // namespace bexlow::tour
