// What shows a reading: a box with label and unit, a dial, the rows of both angles.
#pragma once

#include "live/LiveStrips.h"
#include "platform/controls/CWKnob.h"
#include "values/LoggerValues.h"

namespace bexlow::live {

/// The two angle axes: names of their controls, scales, fields and EEPROM cells.
struct AngleRow {
  const char* caption;
  const char *angle, *word, *tare;  ///< text boxes
  const char *frame, *dial, *cmdTare, *strip;
  const char *tareCaption, *untareCaption;
  double link::AnglePair::*received;
  double values::LiveSample::*wordField;
  double values::LiveSample::*angleField;
  double values::OnBoardParameters::*tareField;
  double fullScale;         ///< degrees at 32767 counts
  int tareAddress;          ///< of the tare's high byte; the low byte follows
  double dialEnd, dialArc;  ///< the dial's scale in degrees, from -dialEnd; see CWKnob for its arc
};

inline constexpr AngleRow AngleRows[] = {
    {"X Axis", "txtX", "txtWordX", "txtTareX", "fraX", "dialX", "cmdTareX", "stripX", "Tare X", "Untare X",
     &link::AnglePair::x, &values::LiveSample::WordX, &values::LiveSample::AngleX,
     &values::OnBoardParameters::XTare, 180, 14, 179.99, 359.9},
    {"Y Axis", "txtY", "txtWordY", "txtTareY", "fraY", "dialY", "cmdTareY", "stripY", "Tare Y", "Untare Y",
     &link::AnglePair::y, &values::LiveSample::WordY, &values::LiveSample::AngleY,
     &values::OnBoardParameters::YTare, 90, 16, 89.9, 180},
};

/// A box as a further row of a grid, with its caption before and the unit after it. Only the program fills
/// it.
/// @param characters  of the longest text it shows; "-179.9" and some room
QLineEdit* AddReading(QGridLayout& grid, const char* name, const char* caption, const char* unit,
                      QWidget* parent, int characters = 8);

/// The other boxes of a grid span this many columns.
inline constexpr int SpanOfBox = 4;
/// A box, or a row of boxes of which it is the first, as a further row of a grid.
void AddRow(QGridLayout& grid, const char* caption, QWidget* box, QLayout* boxes = nullptr);
/// Four numbers side by side, as an address is written.
QLayout* AddNumbers(std::array<QLineEdit*, 4>& boxes, const QString& name, const QString& caption,
                    bool readOnly, QWidget* parent);

/// A dial with the scale of its axis.
platform::CWKnob* MakeDial(const AngleRow& row, QWidget* parent);

/// The strips of both angles.
void AddAngleStrips(LiveStrips& strips);
/// Stores a sample in the shared record, the signed words and the angles, and the angles in their strips.
void TakeAngles(const link::AnglePair& words, LiveStrips& strips);

}  // namespace bexlow::live
