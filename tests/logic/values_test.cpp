// Words, degrees and their texts; the forms of parameters.

#include <cmath>

#include "config/ParameterMap.h"
#include "live/Strip.h"
#include "logic/Expect.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::live {
using config::Storage;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Huge = std::numeric_limits<double>::max();

TEST(Conversions, RoundAnyNumberToNoSignedZeroAndRefuseWhatDoesNotFit) {
  EXPECT_FALSE(std::signbit(values::RoundToDecimals(-0.5, 0)));
  for (const double value : {1e308, Infinity}) EXPECT_EQ(values::RoundToDecimals(value, 2), value);
  EXPECT_EQ(std::tuple(values::ToInt16(32767.4), values::ToInt16(-32768.5)), std::tuple(32767, -32768));
  EXPECT_EQ(std::tuple(values::ToByte(255.4), values::ToByte(-0.5)), std::tuple(255, 0));
  for (const double value : {32767.5, -32769.0, 1e300, NaN})
    EXPECT_EQ(FailureOf([&] { values::ToInt16(value); }).code, ERANGE) << value;
  for (const double value : {255.5, -0.6, -1e300, NaN})
    EXPECT_EQ(FailureOf([&] { values::ToByte(value); }).code, ERANGE) << value;
  for (const double angle : {NaN, -Infinity, Huge})
    EXPECT_EQ(FailureOf([&] { values::AngleToInteger90(angle); }).code, EDOM) << angle;
}

TEST(NumberText, TwoFormsOfTheSameDigits) {
  using Row = std::tuple<double, const char*, const char*>;
  for (const auto& [value, file, box] :
       {Row{-4.5, "-4.5", "-4.5"}, Row{-0.5, "-.5", "-0.5"}, Row{-0.0, "0", "0"}, Row{100, "100", "100"},
        Row{0.1 + 0.2, ".3", "0.3"}, Row{-20.0 / 3, "-6.66666666666667", "-6.66666666666667"},
        Row{0.05, ".05", "0.05"}, Row{1e15, "1000000000000000", "1000000000000000"},
        Row{123456789012345678.0, "123456789012346000", "123456789012346000"},
        Row{9.9999999999999996, "10", "10"}, Row{1e-7, ".0000001", "0.0000001"}})
    EXPECT_EQ(std::tuple(values::NumberText(value), values::PlainNumberText(value)), std::tuple(file, box));
  EXPECT_EQ(values::NumberText(Huge).size(), 309u);
  for (const double value : {NaN, -Infinity})
    EXPECT_EQ(FailureOf([&] { values::NumberText(value); }).code, EDOM) << value;
}

// The lines that are drawn: pairs of neighbouring points, none of them NaN.
TEST(Strip, KeepsHalfAMinuteAndBreaksWhereNothingCameForTwoSeconds) {
  Strip strip;
  std::string points;
  for (const double seconds : {0.0, 1.5, 3.5, 6.0, 31.5}) strip.Add(seconds, 10 * seconds);
  for (const auto& [seconds, value] : strip.Samples())
    points += values::NumberText(seconds) + " " + (std::isnan(value) ? "-" : values::NumberText(value)) + " ";
  EXPECT_EQ(points, "1.5 15 3.5 35 6 - 6 60 31.5 - 31.5 315 ");
  strip.Clear();
  for (int i = 0; i < 11'000; ++i) strip.Add(40 + i * 0.0027, i);
  ASSERT_EQ(strip.Samples().size(), 11'000U) << "all of the fastest line";
  for (std::size_t i = 0; i < strip.Samples().size(); ++i)
    ASSERT_EQ(strip.Samples()[i], std::pair(40 + static_cast<double>(i) * 0.0027, static_cast<double>(i)));
  for (int i = 0; i < 400'000; ++i) strip.Add(80 + i / 1e4, i);
  EXPECT_LT(strip.Samples().size(), 15'100U);
}

TEST(NumberText, CountsAndTimesForReading) {
  for (const auto& [count, text] : {std::pair{0, "0"}, {999, "999"}, {1000, "1,000"}, {1234567, "1,234,567"}})
    EXPECT_EQ(values::CountText(count), text);
  using Row = std::pair<double, const char*>;
  for (const auto& [seconds, text] :
       {Row{0, "0 s"}, Row{16.2, "17 s"}, Row{59.5, "1 min 0 s"}, Row{312, "5 min 12 s"},
        Row{3599.9, "1 h 0 min"}, Row{36000 + 59 * 60, "10 h 59 min"}})
    EXPECT_EQ(values::DurationText(seconds), text);
  for (const auto& [seconds, words, clock] :
       {std::tuple{0.44, "0.4 s", "0:00:00"}, std::tuple{1238 / 7.5, "2 min 45 s", "0:02:45"},
        std::tuple{59.96, "1 min 0 s", "0:01:00"}, std::tuple{3599.7, "1 h 0 min 0 s", "1:00:00"},
        std::tuple{270203 / 7.5, "10 h 0 min 27 s", "10:00:27"}})
    EXPECT_EQ(values::DurationWords(seconds) + "|" + values::DurationClock(seconds),
              std::string(words) + "|" + clock);
  EXPECT_EQ(values::DurationClock(59.97, 1) + values::DurationClock(-0.2, 1), "0:01:00.0-0:00:00.2");
  EXPECT_EQ(values::DurationClock(0.05, 2), "0:00:00.05");
}

TEST(LeadingNumber, ReadsTheLongestNumberAtTheStart) {
  using Row = std::tuple<std::string_view, double, std::optional<double>>;
  for (const auto& [text, leading, whole] :
       {Row{"-180", -180, -180}, Row{"-.7", -0.7, -0.7}, Row{"+1", 1, 1}, Row{"5.", 5, 5}, Row{" \t7 ", 7, 7},
        Row{"7 8", 7, {}}, Row{"1.2.3", 1.2, {}}, Row{"1e3", 1000, 1000}, Row{"1E-2x", 0.01, {}},
        Row{"2e+", 2, {}}, Row{"0x10", 0, {}}, Row{"-1e400", -Huge, {}},
        Row{"1e99999999999999999999", Huge, {}}, Row{"1e-99999999999999999999", 0, 0.0},
        Row{"0e99999999999999999999", 0, 0.0}, Row{"0.0000001e310", 1e303, 1e303},
        Row{"1000000000e305", Huge, {}}, Row{{"12\0003", 4}, 12, {}}}) {
    EXPECT_DOUBLE_EQ(values::LeadingNumber(text), leading) << text;
    EXPECT_EQ(values::WholeNumber(text), whole) << text;
  }
  for (const std::string_view none : {"", ".", "-", "+-5", "- 5", "x5", "inf", "nan", ".e5", "\r\n3"}) {
    EXPECT_EQ(values::LeadingNumber(none), 0) << none;
    EXPECT_FALSE(values::WholeNumber(none)) << none;
  }
  EXPECT_EQ(values::LeadingNumber(std::string(5000, '9')), Huge);
  EXPECT_EQ(values::LeadingNumber("0." + std::string(5000, '0') + "1"), 0);
}

TEST(FieldToDegrees, RoundsTheLeadingNumber) {
  using Row = std::pair<std::string_view, std::optional<std::int16_t>>;
  for (const auto& [field, degrees] :
       {Row{".5", 0}, Row{".49999", 0}, Row{"-.51", -1}, Row{"1.5", 2}, Row{"1.5x", 2}, Row{"2.5.5", 2},
        Row{"2.5e0", 2}, Row{"22.5000000000000", 22}, Row{"-176.5001", -177}, Row{"32767.4", 32767},
        Row{"-32768.5", -32768}, Row{"32767.5", {}}, Row{"-32769", {}}, Row{"1e9", {}},
        Row{"999999999999999", {}}, Row{"9999999999999999", {}}}) {
    const auto read = values::FieldToDegrees(field);
    EXPECT_EQ(read ? std::optional(read->whole) : std::nullopt, degrees) << field;
  }
}

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
    const auto code =
        FailureOf([&, f = form, v = value, &c = cells] { EXPECT_EQ(config::Encode(f, v), c); }).code;
    EXPECT_EQ(code, cells ? 0 : ERANGE) << value;
  }
}

}  // namespace bexlow::live
