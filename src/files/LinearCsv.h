// A Linear data file as CSV for spreadsheets, one sample a line.
#pragma once

#include <string>
#include <string_view>

namespace bexlow::files {

/// Appends to csv the CSV form of a data file's text, with CR LF line ends. After a failure csv holds the
/// lines made before it.
/// @throws std::system_error no_message_available where the file ends within its 12 header lines
void AppendLinearCsv(std::string_view dataFile, std::string& csv);

/// The path with ".csv" in place of the last four characters of its file name.
/// @throws std::system_error invalid_argument for a file name of fewer than four characters
std::string CsvFileName(std::string_view dataFileName);

}  // namespace bexlow::files
