// The two angle axes: names of their controls, scales, fields and EEPROM cells.
#pragma once

#include "config/OnBoardParameters.h"
#include "link/Protocol.h"
#include "live/Conversions.h"
#include "live/LiveSample.h"

namespace bexlow::live {

struct AngleRow {
  const char* caption;
  const char *angle, *word, *tare;  ///< text boxes
  const char *frame, *dial, *cmdTare, *strip;
  const char *tareCaption, *untareCaption;
  double link::AnglePair::*received;
  double LiveSample::*wordField;
  double LiveSample::*angleField;
  double config::OnBoardParameters::*tareField;
  double fullScale;            ///< degrees at 32767 counts
  int tareAddress;             ///< of the tare's high byte; the low byte follows
  double dialEnd, start, arc;  ///< the dial's scale in degrees, from -dialEnd; see CWKnob for its arc
};

inline constexpr AngleRow AngleRows[] = {
    {"X Axis", "txtX", "txtWordX", "txtTareX", "fraX", "dialX", "cmdTareX", "stripX", "Tare X", "Untare X",
     &link::AnglePair::x, &LiveSample::WordX, &LiveSample::AngleX, &config::OnBoardParameters::XTare, 180, 14,
     179.99, 270, 359.9},
    {"Y Axis", "txtY", "txtWordY", "txtTareY", "fraY", "dialY", "cmdTareY", "stripY", "Tare Y", "Untare Y",
     &link::AnglePair::y, &LiveSample::WordY, &LiveSample::AngleY, &config::OnBoardParameters::YTare, 90, 16,
     89.9, 0, 180},
};

/// Stores one axis of a sample: the signed word and the angle.
inline void DecodeAngle(const AngleRow& row, const link::AnglePair& words, LiveSample& sample) {
  const double word = words.*row.received;
  sample.*row.wordField = SignedSampleWord(word);
  sample.*row.angleField = SampleWordToAngle(word, row.fullScale);
}

}  // namespace bexlow::live
