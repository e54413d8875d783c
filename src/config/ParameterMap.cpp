#include "config/ParameterMap.h"

#include <algorithm>

#include "link/Protocol.h"
#include "values/Conversions.h"

namespace bexlow::config {

namespace {

constexpr std::size_t FieldCount = sizeof(values::OnBoardParameters) / sizeof(double);

consteval bool LimitsAreConsistent(const Parameter& row) {
  if (row.control != Control::NumEdit) return row.control != Control::Text || row.field == nullptr;
  if (row.form == Storage::None) return row.field == nullptr && !row.shown;
  return row.field != nullptr && row.min < row.max && row.initial >= row.min && row.initial <= row.max;
}

/// Ascending, no cell twice, no field twice and none left out.
consteval bool RowsAreConsistent() {
  int free = 0;
  std::size_t fields = 0;
  for (const Parameter& row : Parameters) {
    if (row.address < free || row.address + CellsOf(row.form) > 256 || !LimitsAreConsistent(row))
      return false;
    free = row.address + CellsOf(row.form);
    if (row.field == nullptr) continue;
    ++fields;
    for (const Parameter& other : Parameters) {
      if (&other != &row && other.field == row.field) return false;
    }
  }
  return fields == FieldCount;
}
static_assert(RowsAreConsistent());

/// Each read-only box stands on one line.
consteval bool IdentityIsWhole() {
  return std::ranges::all_of(Parameters, [](const Parameter& row) {
    return std::ranges::count(IdentityAddresses, row.address) == (row.control == Control::Text ? 1 : 0);
  });
}
static_assert(IdentityIsWhole());

}  // namespace

std::array<std::uint8_t, 2> Encode(Storage form, double value) {
  if (form == Storage::U8) return {values::ToByte(value), 0};
  if (form == Storage::Angle180) value = values::AngleToInteger180(value);
  if (form == Storage::Angle90) value = values::AngleToInteger90(value);
  double word = values::RoundHalfEven(value);
  if (form != Storage::U16 && word == 65536) word = 0;  // an angle that rounds to -0 counts, which is 0
  if (form == Storage::None || !(word >= 0 && word <= 65535))
    values::Throw(std::errc::result_out_of_range, "Value does not fit two cells");
  const int whole = static_cast<int>(word);
  return {static_cast<std::uint8_t>(link::HighByte(whole)), static_cast<std::uint8_t>(link::LowByte(whole))};
}

double ValueOf(const Parameter& row, const values::ReadArray& cells) {
  if (row.form == Storage::None) return 0;
  const auto first = std::ranges::find(ReadCells, &row, &Cell::row) - ReadCells.begin();
  const auto index = static_cast<std::size_t>(first);
  if (row.form == Storage::U8) return cells.at(index);
  const double word = values::Word(cells, index);
  if (row.form == Storage::U16) return word;
  return values::UnsignedToSigned16(word) / 32767 * (row.form == Storage::Angle180 ? 180 : 90);
}

}  // namespace bexlow::config
