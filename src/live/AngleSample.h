// The angle samples that Angles and RemoteSession decode alike.
#pragma once

#include "live/AngleRows.h"
#include "live/Conversions.h"

namespace bexlow::live {

/// Takes one axis of a sample over: the word, signed in place, and the angle.
inline void DecodeAngle(const AngleRow& row, const link::AnglePair& words, LiveSample& sample) {
  const double word = words.*row.received;
  sample.*row.wordField = SignedSampleWord(word);
  sample.*row.angleField = SampleWordToAngle(word, row.fullScale);
}

}  // namespace bexlow::live
