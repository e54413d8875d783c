// Decoding of an angle sample, for Angles and RemoteSession.
#pragma once

#include "live/AngleRows.h"
#include "live/Conversions.h"

namespace bexlow::live {

/// Stores one axis of a sample: the signed word and the angle.
inline void DecodeAngle(const AngleRow& row, const link::AnglePair& words, LiveSample& sample) {
  const double word = words.*row.received;
  sample.*row.wordField = SignedSampleWord(word);
  sample.*row.angleField = SampleWordToAngle(word, row.fullScale);
}

}  // namespace bexlow::live
