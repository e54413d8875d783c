#include "config/ParameterMap.h"

#include <system_error>

#include "link/Protocol.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

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
  const auto isLine = [](const Parameter& row) {
    return std::ranges::count(IdentityAddresses, row.address) == (row.control == Control::Text ? 1 : 0);
  };
  return std::ranges::all_of(Parameters, isLine);
}
static_assert(IdentityIsWhole());

[[noreturn]] void Throw(std::errc code, const char* words) {
  throw std::system_error(std::make_error_code(code), words);
}

double FullScale(Storage form) { return form == Storage::Angle180 ? 180 : 90; }

double CountOf(Storage form, double degrees) {
  return form == Storage::Angle180 ? values::AngleToInteger180(degrees) : values::AngleToInteger90(degrees);
}

std::array<std::uint8_t, 2> Split(double word) {
  if (!(word >= 0 && word <= 65535)) Throw(std::errc::result_out_of_range, "Value does not fit two cells");
  const int whole = static_cast<int>(word);
  return {static_cast<std::uint8_t>(link::HighByte(whole)), static_cast<std::uint8_t>(link::LowByte(whole))};
}

}  // namespace

std::string AddressText(const Parameter& parameter) {
  const std::string first = std::to_string(parameter.address);
  return CellsOf(parameter.form) == 1 ? first : first + "/" + std::to_string(parameter.address + 1);
}

double Decode(Storage form, std::span<const std::uint8_t> bytes) {
  if (form == Storage::None) return 0;
  if (bytes.empty()) Throw(std::errc::invalid_argument, "No cell to convert");
  if (form == Storage::U8) return bytes[0];
  const double word = values::Word(bytes, 0);
  if (form == Storage::U16) return word;
  return values::UnsignedToSigned16(word) / 32767 * FullScale(form);
}

std::array<std::uint8_t, 2> Encode(Storage form, double value) {
  switch (form) {
    case Storage::U8:
      return {values::ToByte(value), 0};
    case Storage::U16:
      return Split(values::RoundHalfEven(value));
    case Storage::Angle180:
    case Storage::Angle90: {
      const double count = values::RoundHalfEven(CountOf(form, value));
      return Split(count == 65536 ? 0 : count);  // an angle that rounds to -0 counts, which is 0
    }
    case Storage::None:
      break;
  }
  Throw(std::errc::result_out_of_range, "These cells are never written");
}

double ValueIn(const values::ReadArray& cells, const Parameter& row) {
  const auto first = std::ranges::find(ReadCells, &row - Parameters, &Cell::row) - ReadCells.begin();
  return Decode(row.form, std::span(cells).subspan(static_cast<std::size_t>(first)));
}

void BreakOut(const values::ReadArray& cells, values::OnBoardParameters& parameters) {
  for (const Parameter& row : Parameters)
    if (row.field != nullptr) parameters.*row.field = ValueIn(cells, row);
}

}  // namespace bexlow::config
