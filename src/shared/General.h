// Module General: the routines that many screens need.
#pragma once

#include <cstdint>

namespace bexlow::shared {

/// Returns when at least this time has passed on the high-resolution counter. Holds up every event meanwhile,
/// while bytes go on being collected. 0 or less returns at once.
void WaitMilliseconds(int milliseconds);
/// The same for shorter times, such as the length of a byte on the line.
void WaitMicroseconds(std::int64_t microseconds);

/// Makes the folders of the data files and of the log where they are missing.
void TestForFileFolders();

}  // namespace bexlow::shared
