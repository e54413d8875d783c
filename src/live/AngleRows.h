// The two angle axes: names of their controls, scales, fields and EEPROM cells.
#pragma once

#include "config/OnBoardParameters.h"
#include "link/Protocol.h"
#include "live/LiveSample.h"

namespace bexlow::live {

/// The scale of a dial, in degrees; see CWKnob for where an arc begins.
struct DialScale {
  double minimum, maximum, start, arc;
};

struct AngleRow {
  const char* caption;
  const char *angle, *word, *tare;  ///< text boxes
  const char *frame, *dial, *cmdTare, *strip;
  const char *tareCaption, *untareCaption;
  double link::AnglePair::*received;
  double LiveSample::*wordField;
  double LiveSample::*angleField;
  double config::OnBoardParameters::*tareField;
  double fullScale;  ///< degrees at 32767 counts
  int tareAddress;   ///< of the tare's high byte; the low byte follows
  DialScale scale;
};

inline constexpr AngleRow AngleRows[] = {
    {"X Axis",
     "txtX",
     "txtWordX",
     "txtTareX",
     "fraX",
     "dialX",
     "cmdTareX",
     "stripX",
     "Tare X",
     "Untare X",
     &link::AnglePair::x,
     &LiveSample::WordX,
     &LiveSample::AngleX,
     &config::OnBoardParameters::XTare,
     180,
     14,
     {-179.99, 179.99, 270, 359.9}},
    {"Y Axis",
     "txtY",
     "txtWordY",
     "txtTareY",
     "fraY",
     "dialY",
     "cmdTareY",
     "stripY",
     "Tare Y",
     "Untare Y",
     &link::AnglePair::y,
     &LiveSample::WordY,
     &LiveSample::AngleY,
     &config::OnBoardParameters::YTare,
     90,
     16,
     {-89.9, 89.9, 0, 180}},
};

}  // namespace bexlow::live
