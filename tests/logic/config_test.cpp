// The parameter map: forms, and the sequences that are derived from it, against literal tables.
#include <bit>
#include <map>
#include <numeric>
#include <vector>

#include "config/CalibrationMath.h"
#include "config/ParameterMap.h"
#include "logic/Expect.h"

namespace bexlow::config {
namespace {

using Cells = std::array<std::uint8_t, 2>;

TEST(Forms, ValuesBecomeBytes) {
  struct Row {
    Form form;
    double value;
    Cells cells;
  };
  for (const auto& [form, value, cells] : std::vector<Row>{{Form::U16, 323, {0x01, 0x43}},
                                                           {Form::U16, 1024, {0x04, 0x00}},
                                                           {Form::U16, 65535, {0xFF, 0xFF}},
                                                           {Form::U16, 2.5, {0, 2}},
                                                           {Form::U16, 3.5, {0, 4}},
                                                           {Form::U8, 75, {75, 0}},
                                                           {Form::U8, 254.5, {254, 0}},
                                                           {Form::Angle180, 180, {0x7F, 0xFF}},
                                                           {Form::Angle180, -180, {0x80, 0x01}},
                                                           {Form::Angle90, 90, {0x7F, 0xFF}},
                                                           {Form::Angle90, -90, {0x80, 0x01}},
                                                           {Form::Angle180, -20.00122, {0xF1, 0xC7}},
                                                           {Form::Angle90, 45, {0x40, 0}},
                                                           {Form::Angle180, -0.001, {0, 0}},
                                                           {Form::Angle180, 0, {0, 0}},
                                                           {Form::Angle180, 181, {0x80, 0xB5}}}) {
    SCOPED_TRACE(value);
    EXPECT_EQ(Encode(form, value), cells);
  }
}

TEST(Forms, RefuseWhatTheCellsCannotHold) {
  struct Row {
    Form form;
    double value;
  };
  for (const auto& [form, value] : std::vector<Row>{{Form::U8, 256},
                                                    {Form::U8, -1},
                                                    {Form::U16, 65536},
                                                    {Form::U16, -1},
                                                    {Form::U16, 1e300},
                                                    {Form::Angle180, 1e6},
                                                    {Form::Angle90, -1e6},
                                                    {Form::None, 0}}) {
    SCOPED_TRACE(value);
    FailureOf(std::errc::result_out_of_range, [&] { Encode(form, value); });
  }
  FailureOf(std::errc::invalid_argument, [] { Decode(Form::U8, {}); });
  FailureOf(std::errc::invalid_argument, [] { Decode(Form::U16, std::array<std::uint8_t, 1>{}); });
}

TEST(Forms, EveryAngleWordReadAndWrittenBackIsTheSame) {
  for (const Form form : {Form::Angle180, Form::Angle90}) {
    for (int word = 0; word < 65536; ++word) {
      const Cells cells = {static_cast<std::uint8_t>(word >> 8), static_cast<std::uint8_t>(word)};
      ASSERT_EQ(Encode(form, Decode(form, cells)), cells) << word;
    }
  }
  EXPECT_NEAR(Decode(Form::Angle180, Cells{0xFF, 0xFF}), -0.0055, 0.00005);
  EXPECT_NEAR(Decode(Form::Angle180, Cells{0xF1, 0xC7}), -20.00122, 0.000005);
  EXPECT_EQ(Decode(Form::Angle180, Cells{0x80, 0x01}), -180);
  EXPECT_EQ(Decode(Form::Angle90, Cells{0x7F, 0xFF}), 90);
}

/// Addresses by parameter index, 2 to 54.
std::vector<int> ReadAddresses() {
  std::vector<int> addresses(33);
  std::iota(addresses.begin(), addresses.end(), 2);
  addresses.insert(addresses.end(), {42, 43, 62, 63, 64, 65, 66, 67, 68, 69});
  addresses.insert(addresses.end(), {100, 101, 102, 103, 104, 105, 106, 107, 108, 109});
  return addresses;
}

TEST(Sequences, TheReadAsksFor53Cells) {
  const auto addresses = ReadAddresses();
  ASSERT_EQ(addresses.size(), 53u);
  for (int k = 2; k <= 54; ++k) EXPECT_EQ(AddressOfIndex(k), addresses[static_cast<std::size_t>(k - 2)]) << k;
  ReadArray cells;
  for (const int k : {-1, 0, 1, 55}) {
    FailureOf(std::errc::invalid_argument, [&] { AddressOfIndex(k); });
    FailureOf(std::errc::invalid_argument, [&] { cells[k] = 0; });
  }
}

TEST(Sequences, TheWriteSends40CellsIn44Ticks) {
  const auto ticks = WriteCells();
  ASSERT_EQ(ticks.size(), 44u);
  const auto addresses = ReadAddresses();
  int sent = 0;
  for (std::size_t i = 0; i < ticks.size(); ++i) {
    const int k = static_cast<int>(i) + 2;
    SCOPED_TRACE(k);
    EXPECT_EQ(ticks[i].k, k);
    const bool empty = k >= 26 && k <= 29;
    EXPECT_EQ(ticks[i].address, empty ? std::nullopt : std::optional(k == 45 ? 102 : addresses[i]));
    sent += ticks[i].address ? 1 : 0;
  }
  EXPECT_EQ(sent, 40);
  struct Row {
    int k;
    const char* control;
    std::size_t byte;
  };
  for (const auto& [k, control, byte] : std::vector<Row>{{2, "NumEdit2", 0},
                                                         {17, "NumEdit16", 1},
                                                         {34, "NumEdit34", 0},
                                                         {35, "NumEdit42", 0},
                                                         {38, "NumEdit62", 1},
                                                         {44, "NumEdit68", 1},
                                                         {45, "opt15Hz", 0}}) {
    const WriteCell& tick = ticks[static_cast<std::size_t>(k - 2)];
    EXPECT_EQ(Parameters[tick.row].name, control);
    EXPECT_EQ(tick.byte, byte) << k;
  }
}

TEST(Map, LimitsAndDefaultsOfTheScreen) {
  struct Row {
    const char *name, *address;
    double min, max, standard;
  };
  std::map<std::string_view, const Parameter*> rows;
  for (const Parameter& row : Parameters) rows[row.name] = &row;
  ASSERT_EQ(rows.size(), ParameterCount);
  for (const auto& [name, address, min, max, standard] :
       std::vector<Row>{{"NumEdit2", "2/3", 0, 1024, 323},
                        {"NumEdit4", "4/5", 0, 1024, 408},
                        {"NumEdit10", "10/11", 0, 1024, 324},
                        {"NumEdit14", "14/15", -180, 180, 0},
                        {"NumEdit18", "18/19", -180, 180, -180},
                        {"NumEdit24", "24/25", -90, 90, 90},
                        {"NumEdit28", "28/29", -90, 90, 65535},
                        {"NumEdit30", "30", 1, 255, 3},
                        {"NumEdit31", "31", 0, 16, 1},
                        {"NumEdit33", "33", 0, 5, 1},
                        {"NumEdit43", "43", 1, 3, 3},
                        {"NumEdit68", "68/69", 0, 1024, 512}}) {
    SCOPED_TRACE(name);
    ASSERT_TRUE(rows.contains(name));
    EXPECT_EQ(AddressText(*rows[name]), address);
    EXPECT_EQ(rows[name]->min, min);
    EXPECT_EQ(rows[name]->max, max);
    EXPECT_EQ(rows[name]->standard, standard);
  }
  for (const char* hidden : {"NumEdit26", "NumEdit28"}) EXPECT_FALSE(rows[hidden]->shown);
}

TEST(Map, AWholeReadBreaksOut) {
  ReadArray cells;
  for (int k = 2; k <= 54; ++k) cells[k] = static_cast<std::uint8_t>(k);
  cells[14] = 0xF1;
  cells[15] = 0xC7;
  OnBoardParameters parameters;
  BreakOut(cells, parameters);
  using Fields = std::array<double, 24>;  // in the order of the record, the angles as counts first
  Fields fields = {515, 1029, 1543, 2057, 2571, 3085, -3641, 4113, 4627,  5141,  5655,  6169,
                   30,  31,   32,   33,   34,   35,   36,    9510, 10024, 10538, 11052, 47};
  const double fullScales[] = {180, 90, 180, 180, 90, 90};
  for (std::size_t i = 0; i < 6; ++i) fields[6 + i] = fields[6 + i] / 32767 * fullScales[i];
  EXPECT_EQ(std::bit_cast<Fields>(parameters), fields);
  const std::vector<std::vector<std::string>> expected = {{"txtSerialNumber", "100/101", "11566"},
                                                          {"txtMonth", "109", "54"},
                                                          {"txtDay", "103", "48"},
                                                          {"txtYear", "104/105", "12594"},
                                                          {"txtHour", "106", "51"},
                                                          {"txtMinute", "107", "52"},
                                                          {"txtSecond", "108", "53"}};
  std::vector<std::vector<std::string>> texts;
  for (const auto& [row, text] : IdentityTexts(cells)) {
    texts.push_back({std::string(row->name), AddressText(*row), text});
  }
  EXPECT_EQ(texts, expected);
}

TEST(Calibration, ExtremesBecomeTwelveBytes) {
  EXPECT_EQ(Offset(330, 330), 330);
  EXPECT_EQ(Gain(330, 330), 0);
  EXPECT_EQ(Offset(200, 841), 520.5);
  EXPECT_EQ(Gain(200, 841), 320.5);
  const CalibrationValues values = {520.5, 1, 257, 320.5, 1023, 0};
  const std::vector<int> expected = {2, 8, 0, 1, 1, 1, 1, 0x40, 3, 0xFF, 0, 0};
  for (int cell = 2; cell < 14; ++cell) {
    EXPECT_EQ(CalibrationByte(cell, values), expected[static_cast<std::size_t>(cell - 2)]) << cell;
  }
  for (const int cell : {1, 14})
    FailureOf(std::errc::invalid_argument, [&] { CalibrationByte(cell, values); });
  FailureOf(std::errc::result_out_of_range, [] { CalibrationByte(2, {-512}); });
}

}  // namespace
}  // namespace bexlow::config
