// The data file of a logger whose memory is full: 2047 pages of both channels, 540,408 fields.
#pragma once

#include <filesystem>
#include <string>

namespace bexlow::bench {

/// The text, made by the program's own writers from a wearer who sways, stoops and now and then presses the
/// button.
std::string FullDataFile();
/// The same memory when the button was stuck: each of the 270,204 pairs is a push.
std::string StuckButtonFile();
/// An hour of Angles at the 370 samples a second of the line: 1,332,000 samples.
std::string HourRecording();
/// Makes a folder of so many full files. What lies between their ends is not on the disk.
void MakeRuns(const std::filesystem::path& folder, int count);

}  // namespace bexlow::bench
