// Words, degrees and their texts.
#include <cmath>
#include <limits>
#include <vector>

#include "live/Conversions.h"
#include "live/Datagram.h"
#include "live/NumberText.h"
#include "logic/Expect.h"

namespace bexlow::live {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Huge = std::numeric_limits<double>::max();

TEST(Conversions, LiveWordsReadAsDegrees) {
  struct Row {
    double word, fullScale, degrees;
  };
  for (const auto& [word, fullScale, degrees] : std::vector<Row>{{32767, 180, 180},
                                                                 {32768, 180, -180},
                                                                 {65535, 180, 0},
                                                                 {65534, 180, 0},
                                                                 {1, 180, 0},
                                                                 {1000, 180, 5.5},
                                                                 {40000, 180, -140.3},
                                                                 {16384, 90, 45},
                                                                 {49152, 90, -45},
                                                                 {32768, 90, -90},
                                                                 {0, 90, 0}}) {
    SCOPED_TRACE(word);
    EXPECT_DOUBLE_EQ(SampleWordToAngle(word, fullScale), degrees);
    EXPECT_FALSE(std::signbit(SampleWordToAngle(word, fullScale)) && degrees == 0) << "-0 would show a sign";
  }
}

TEST(Conversions, TheTwoDecodersDifferByOne) {
  struct Row {
    double word, stored, live;
  };
  for (const auto& [word, stored, live] :
       std::vector<Row>{{32767, 32767, 32767}, {32768, -32768, -32767}, {65535, -1, 0}, {0, 0, 0}}) {
    SCOPED_TRACE(word);
    EXPECT_EQ(UnsignedToSigned16(word), stored);
    EXPECT_EQ(SignedSampleWord(word), live);
  }
}

TEST(Conversions, AnglesBecomeWords) {
  struct Row {
    double angle, divisor, word;
  };
  for (const auto& [angle, divisor, word] : std::vector<Row>{{90, 90, 32767},
                                                             {-90, 90, 32769},
                                                             {45, 90, 16383.5},
                                                             {-180, 180, 32769},
                                                             {-0.1, 180, 65517.796},
                                                             {181, 180, 32949.04},
                                                             {0, 180, 0},
                                                             {-200, 180, 29128.222},
                                                             {1000, 180, 116502.889}}) {
    SCOPED_TRACE(angle);
    EXPECT_NEAR(AngleToInteger(angle, divisor), word, 0.005);
  }
  for (const double angle : {NaN, Infinity, -Infinity, Huge}) {
    FailureOf(std::errc::argument_out_of_domain, [&] { AngleToInteger(angle, 90); });
  }
}

TEST(Conversions, HalvesGoToTheEvenNeighbour) {
  struct Row {
    double value;
    int decimals;
    double rounded;
  };
  for (const auto& [value, decimals, rounded] : std::vector<Row>{{2.5, 0, 2},
                                                                 {3.5, 0, 4},
                                                                 {-2.5, 0, -2},
                                                                 {-0.5, 0, 0},
                                                                 {11.25, 1, 11.2},
                                                                 {33.75, 1, 33.8},
                                                                 {-11.25, 1, -11.2},
                                                                 {0.125, 2, 0.12},
                                                                 {0.375, 2, 0.38},
                                                                 {1e300, 2, 1e300},
                                                                 {Infinity, 1, Infinity}}) {
    SCOPED_TRACE(value);
    EXPECT_DOUBLE_EQ(RoundToDecimals(value, decimals), rounded);
    EXPECT_FALSE(std::signbit(RoundToDecimals(-0.01, decimals)) && decimals < 2);
  }
}

TEST(Conversions, NarrowNumbersRefuseWhatDoesNotFit) {
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ToInt16(-32768.5), -32768);
  EXPECT_EQ(ToByte(255.4), 255);
  EXPECT_EQ(ToByte(0.5), 0);
  EXPECT_EQ(ToByte(-0.5), 0);
  for (const double value : {32767.5, -32769.0, 1e300, -Infinity, NaN}) {
    SCOPED_TRACE(value);
    FailureOf(std::errc::result_out_of_range, [&] { ToInt16(value); });
  }
  for (const double value : {255.5, -0.6, 256.0, -1e300, Infinity, NaN}) {
    SCOPED_TRACE(value);
    FailureOf(std::errc::result_out_of_range, [&] { ToByte(value); });
  }
}

TEST(Conversions, ElapsedSecondsCountFromTheStart) {
  EXPECT_EQ(ElapsedSeconds({0, 500, 0}), 0) << "frequency not read yet";
  EXPECT_DOUBLE_EQ(ElapsedSeconds({1000, 7125, 7000}), 0.12);
  EXPECT_DOUBLE_EQ(ElapsedSeconds({1'000'000'000, 9'000'000'001'234'000'000, 9'000'000'000'000'000'000}),
                   1.23);
  const auto most = std::numeric_limits<std::int64_t>::max();
  EXPECT_TRUE(std::isfinite(ElapsedSeconds({1, most, -most}))) << "difference beyond 64 bits";
}

TEST(NumberText, TwoFormsOfTheSameDigits) {
  struct Row {
    double value;
    const char *file, *box;
  };
  for (const auto& [value, file, box] :
       std::vector<Row>{{12.3, "12.3", "12.3"},
                        {-4.5, "-4.5", "-4.5"},
                        {0.5, ".5", "0.5"},
                        {-0.5, "-.5", "-0.5"},
                        {0, "0", "0"},
                        {-0.0, "0", "0"},
                        {417, "417", "417"},
                        {65534, "65534", "65534"},
                        {100, "100", "100"},
                        {0.1 + 0.2, ".3", "0.3"},
                        {1.0 / 3, ".333333333333333", "0.333333333333333"},
                        {-20.0 / 3, "-6.66666666666667", "-6.66666666666667"},
                        {0.05, ".05", "0.05"},
                        {1e15, "1000000000000000", "1000000000000000"},
                        {123456789012345678.0, "123456789012346000", "123456789012346000"},
                        {0.99999999999999999, "1", "1"},
                        {9.9999999999999996, "10", "10"},
                        {1e-7, ".0000001", "0.0000001"},
                        {520.5, "520.5", "520.5"}}) {
    SCOPED_TRACE(file);
    EXPECT_EQ(NumberText(value), file);
    EXPECT_EQ(PlainNumberText(value), box);
  }
  EXPECT_EQ(NumberText(1e300).size(), 301u);
  EXPECT_EQ(NumberText(Huge).find_first_not_of("0123456789"), std::string::npos);
  for (const double value : {NaN, Infinity, -Infinity}) {
    FailureOf(std::errc::argument_out_of_domain, [&] { NumberText(value); });
  }
}

struct Reading {
  std::string_view text;
  double leading;
  std::optional<double> whole;
};

const std::vector<Reading> Readings = {{"12.5", 12.5, 12.5},
                                       {"-180", -180, -180},
                                       {".7", 0.7, 0.7},
                                       {"-.7", -0.7, -0.7},
                                       {"+1", 1, 1},
                                       {"5.", 5, 5},
                                       {" \t7 ", 7, 7},
                                       {"7 8", 7, {}},
                                       {"1.2.3", 1.2, {}},
                                       {"1e3", 1000, 1000},
                                       {"1E-2x", 0.01, {}},
                                       {"2e+", 2, {}},
                                       {"0x10", 0, {}},
                                       {"1e400", Huge, {}},
                                       {"-1e400", -Huge, {}},
                                       {"1e-400", 0, 0.0},
                                       {"1e99999999999999999999", Huge, {}},
                                       {"1e-99999999999999999999", 0, 0.0},
                                       {"0e99999999999999999999", 0, 0.0},
                                       {"0.0000001e310", 1e303, 1e303},
                                       {"1000000000e305", Huge, {}},
                                       {"1,5", 1, {}}};

TEST(LeadingNumber, ReadsTheLongestNumberAtTheStart) {
  for (const auto& [text, leading, whole] : Readings) {
    SCOPED_TRACE(text);
    EXPECT_DOUBLE_EQ(LeadingNumber(text), leading);
    EXPECT_EQ(WholeNumber(text), whole);
  }
  for (const std::string_view none :
       {"", ".", "-", "+-5", "--5", "- 5", "BP", "x5", "inf", "nan", "-inf", "e5", ".e5", "\r\n3"}) {
    EXPECT_EQ(LeadingNumber(none), 0) << none;
    EXPECT_FALSE(WholeNumber(none)) << none;
  }
  EXPECT_EQ(LeadingNumber(std::string(5000, '9')), Huge);
  EXPECT_EQ(LeadingNumber("0." + std::string(5000, '0') + "1"), 0);
  EXPECT_EQ(LeadingNumber(std::string_view("12\0003", 4)), 12);
}

TEST(FieldToInt16, RoundsLikeTheLeadingNumber) {
  const std::vector<std::pair<int, std::vector<std::string_view>>> rows = {
      {0, {".5", ".50", ".49999", "BP", "", "-", ".", "-."}},
      {1, {".7", ".51", ".501", "1.49"}},
      {2, {"1.5", "2.5", "1.5x", "2.5.5", "2.5e0"}},
      {-1, {"-.7", "-.51"}},
      {22, {"22.5", "22.5000000000000", "21.50", "22.", "22x"}},
      {-177, {"-177.2", "-176.5001"}},
      {100, {"1e2", "+100", " 100", "0000000000000000100"}},
      {32767, {"32767.4"}},
      {-32768, {"-32768.5"}}};
  for (const auto& [value, fields] : rows) {
    for (const auto field : fields) EXPECT_EQ(FieldToInt16(field), value) << field;
  }
  for (const std::string_view field :
       {"32767.5", "32768", "-32769", "1e9", "999999999999999", "9999999999999999"}) {
    SCOPED_TRACE(field);
    FailureOf(std::errc::result_out_of_range, [&] { FieldToInt16(field); });
  }
  // The quick way and the general one (a sign + keeps a field out of the quick way) agree on every hundredth.
  for (int hundredths = 0; hundredths <= 20000; ++hundredths) {
    const std::string field = NumberText(hundredths / 100.0);
    ASSERT_EQ(FieldToInt16(field), FieldToInt16("+" + field)) << field;
  }
}

TEST(Datagram, CarriesBothAngles) {
  EXPECT_EQ(Datagram(12.3, -4.5), "BX12.3/-4.5BX");
  EXPECT_EQ(Datagram(0.5, -0.5), "BX.5/-.5BX");
  EXPECT_EQ(Datagram(0, 90), "BX0/90BX");
}

TEST(Datagram, TakesNoTextWithoutBothMarks) {
  struct Row {
    std::string_view text;
    std::optional<std::string_view> body;
  };
  for (const auto& [text, body] : std::vector<Row>{{"BX1/2BX", "1/2"},
                                                   {"BXBX", ""},
                                                   {"BX", {}},
                                                   {"BXB", {}},
                                                   {"BXX", {}},
                                                   {"", {}},
                                                   {"B", {}},
                                                   {"BX1/2", {}},
                                                   {"1/2BX", {}},
                                                   {"bx1/2bx", {}},
                                                   {"BX1/2BX ", {}},
                                                   {" BX1/2BX", {}}}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(DatagramBody(text), body);
  }
}

TEST(Datagram, SkipsTheAngleThatFails) {
  using Angle = std::optional<std::int16_t>;
  struct Row {
    std::string_view body;
    Angle x, y;
  };
  for (const auto& [body, x, y] : std::vector<Row>{{"12.5/13.5", 12, 14},
                                                   {".5/-.5", 0, 0},
                                                   {"-180/90", -180, 90},
                                                   {"42", {}, 42},
                                                   {"", {}, 0},
                                                   {"/", 0, 0},
                                                   {"1/2/3", 1, 2},
                                                   {"99999/5", {}, 5},
                                                   {"5/-99999", 5, {}},
                                                   {"1e400/1", {}, 1},
                                                   {"x/7", 0, 7}}) {
    SCOPED_TRACE(body);
    const ReceivedAngles angles = AnglesOfBody(body);
    EXPECT_EQ(angles.x, x);
    EXPECT_EQ(angles.y, y);
  }
}

}  // namespace
}  // namespace bexlow::live
