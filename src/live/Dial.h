// A dial with the scale of its axis.
#pragma once

#include "live/AngleRows.h"
#include "platform/instruments/CWKnob.h"

namespace bexlow::live {

inline platform::CWKnob* MakeDial(const AngleRow& row, QWidget* parent) {
  auto* dial = new platform::CWKnob(parent);
  dial->setObjectName(row.dial);
  dial->setAccessibleName(row.caption);
  dial->SetScale(-row.dialEnd, row.dialEnd, row.start, row.arc);
  return dial;
}

}  // namespace bexlow::live
