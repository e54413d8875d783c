#include "config/ParameterMap.h"

#include <system_error>

#include "link/Protocol.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::config {

namespace {

constexpr std::size_t FieldCount = sizeof(values::OnBoardParameters) / sizeof(double);
constexpr std::size_t ReadCount = EndOfRead - FirstIndex;
constexpr std::size_t WriteCount = EndOfWrite - FirstIndex;

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

/// The read-only boxes stand on lines from 0, each once.
consteval bool LinesAreDistinct() {
  unsigned lines = 0;
  for (const Parameter& row : Parameters) {
    if (!IsIdentity(row)) continue;
    if (row.line < 0 || (lines >> row.line & 1u) != 0) return false;
    lines |= 1u << row.line;
  }
  return lines == (1u << IdentityCount) - 1;
}
static_assert(LinesAreDistinct());

/// One cell of the read: the row that it belongs to and which of its bytes it is.
struct ReadCell {
  std::size_t row = 0, byte = 0;
};

consteval auto MakeReadCells() {
  std::array<ReadCell, ReadCount> cells{};
  std::size_t next = 0;
  for (std::size_t row = 0; row < ParameterCount; ++row) {
    const auto count = static_cast<std::size_t>(CellsOf(Parameters[row].form));
    for (std::size_t byte = 0; byte < count; ++byte) cells[next++] = {row, byte};
  }
  return cells;
}
constexpr auto ReadCells = MakeReadCells();

constexpr int AddressOf(const ReadCell& cell) {
  return Parameters[cell.row].address + static_cast<int>(cell.byte);
}

consteval auto MakeWriteCells() {
  std::array<WriteCell, WriteCount> cells{};
  std::size_t next = 0;
  for (const ReadCell& cell : ReadCells) {
    const Parameter& row = Parameters[cell.row];
    if (!IsWritten(row)) continue;
    auto& tick = cells[next];
    tick = {FirstIndex + static_cast<int>(next), std::nullopt, cell.row, cell.byte};
    if (row.form != Storage::None) tick.address = AddressOf(cell);
    ++next;
  }
  return cells;
}
constexpr auto WriteTicks = MakeWriteCells();

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

/// The value of a row in a whole read; `first` is where its first cell is.
double ValueAt(const values::ReadArray& cells, std::size_t first) {
  const Storage form = Parameters[ReadCells[first].row].form;
  return Decode(form, std::span(cells).subspan(first, static_cast<std::size_t>(CellsOf(form))));
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

int AddressOfIndex(int k) {
  if (k < FirstIndex || k >= EndOfRead) Throw(std::errc::invalid_argument, "No parameter index of the read");
  return AddressOf(ReadCells[static_cast<std::size_t>(k - FirstIndex)]);
}

std::span<const WriteCell> WriteCells() { return WriteTicks; }

void BreakOut(const values::ReadArray& cells, values::OnBoardParameters& parameters) {
  for (std::size_t i = 0; i < ReadCount; ++i) {
    const auto [row, byte] = ReadCells[i];
    if (byte == 0 && Parameters[row].field != nullptr) parameters.*Parameters[row].field = ValueAt(cells, i);
  }
}

std::array<IdentityText, IdentityCount> IdentityTexts(const values::ReadArray& cells) {
  std::array<IdentityText, IdentityCount> texts;
  for (std::size_t i = 0; i < ReadCount; ++i) {
    const auto [row, byte] = ReadCells[i];
    const Parameter& parameter = Parameters[row];
    if (byte != 0 || !IsIdentity(parameter)) continue;
    texts[static_cast<std::size_t>(parameter.line)] = {&parameter,
                                                       values::PlainNumberText(ValueAt(cells, i))};
  }
  return texts;
}

}  // namespace bexlow::config
