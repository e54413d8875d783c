// Boxes that show a reading, with its label and unit.
#pragma once

class QGridLayout;
class QLineEdit;
class QWidget;

namespace bexlow::live {

struct Reading {
  const char* name;     ///< of the box
  const char* caption;  ///< beside it, and read aloud
  const char* unit;     ///< after it; empty for none
  int characters = 8;   ///< of the longest text it shows; "-179.9" and some room
};

/// A box as a further row of a grid. Only the program fills it.
QLineEdit* AddReading(QGridLayout& grid, const Reading& reading, QWidget* parent);

}  // namespace bexlow::live
