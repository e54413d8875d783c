#include "platform/controls/Colours.h"

#include <QWidget>

#include <algorithm>
#include <cmath>

namespace bexlow::platform {

namespace {

// WCAG 2.1, level AA: text of ordinary size, and graphics.
constexpr double ReadableContrast = 4.5;
constexpr double SeenContrast = 3;

double Linear(double channel) {
  return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) + 0.0722 * Linear(colour.blueF());
}

QColor Readable(const QColor& wanted, const QColor& paper, double contrast = ReadableContrast) {
  if (Contrast(wanted, paper) >= contrast) return wanted;
  return Luminance(paper) > 0.18 ? QColor(Qt::black) : QColor(Qt::white);
}

}  // namespace

double Contrast(const QColor& a, const QColor& b) {
  const auto [dark, bright] = std::minmax({Luminance(a), Luminance(b)});
  return (bright + 0.05) / (dark + 0.05);
}

QColor Blend(const QColor& first, const QColor& second, double share) {
  const auto mix = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
  return QColor::fromRgbF(mix(first.redF(), second.redF()), mix(first.greenF(), second.greenF()),
                          mix(first.blueF(), second.blueF()));
}

// Blue, vermilion red and orange of the Okabe-Ito set, which differ for all common kinds of colour
// blindness, each in one shade for a light and one for a dark background.
Colours ColoursOf(const QPalette& palette, QPalette::ColorGroup group) {
  const auto paper = palette.color(group, QPalette::Base);
  const auto text = Readable(palette.color(group, QPalette::Text), paper);
  const bool isDark = Luminance(paper) < 0.18;
  const bool isOff = group == QPalette::Disabled;
  const QColor series = isDark ? QColor(0x56, 0xB4, 0xE9) : QColor(0x00, 0x5F, 0x99);
  return {
      .paper = paper,
      .text = text,
      .faint = Blend(paper, text, 0.18),
      .series = isOff ? Blend(paper, text, 0.5) : series,
      .mark = isDark ? QColor(0xFF, 0x70, 0x60) : QColor(0xC8, 0x10, 0x10),
      .hint = isDark ? QColor(0xF0, 0xB0, 0x40) : QColor(0xA0, 0x55, 0x00),
      .focus = Readable(palette.color(group, QPalette::Highlight), paper, SeenContrast),
  };
}

Colours ColoursOf(const QWidget& widget) {
  return ColoursOf(widget.palette(), widget.isEnabled() ? QPalette::Active : QPalette::Disabled);
}

QPalette PaperPalette() {
  QPalette palette(Qt::white);
  palette.setColor(QPalette::Base, Qt::white);
  palette.setColor(QPalette::Text, Qt::black);
  return palette;
}

}  // namespace bexlow::platform
