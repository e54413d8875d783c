// The data file of a logger whose memory is full: 2047 pages of both channels, 540,408 fields.
#pragma once

#include <string>

namespace bexlow::bench {

/// The text, made by the program's own writers from a wearer who sways, stoops and now and then presses the
/// button.
std::string FullDataFile();

}  // namespace bexlow::bench
