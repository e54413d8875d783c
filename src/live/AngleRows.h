// The two angle axes: names of their controls, scales, fields and EEPROM cells.
#pragma once

#include "link/Protocol.h"
#include "values/Conversions.h"
#include "values/LiveSample.h"
#include "values/OnBoardParameters.h"

namespace bexlow::live {

struct AngleRow {
  const char* caption;
  const char *angle, *word, *tare;  ///< text boxes
  const char *frame, *dial, *cmdTare, *strip;
  const char *tareCaption, *untareCaption;
  double link::AnglePair::*received;
  double values::LiveSample::*wordField;
  double values::LiveSample::*angleField;
  double values::OnBoardParameters::*tareField;
  double fullScale;            ///< degrees at 32767 counts
  int tareAddress;             ///< of the tare's high byte; the low byte follows
  double dialEnd, start, arc;  ///< the dial's scale in degrees, from -dialEnd; see CWKnob for its arc
};

inline constexpr AngleRow AngleRows[] = {
    {"X Axis", "txtX", "txtWordX", "txtTareX", "fraX", "dialX", "cmdTareX", "stripX", "Tare X", "Untare X",
     &link::AnglePair::x, &values::LiveSample::WordX, &values::LiveSample::AngleX,
     &values::OnBoardParameters::XTare, 180, 14, 179.99, 270, 359.9},
    {"Y Axis", "txtY", "txtWordY", "txtTareY", "fraY", "dialY", "cmdTareY", "stripY", "Tare Y", "Untare Y",
     &link::AnglePair::y, &values::LiveSample::WordY, &values::LiveSample::AngleY,
     &values::OnBoardParameters::YTare, 90, 16, 89.9, 0, 180},
};

/// Stores one axis of a sample: the signed word and the angle.
inline void DecodeAngle(const AngleRow& row, const link::AnglePair& words, values::LiveSample& sample) {
  const double word = words.*row.received;
  sample.*row.wordField = values::SignedSampleWord(word);
  sample.*row.angleField = values::SampleWordToAngle(word, row.fullScale);
}

}  // namespace bexlow::live
