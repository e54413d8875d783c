// Recordings: what Angles and Accelerometers saved, a sample a line.
#pragma once

#include <optional>
#include <string_view>

#include "files/DataFile.h"
#include "files/Series.h"

namespace bexlow::files {

inline constexpr std::size_t RecordingHeaderLines = 10;

/// What line 2 of a text says; nothing where it names no recording.
std::optional<DataFileKind> RecordingKind(std::string_view text);

/// Reads a recording into a run that is emptied first; false for a text that is none, or ends within its
/// header. Damaged lines and a torn last one are left out and told in the run's remarks. Where sampling was
/// stopped and started again, the file counts from 0 again; the run counts on, without the pause between.
bool ReadRecording(std::string_view text, Run& run);

/// When a sample of a recording came, and which came then; between two samples, in proportion. At most the
/// first and the last. The recording must hold a sample.
double SecondsAt(const Run& run, double sample);
double SampleAtSecond(const Run& run, double seconds);

}  // namespace bexlow::files
