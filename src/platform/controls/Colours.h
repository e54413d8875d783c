// Colours of the drawn widgets: from the palette, and some that colour-blind readers can tell apart.
#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace bexlow::platform {

/// Contrast of two colours by the formula of WCAG: 1 (none) to 21 (black on white).
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

/// For an enabled (Active) or disabled widget.
Colours ColoursOf(const QPalette& palette, QPalette::ColorGroup group = QPalette::Active);
/// Those of a widget as it is now.
Colours ColoursOf(const QWidget& widget);

/// For pictures that go on paper, whatever the screen looks like.
QPalette PaperPalette();

}  // namespace bexlow::platform
