// Module General: the routines that many screens need.
#pragma once

#include "files/DataFile.h"
#include "platform/machine/Machine.h"

namespace bexlow::shared {

/// Returns when at least this time has passed on the high-resolution counter. Holds up every event meanwhile,
/// while bytes go on being collected. 0 or less returns at once.
void WaitMilliseconds(int milliseconds);
/// The same for shorter times, such as the length of a byte on the line.
void WaitMicroseconds(std::int64_t microseconds);

/// Makes the folders of the data files and of the log where they are missing.
void TestForFileFolders();

// The writers of data files. A file is opened, written and closed for each record.

/// Asks for a file with the screen's save dialog and creates it with its header; its path goes into
/// DataFileName. A cancelled dialog or a file that cannot be created ends it without a message.
/// @return why the file cannot be created, in words; DataFileName is empty then. Otherwise an empty text.
std::string WriteDataFileHeader(platform::CommonDialog& dialog, files::DataFileKind kind);

/// Append one record to DataFileName. A failure is reported, and that record is lost: false.
bool WriteDownloadPagesToFile(std::int32_t page);
bool WriteAccelerometersToFile(const std::string& time);
bool WriteAnglesToFile(const std::string& time);

/// Makes the CSV file beside a Linear data file. A data file that is damaged gives what can be read of it.
/// @throws std::system_error for that, and where the CSV file would replace the data file
void WriteLinearCsv(const std::string& dataFileName);

}  // namespace bexlow::shared
