// The logger's EEPROM as the program knows it: one table from which reads, writes and screen rows are
// derived.
#pragma once

#include <cstddef>
#include <string_view>

#include "values/LoggerValues.h"

namespace bexlow::config {

/// How a value lies in its cells. Two cells hold the high byte at the lower address.
enum class Storage {
  U8,        ///< one cell, a byte
  U16,       ///< two cells, an unsigned word
  Angle180,  ///< two cells, signed, 32767 counts are 180 degrees
  Angle90,   ///< two cells, signed, 32767 counts are 90 degrees
  None       ///< two cells that are read and never converted
};

/// What the Configuration screen has in a row.
enum class Control {
  NumEdit,  ///< a value that the user sets
  Option,   ///< the two option buttons of the update rate
  Text      ///< a read-only box
};

struct Parameter {
  int address;  ///< the lowest cell
  Storage form;
  Control control;
  std::string_view name;  ///< name of the control
  std::string_view caption;
  double min = 0, max = 0, initial = 0;  ///< limits and default of the screen
  double values::OnBoardParameters::*field = nullptr;
  std::string_view unit = {};
  bool shown = true;  ///< on the screen
};

using P = values::OnBoardParameters;
inline constexpr Parameter Parameters[] = {
    {2, Storage::U16, Control::NumEdit, "NumEdit2", "X Offset", 0, 1024, 323, &P::XOffset, "bits"},
    {4, Storage::U16, Control::NumEdit, "NumEdit4", "Y Offset", 0, 1024, 408, &P::YOffset, "bits"},
    {6, Storage::U16, Control::NumEdit, "NumEdit6", "Z Offset", 0, 1024, 322, &P::ZOffset, "bits"},
    {8, Storage::U16, Control::NumEdit, "NumEdit8", "X Gain", 0, 1024, 323, &P::XGain, "bits"},
    {10, Storage::U16, Control::NumEdit, "NumEdit10", "Y Gain", 0, 1024, 324, &P::YGain, "bits"},
    {12, Storage::U16, Control::NumEdit, "NumEdit12", "Z Gain", 0, 1024, 322, &P::ZGain, "bits"},
    {14, Storage::Angle180, Control::NumEdit, "NumEdit14", "X Tare", -180, 180, 0, &P::XTare, "degrees"},
    {16, Storage::Angle90, Control::NumEdit, "NumEdit16", "Y Tare", -90, 90, 0, &P::YTare, "degrees"},
    {18, Storage::Angle180, Control::NumEdit, "NumEdit18", "X Low Alarm", -180, 180, -180, &P::XLowAlarm,
     "degrees"},
    {20, Storage::Angle180, Control::NumEdit, "NumEdit20", "X High Alarm", -180, 180, 180, &P::XHighAlarm,
     "degrees"},
    {22, Storage::Angle90, Control::NumEdit, "NumEdit22", "Y Low Alarm", -90, 90, -90, &P::YLowAlarm,
     "degrees"},
    {24, Storage::Angle90, Control::NumEdit, "NumEdit24", "Y High Alarm", -90, 90, 90, &P::YHighAlarm,
     "degrees"},
    // The two bin angles are read with the others, shown nowhere and never written.
    {26, Storage::None, Control::NumEdit, "NumEdit26", "Min Bin Angle", -90, 90, 0, nullptr, {}, false},
    {28, Storage::None, Control::NumEdit, "NumEdit28", "Max Bin Angle", -90, 90, 65535, nullptr, {}, false},
    {30, Storage::U8, Control::NumEdit, "NumEdit30", "Update Time Increment", 1, 255, 3,
     &P::UpdateTimeIncrement},
    {31, Storage::U8, Control::NumEdit, "NumEdit31", "Averages", 0, 16, 1, &P::Averages},
    {32, Storage::U8, Control::NumEdit, "NumEdit32", "Shaker Enable", 0, 1, 0, &P::ShakerEnable,
     "(0 off, 1 on)"},
    {33, Storage::U8, Control::NumEdit, "NumEdit33", "Filter Level", 0, 5, 1, &P::FilterLevel},
    {34, Storage::U8, Control::NumEdit, "NumEdit34", "Tare Enable", 0, 1, 1, &P::TareEnable, "(0 off, 1 on)"},
    {42, Storage::U8, Control::NumEdit, "NumEdit42", "Bin(0)/Linear(1) Mode", 0, 1, 1, &P::BinLinearMode},
    {43, Storage::U8, Control::NumEdit, "NumEdit43", "Linear Channels", 1, 3, 3, &P::LinearChannels,
     "(1 X, 2 Y, 3 both)"},
    {62, Storage::U16, Control::NumEdit, "NumEdit62", "DAC1", 0, 1024, 512, &P::DAC1},
    {64, Storage::U16, Control::NumEdit, "NumEdit64", "DAC2", 0, 1024, 512, &P::DAC2},
    {66, Storage::U16, Control::NumEdit, "NumEdit66", "DAC3", 0, 1024, 512, &P::DAC3},
    {68, Storage::U16, Control::NumEdit, "NumEdit68", "DAC4", 0, 1024, 512, &P::DAC4},
    {100, Storage::U16, Control::Text, "txtSerialNumber", "Serial Number"},
    {102, Storage::U8, Control::Option, "opt15Hz", "15 Hz Linear Update Rate", 0, 0, 15,
     &P::LinearUpdateRate},
    {103, Storage::U8, Control::Text, "txtDay", "Launch Day"},
    {104, Storage::U16, Control::Text, "txtYear", "Launch Year"},
    {106, Storage::U8, Control::Text, "txtHour", "Launch Hour"},
    {107, Storage::U8, Control::Text, "txtMinute", "Launch Minute"},
    {108, Storage::U8, Control::Text, "txtSecond", "Launch Second"},
    {109, Storage::U8, Control::Text, "txtMonth", "Launch Month"},
};

/// The update rate's byte: 75 is 7.5 Hz, 15 (not 150) is 15 Hz, as is any other byte.
inline constexpr double UpdateRate75 = 75;
inline constexpr double UpdateRate15 = 15;

constexpr int CellsOf(Storage form) { return form == Storage::U8 ? 1 : 2; }
/// Decimal places that tell one count from the next: 32767 counts for 90 degrees are 0.0027 degrees each.
constexpr int DecimalsOf(Storage form) {
  return form == Storage::Angle180 || form == Storage::Angle90 ? 3 : 0;
}

/// The cells of a value: high byte, low byte; for Storage::U8 only the first is used.
/// @throws std::system_error result_out_of_range for a value that the cells cannot hold, and for
/// Storage::None
std::array<std::uint8_t, 2> Encode(Storage form, double value);

// Sequences. ParameterIndex k counts their cells from 2, in ascending order.
struct Cell {
  const Parameter* row = nullptr;
  int byte = 0;  ///< of the row's cells: 0 the first, 1 the second
  constexpr int Address() const { return row->address + byte; }
};

constexpr bool IsRead(const Parameter&) { return true; }
constexpr bool IsWritten(const Parameter& row) { return row.control != Control::Text; }

template <bool (*Counts)(const Parameter&)>
consteval auto MakeCells() {
  constexpr auto count = [] {
    int cells = 0;
    for (const Parameter& row : Parameters) cells += Counts(row) ? CellsOf(row.form) : 0;
    return static_cast<std::size_t>(cells);
  }();
  std::array<Cell, count> cells{};
  std::size_t next = 0;
  for (const Parameter& row : Parameters) {
    for (int byte = 0; Counts(row) && byte < CellsOf(row.form); ++byte) cells[next++] = {&row, byte};
  }
  return cells;
}
inline constexpr auto ReadCells = MakeCells<IsRead>();
/// At a cell of Storage::None nothing is sent.
inline constexpr auto WriteCells = MakeCells<IsWritten>();

inline constexpr int FirstIndex = 2;
inline constexpr int EndOfRead = FirstIndex + static_cast<int>(ReadCells.size());    ///< one past the last k
inline constexpr int EndOfWrite = FirstIndex + static_cast<int>(WriteCells.size());  ///< one past the last k
/// Where k stands in the cells of a sequence, and its byte in a ReadArray.
constexpr std::size_t IndexOf(int k) { return static_cast<std::size_t>(k - FirstIndex); }
static_assert(std::tuple_size_v<values::ReadArray> == ReadCells.size());

/// The rows with a read-only box, from the top, by their addresses.
inline constexpr int IdentityAddresses[] = {100, 109, 103, 104, 106, 107, 108};

/// The converted value of a row in a whole read; 0 for Storage::None.
double ValueOf(const Parameter& row, const values::ReadArray& cells);

}  // namespace bexlow::config
