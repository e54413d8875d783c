// The samples of a Linear data file again, one sample a line, for spreadsheets.
#pragma once

#include <string>
#include <string_view>

namespace bexlow::download {

/// Appends to csv the whole CSV text of a data file's text, lines ended by CR LF. On a failure csv holds what
/// could be made.
/// @throws std::system_error no_message_available where the file ends within its 12 header lines
void AppendLinearCsv(std::string_view dataFile, std::string& csv);

/// The path less the last four characters of its file name, with ".csv" behind.
/// @throws std::system_error invalid_argument for a file name of fewer than four characters
std::string CsvFileName(std::string_view dataFileName);

}  // namespace bexlow::download
