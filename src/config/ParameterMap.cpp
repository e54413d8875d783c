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
  if (row.form == Form::None) return row.field == nullptr && !row.shown;
  return row.field != nullptr && row.min < row.max && row.standard >= row.min && row.standard <= row.max;
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

/// The read-only boxes stand at places from 0, each once.
consteval bool PlacesAreDistinct() {
  unsigned places = 0;
  for (const Parameter& row : Parameters) {
    if (!IsIdentity(row)) continue;
    if (row.place < 0 || (places >> row.place & 1u) != 0) return false;
    places |= 1u << row.place;
  }
  return places == (1u << IdentityCount) - 1;
}
static_assert(PlacesAreDistinct());

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
    if (row.form != Form::None) tick.address = AddressOf(cell);
    ++next;
  }
  return cells;
}
constexpr auto WriteTicks = MakeWriteCells();

[[noreturn]] void Throw(std::errc code, const char* words) {
  throw std::system_error(std::make_error_code(code), words);
}

double FullScale(Form form) {
  return form == Form::Angle180 ? 180 : 90;
}

double CountOf(Form form, double degrees) {
  return form == Form::Angle180 ? values::AngleToInteger180(degrees) : values::AngleToInteger90(degrees);
}

std::array<std::uint8_t, 2> Split(double word) {
  if (!(word >= 0 && word <= 65535)) Throw(std::errc::result_out_of_range, "Value does not fit two cells");
  const int whole = static_cast<int>(word);
  return {static_cast<std::uint8_t>(link::HighByte(whole)), static_cast<std::uint8_t>(link::LowByte(whole))};
}

/// The value of a row in a whole read; `place` is where its first cell is.
double ValueAt(const values::ReadArray& cells, std::size_t place) {
  const Form form = Parameters[ReadCells[place].row].form;
  return Decode(form, std::span(cells).subspan(place, static_cast<std::size_t>(CellsOf(form))));
}

}  // namespace

std::string AddressText(const Parameter& parameter) {
  const std::string first = std::to_string(parameter.address);
  return CellsOf(parameter.form) == 1 ? first : first + "/" + std::to_string(parameter.address + 1);
}

double Decode(Form form, std::span<const std::uint8_t> bytes) {
  if (form == Form::None) return 0;
  if (bytes.empty()) Throw(std::errc::invalid_argument, "No cell to convert");
  if (form == Form::U8) return bytes[0];
  const double word = values::Word(bytes, 0);
  if (form == Form::U16) return word;
  return values::UnsignedToSigned16(word) / 32767 * FullScale(form);
}

std::array<std::uint8_t, 2> Encode(Form form, double value) {
  switch (form) {
    case Form::U8:
      return {values::ToByte(value), 0};
    case Form::U16:
      return Split(values::RoundHalfEven(value));
    case Form::Angle180:
    case Form::Angle90: {
      const double count = values::RoundHalfEven(CountOf(form, value));
      return Split(count == 65536 ? 0 : count);  // an angle that rounds to -0 counts, which is 0
    }
    case Form::None:
      break;
  }
  Throw(std::errc::result_out_of_range, "These cells are never written");
}

int AddressOfIndex(int k) {
  if (k < FirstIndex || k >= EndOfRead) Throw(std::errc::invalid_argument, "No parameter index of the read");
  return AddressOf(ReadCells[static_cast<std::size_t>(k - FirstIndex)]);
}

std::span<const WriteCell> WriteCells() {
  return WriteTicks;
}

void BreakOut(const values::ReadArray& cells, values::OnBoardParameters& parameters) {
  for (std::size_t place = 0; place < ReadCount; ++place) {
    const auto [row, byte] = ReadCells[place];
    if (byte == 0 && Parameters[row].field != nullptr)
      parameters.*Parameters[row].field = ValueAt(cells, place);
  }
}

std::array<IdentityText, IdentityCount> IdentityTexts(const values::ReadArray& cells) {
  std::array<IdentityText, IdentityCount> texts;
  for (std::size_t place = 0; place < ReadCount; ++place) {
    const auto [row, byte] = ReadCells[place];
    const Parameter& parameter = Parameters[row];
    if (byte != 0 || !IsIdentity(parameter)) continue;
    texts[static_cast<std::size_t>(parameter.place)] = {&parameter,
                                                        values::PlainNumberText(ValueAt(cells, place))};
  }
  return texts;
}

}  // namespace bexlow::config
