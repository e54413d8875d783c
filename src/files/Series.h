// From the text of a "Download Pages" file to the series that the graphs draw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "files/PageDecoder.h"

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

using Samples = std::vector<std::int16_t>;  // whole degrees, in file order

inline constexpr std::size_t FieldsInRecord = PageBytes;  // a byte is a sample
inline constexpr std::size_t PairsInRecord = FieldsInRecord / 2;

/// All samples of a one-channel file; nothing where the file ends within its 12 header lines.
/// @throws std::system_error naming the record and its fault
std::optional<Samples> ReadSingle(std::string_view text);

/// The samples of a two-channel file and the places of its button pushes.
struct DoubleSeries {
  Samples x, y;
  std::vector<double> pushes;  ///< index in x of each pair whose X field is exactly "BP"
};

/// Reads all pairs of a two-channel file into a series that is emptied first; false where the file ends
/// within its 12 header lines. If it throws, x and y are empty and pushes holds what was found before the
/// fault.
/// @throws std::system_error naming the record and its fault
bool ReadDouble(std::string_view text, DoubleSeries& series);

}  // namespace bexlow::files
