// Colours of the drawn widgets: taken from the palette, and a few of ours that colour-blind readers can tell
// apart.
#pragma once

#include <QColor>
#include <QPalette>

namespace bexlow::platform {

/// Contrast of two colours as the accessibility guidelines reckon it: 1 (none) to 21 (black on white).
double Contrast(const QColor& a, const QColor& b);

/// A colour between two: 0 gives the first, 1 the second.
QColor Blend(const QColor& first, const QColor& second, double share);

/// The colours of a drawn widget.
struct Colours {
  QColor paper;   // behind all
  QColor text;    // at least 4.5 to 1 on paper
  QColor faint;   // grid, rims: seen, not read
  QColor series;  // curves, pointers
  QColor mark;    // cursors, in red
  QColor hint;    // read-out, rectangle
  QColor focus;   // frame of the widget that has the keys
};

/// For a widget in this state of enabling.
Colours ColoursOf(const QPalette& palette, QPalette::ColorGroup group = QPalette::Active);

/// For pictures that go on paper, whatever the screen looks like.
QPalette PaperPalette();

}  // namespace bexlow::platform
