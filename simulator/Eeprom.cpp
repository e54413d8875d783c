#include "Eeprom.h"

namespace bexlow::simulator {
namespace {

struct FactoryCell {
  std::size_t address;
  int size;  // cells: 1 or 2
  int value;
};

// Angles are counts of 32767 for 180 degrees of X and 90 degrees of Y.
constexpr FactoryCell FactoryCells[] = {
    {2, 2, 331},      // offsets of the accelerometers, bits
    {4, 2, 402},      //
    {6, 2, 318},      //
    {8, 2, 319},      // gains of the accelerometers, bits
    {10, 2, 327},     //
    {12, 2, 321},     //
    {14, 2, 455},     // X tare, 2.5 degrees
    {16, 2, -655},    // Y tare, -1.8 degrees
    {18, 2, -8192},   // X alarms at -45 and 60 degrees
    {20, 2, 10922},   //
    {22, 2, -10922},  // Y alarms at -30 and 30 degrees
    {24, 2, 10922},   //
    {26, 2, 0},       // limits of the bins
    {28, 2, 65535},   //
    {30, 1, 3},       // update time increment
    {31, 1, 4},       // averages
    {32, 1, 1},       // shaker on
    {33, 1, 2},       // filter level
    {34, 1, 1},       // tare on
    {62, 2, 512},     // DAC 1 to 4
    {64, 2, 498},     //
    {66, 2, 530},     //
    {68, 2, 512},     //
    {100, 2, 417},    // serial number
    {102, 1, 75},     // 7.5 Hz
    {103, 1, 9},      // launched on the 9th of March 2026 at 08:15:30
    {104, 2, 2026},   //
    {106, 1, 8},      //
    {107, 1, 15},     //
    {108, 1, 30},     //
    {109, 1, 3},      //
};

}  // namespace

Eeprom FactoryEeprom(bool linear, int channels) {
  Eeprom cells;
  cells.fill(0xFF);
  for (const auto& [address, size, value] : FactoryCells) {
    const auto word = static_cast<std::uint16_t>(value);
    if (size == 2) cells[address] = static_cast<std::uint8_t>(word >> 8);
    cells[address + static_cast<std::size_t>(size) - 1] = static_cast<std::uint8_t>(word & 0xFF);
  }
  cells[ModeCell] = linear ? 1 : 0;
  cells[ChannelsCell] = static_cast<std::uint8_t>(channels);
  return cells;
}

std::uint16_t WordAt(const Eeprom& cells, std::size_t address) {
  return static_cast<std::uint16_t>(cells.at(address) * 256 + cells.at(address + 1));
}

}  // namespace bexlow::simulator
