// A stand-in logger that records what it holds and sends, and the data file that a download of it must give.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "rig/Rig.h"

namespace bexlow::rig {

class RecordedStandIn : public StandIn {
 public:
  /// Records in the folder's "stand-in".
  RecordedStandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                  const QStringList& options);

  std::vector<std::uint8_t> Eeprom() const { return Dump("eeprom.bin", 256); }
  std::vector<std::uint8_t> Pages() const { return Dump("pages.bin", 2048 * std::size_t{264}); }
  std::vector<std::vector<int>> Samples() const;  ///< the words of each live sample sent

  /// The data file of a download of what it holds now: its pages in order, until the first blank one.
  std::string ExpectedDataFile() const;

 private:
  std::vector<std::uint8_t> Dump(const char* name, std::size_t size) const;

  std::filesystem::path records_;
};

}  // namespace bexlow::rig
