// The parameter map: forms, and where each cell of a read goes.
#include <bit>

#include "config/ParameterMap.h"
#include "logic/Expect.h"

namespace bexlow::config {
namespace {

TEST(Forms, ValuesBecomeBytesOrAreRefused) {
  using Row = std::tuple<Storage, double, std::optional<std::array<std::uint8_t, 2>>>;
  for (const auto& [form, value, cells] :
       {Row{Storage::U16, 65535, {{0xFF, 0xFF}}}, Row{Storage::U16, 2.5, {{0, 2}}},
        Row{Storage::U16, 3.5, {{0, 4}}}, Row{Storage::U8, 254.5, {{254, 0}}},
        Row{Storage::Angle180, -180, {{0x80, 0x01}}}, Row{Storage::Angle90, 45, {{0x40, 0}}},
        Row{Storage::Angle180, -0.001, {{0, 0}}}, Row{Storage::Angle180, 181, {{0x80, 0xB5}}},
        Row{Storage::U8, 256, {}}, Row{Storage::U8, -1, {}}, Row{Storage::U16, 65536, {}},
        Row{Storage::U16, -1, {}}, Row{Storage::U16, 1e300, {}}, Row{Storage::Angle180, 1e6, {}},
        Row{Storage::None, 0, {}}}) {
    const auto code = FailureOf([&, f = form, v = value, &c = cells] { EXPECT_EQ(Encode(f, v), c); }).code;
    EXPECT_EQ(code, cells ? 0 : ERANGE) << value;
  }
}

TEST(Map, AWholeReadBreaksOut) {
  values::ReadArray cells;
  std::iota(cells.begin(), cells.end(), std::uint8_t{2});  // k, which begins with 2
  cells[12] = 0xF1;
  cells[13] = 0xC7;
  values::OnBoardParameters parameters;
  BreakOut(cells, parameters);
  using Fields = std::array<double, 24>;  // in the order of the record, the angles as counts first
  Fields fields = {515, 1029, 1543, 2057, 2571, 3085, -3641, 4113, 4627,  5141,  5655,  6169,
                   30,  31,   32,   33,   34,   35,   36,    9510, 10024, 10538, 11052, 47};
  const double fullScales[] = {180, 90, 180, 180, 90, 90};
  for (std::size_t i = 0; i < 6; ++i) fields[6 + i] = fields[6 + i] / 32767 * fullScales[i];
  EXPECT_EQ(std::bit_cast<Fields>(parameters), fields);
  EXPECT_EQ(AddressText(Parameters[4]) + " " + AddressText(Parameters[15]), "10/11 31");
}

}  // namespace
}  // namespace bexlow::config
