#include "files/PageDecoder.h"

#include <algorithm>

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

}  // namespace bexlow::files
