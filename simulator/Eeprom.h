// The settings cells of the logger as it left the factory, and words in neighbouring cells.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>

namespace bexlow::simulator {

using Eeprom = std::array<std::uint8_t, 256>;

/// Cells that change what the stand-in does; words have their high byte in the lower cell.
enum Cell : std::size_t {
  XTareCell = 14,
  YTareCell = 16,
  TareEnableCell = 34,
  ModeCell = 42,
  ChannelsCell = 43,
  UpdateRateCell = 102,
};

/// Cells with the values of one particular logger: calibrated, tared, launched before; unused cells hold
/// 0xFF.
Eeprom FactoryEeprom(bool linear, int channels);

std::uint16_t WordAt(const Eeprom& cells, std::size_t address);

}  // namespace bexlow::simulator
