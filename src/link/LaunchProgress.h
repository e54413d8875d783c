// The progress of the erase that a launch begins with, and the launch time as EEPROM cells.
#pragma once

#include <array>
#include <cstddef>

#include "files/PageDecoder.h"

namespace bexlow::link {

using files::LastPage;

/// What the progress stream of a launch says. The logger sends about three bytes a page.
struct LaunchProgress {
  double ErasedByteCount = 0;
  double ErasedPageCount = 0;  ///< 0 to 2047

  /// Adds the bytes of one tick. Fewer than 4 bytes mean the end of the erase: false, and nothing is added.
  bool Count(std::size_t count);
};

struct EepromCell {
  int address = 0;
  int value = 0;
  bool operator==(const EepromCell&) const = default;
};

/// The seven launch time cells in the order in which they are written, the month last.
/// @param year  in full, four digits
std::array<EepromCell, 7> LaunchCells(int day, int month, int year, int hour, int minute, int second);

}  // namespace bexlow::link
