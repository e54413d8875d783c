// What shows a reading: a box with label and unit, a dial; and how all of it looks while there is none.
#pragma once

#include <QString>

#include <array>

class QGridLayout;
class QLayout;
class QLineEdit;
class QWidget;

namespace bexlow::platform {
class CWKnob;
}

namespace bexlow::live {

struct AngleRow;

struct Reading {
  const char* name;     ///< of the box
  const char* caption;  ///< beside it, and read aloud
  const char* unit;     ///< after it; empty for none
  int characters = 8;   ///< of the longest text it shows; "-179.9" and some room
};

/// A box as a further row of a grid. Only the program fills it.
QLineEdit* AddReading(QGridLayout& grid, const Reading& reading, QWidget* parent);

/// The other boxes of a grid span this many columns.
inline constexpr int SpanOfBox = 4;
/// A box, or a row of boxes of which the first is `buddy`, as a further row of a grid.
void AddRow(QGridLayout& grid, const char* caption, QWidget* box);
void AddRow(QGridLayout& grid, const char* caption, QLayout* boxes, QWidget* buddy);
/// Four numbers side by side, as an address is written.
QLayout* AddNumbers(std::array<QLineEdit*, 4>& boxes, const QString& name, const QString& caption,
                    bool readOnly, QWidget* parent);

/// A dial with the scale of its axis.
platform::CWKnob* MakeDial(const AngleRow& row, QWidget* parent);

class LiveStrips;
/// The strips of both angles.
void AddAngleStrips(LiveStrips& strips);

/// Makes what shows the past pale: a box stays to be read and copied, an instrument shows no number.
void Dim(QWidget& widget, bool dim);

}  // namespace bexlow::live
