#include "files/Pages.h"

#include <algorithm>
#include <cmath>

#include "files/Lines.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

constexpr std::uint8_t PushByte = 127;  // a pair of these is a push of the logger's button

using AngleTexts = std::array<std::string, 256>;

/// The text of each angle byte: 128 steps to full scale, the negative half counted down from 255.
AngleTexts MakeAngleTexts(double fullScale) {
  AngleTexts texts;
  for (int byte = 0; byte < 256; ++byte) {
    const double steps = byte <= 128 ? byte : byte - 255;
    texts[static_cast<std::size_t>(byte)] =
        values::NumberText(values::RoundToDecimals(steps / 128 * fullScale, 1));
  }
  return texts;
}

const AngleTexts& XTexts() {
  static const AngleTexts texts = MakeAngleTexts(180);
  return texts;
}

const AngleTexts& YTexts() {
  static const AngleTexts texts = MakeAngleTexts(90);
  return texts;
}

void AppendField(std::string& text, std::string_view field) {
  if (!text.empty()) text += ',';
  text += field;
}

std::string DecodeBins(Page page) {
  std::string text;
  for (std::size_t i = 0; i < page.size(); i += 2) {
    AppendField(text, values::NumberText(256.0 * page[i] + page[i + 1]));
  }
  return text;
}

std::string DecodeAngles(Page page, const AngleTexts& texts) {
  std::string text;
  for (const std::uint8_t byte : page) AppendField(text, texts[byte]);
  return text;
}

std::string DecodePairs(Page page) {
  std::string text;
  for (std::size_t i = 0; i < page.size(); i += 2) {
    const bool push = page[i] == PushByte && page[i + 1] == PushByte;
    AppendField(text, push ? "BP" : std::string_view(XTexts()[page[i]]));
    AppendField(text, push ? "BP" : std::string_view(YTexts()[page[i + 1]]));
  }
  return text;
}

/// The 132 counts after a line's first comma; the last is the rest of the line.
BinPoints PointsOf(std::string_view line, std::size_t lineNumber) {
  const auto fault = [&](const std::string& words) {
    values::Throw(std::errc::invalid_argument, "Line " + std::to_string(lineNumber) + ": " + words);
  };
  BinPoints points{};
  std::optional<std::string_view> rest = AfterFirstComma(line);
  for (std::size_t i = 0; i < BinCount; ++i) {
    const bool last = i + 1 == BinCount;
    const auto field = !rest || last ? rest : BeforeFirstComma(*rest);
    if (!field) fault("fewer than 132 fields");
    const auto number = values::WholeNumber(*field);
    if (!number) fault("field " + std::to_string(i + 1) + " is no number");
    points[i] = *number;
    rest = AfterFirstComma(*rest);
  }
  return points;
}

}  // namespace

std::string DecodePage(Page page, double mode, double channels) {
  if (mode == 0) return DecodeBins(page);
  if (mode != 1) return {};
  if (channels == 1) return DecodeAngles(page, XTexts());
  if (channels == 2) return DecodeAngles(page, YTexts());
  if (channels == 3) return DecodePairs(page);
  return {};
}

bool IsBlankPage(Page page) {
  return std::ranges::all_of(page.first<6>(), [](std::uint8_t byte) { return byte == 0xFF; });
}

std::int32_t PageOf(std::string_view line) {
  const auto number = values::WholeNumber(BeforeFirstComma(line).value_or(""));
  const bool isPage = number && *number >= 1 && *number <= LastPage && *number == std::floor(*number);
  return isPage ? static_cast<std::int32_t>(*number) : 0;
}

BinPair FindPair(std::string_view text, int page) {
  const std::string number = values::NumberText(page);
  BinPair pair;
  LineReader lines(text);
  auto line = lines.Next();
  while (line && BeforeFirstComma(*line) != number) line = lines.Next();
  if (!line) return pair;
  pair.XPoints = PointsOf(*line, lines.LinesRead());
  line = lines.Next();
  pair.result = line ? PairResult::Found : PairResult::NoPartner;
  if (line) pair.YPoints = PointsOf(*line, lines.LinesRead());
  if (line) pair.partner = PageOf(*line);
  return pair;
}

int DegreeOfBin(std::size_t bin, int degrees) {
  const int half = degrees / 2;
  return values::ToInt16(static_cast<double>(degrees) / BinCount * static_cast<double>(bin) - half);
}

DegreeArrays SpreadOverDegrees(const BinPoints& XPoints, const BinPoints& YPoints) {
  DegreeArrays arrays;
  for (std::size_t bin = 0; bin < BinCount; ++bin) {
    const int x = DegreeOfBin(bin, 361) + 180;
    const int y = DegreeOfBin(bin, 181) + 90;
    arrays.XDegrees[static_cast<std::size_t>(x)] = XPoints[bin];
    arrays.YDegrees[static_cast<std::size_t>(y)] = YPoints[bin];
  }
  return arrays;
}

}  // namespace bexlow::files
