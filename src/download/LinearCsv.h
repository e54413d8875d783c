// The samples of a Linear data file again, one sample a line, for spreadsheets.
#pragma once

#include <string>
#include <string_view>

namespace bexlow::download {

/// The whole CSV text of a data file's text, lines ended by CR LF.
/// @throws std::system_error no_message_available where the file ends within its 12 header lines
std::string LinearCsv(std::string_view dataFile);

/// The same, appended to csv, which on a failure holds what could be made.
void AppendLinearCsv(std::string_view dataFile, std::string& csv);

/// The path less the last four characters of its file name, with ".csv" behind.
/// @throws std::system_error invalid_argument for a file name of fewer than four characters
std::string CsvFileName(std::string_view dataFileName);

}  // namespace bexlow::download
