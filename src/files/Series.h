// From the text of a data file to the series that the graphs draw.
#pragma once

#include <algorithm>
#include <vector>

#include "files/DataFile.h"
#include "files/Pages.h"

namespace bexlow::files {

enum class FileKind {
  Empty,
  TooShort,   ///< fewer than 11 lines
  WrongKind,  ///< line 2 is not "Download Pages"
  Bin,
  Linear,
  OtherMode  ///< line 10 names neither mode
};

struct FileCheck {
  FileKind kind = FileKind::Empty;
  int channel = 0;  ///< of a Linear file, the digit at the end of line 11; 0 where there is none
};

/// Looks at the header of a file that Graph is to open.
FileCheck CheckFile(std::string_view text);

enum class ReviewCheck {
  Empty,
  TooShort,      ///< fewer than 12 lines
  NotSupported,  ///< not a Linear download of both channels
  Ok
};

/// Looks at the header of a file that GraphBP is to open.
ReviewCheck CheckReviewFile(std::string_view text);

/// True for a file that GraphBP takes and that has a push in it.
bool HoldsPushes(std::string_view text);

using Samples = std::vector<std::int16_t>;  // whole degrees, in file order
using Tenths = std::vector<std::int32_t>;   // the same samples in tenths, as the file has them

inline constexpr std::size_t FieldsInRecord = PageBytes;  // a byte is a sample
inline constexpr std::size_t PairsInRecord = FieldsInRecord / 2;

/// What one axis of a run holds, and its full scale.
struct Axis {
  std::string_view name, unit;  // readings in bits have no sign of one
  double least, greatest;
  bool wraps = false;  // both ends of the scale are one direction
};
inline constexpr Axis AngleAxes[] = {{"X", "°", -180, 180, true}, {"Y", "°", -90, 90}};
inline constexpr Axis AccelerometerAxes[] = {
    {"Acc X", "", 0, 1024}, {"Acc Y", "", 0, 1024}, {"Acc Z", "", 0, 1024}};

/// The samples of a Linear run, or of a recording. A pair of a button push is a sample of 0, 0 here.
struct Run {
  struct Record {
    std::int32_t page;  ///< 0 where its text is no page number
    std::size_t first;  ///< index of its first sample
  };

  std::span<const Axis> axes = AngleAxes;
  Samples XLinear, YLinear;      ///< not of a recording
  std::array<Tenths, 3> tenths;  ///< of each axis
  Tenths hundredths;             ///< of a recording: when each sample came, in hundredths of a second
  std::vector<double> pushes;    ///< index of each pair whose X field is exactly "BP"
  std::vector<Record> records;
  std::string remarks;  ///< on damaged records, or on the lines of a recording, each after "; "

  std::size_t Size() const { return std::max(tenths[0].size(), tenths[1].size()); }
  /// Samples of 0, or pairs of 0, 0, that end the last record: where the logger wrote no more of its page.
  std::size_t UnwrittenEnd() const;
  bool IsPush(std::size_t sample) const;
};

/// Appends one record, of channel 1, 2 or 3 (both).
/// @throws std::system_error naming the record, counted from 1, and its fault; samples of it may then be in
void AppendRecord(Run& run, std::string_view line, int channel);

/// Reads all records of a file into a run that is emptied first; false where the file ends within its 12
/// header lines. If it throws, the run has no sample, and its pushes are those before the fault.
/// @throws std::system_error naming the record and its fault
bool ReadRun(std::string_view text, int channel, Run& run);

/// Whether the page numbers rise from 1 on, so that they tell when a sample was taken.
bool PagesRise(const Run& run);
/// Which pages are missing, or which number is not above the one before: "page 20 is missing". Empty where
/// there is nothing to tell.
/// @param before  the page before the first record
std::string PageRemarks(const Run& run, std::int32_t before = 0);
/// The first sample of each record that does not follow the page before it, and of a recording, each that
/// comes more than 2 seconds after the one before.
std::vector<std::size_t> BreaksOf(const Run& run);
/// When a sample was taken, in sample times since the launch, and which sample was taken then (the next one,
/// where its page is missing). The page numbers must rise.
double PeriodsAt(const Run& run, double sample);
double SampleAt(const Run& run, double periods);

inline constexpr std::size_t RecordingHeaderLines = 10;
/// What line 2 of a text says; nothing where it names no recording.
std::optional<DataFileKind> RecordingKind(std::string_view text);
/// Reads what Angles or Accelerometers saved into a run that is emptied first; false for a text that is none,
/// or ends within its header. Damaged lines and a torn last one are left out and told in the run's remarks.
/// Where sampling was started again, the file counts from 0; the run counts on, without the pause.
bool ReadRecording(std::string_view text, Run& run);
/// When a sample of a recording came, and which came then; between two samples, in proportion. At most the
/// first and the last. The recording must hold a sample.
double SecondsAt(const Run& run, double sample);
double SampleAtSecond(const Run& run, double seconds);

/// The number of the push at a point, from 0.
std::optional<std::size_t> PushAt(const std::vector<double>& pushes, double point);

}  // namespace bexlow::files
