// What a table of runs says of a data file: of a download, from its beginning and its end alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace bexlow::files {

struct RunEntry {
  std::string launched;           ///< "2004-03-09 14:05:07"; empty for a recording or a time that is none
  std::string serialNumber;       ///< likewise: a recording's header has those of the last download
  std::string kind;               ///< "Linear X and Y", "Bin", "Angles"; empty for what is no data file
  std::optional<double> seconds;  ///< to the last sample that was written
  std::int32_t lastPage = 0;      ///< 0: none known
  std::string remark;
};

inline constexpr std::size_t HeadBytes = 4096;   ///< holds the header and the first page number
inline constexpr std::size_t TailBytes = 65536;  ///< holds the last 30 pages at least

/// Tells nothing of the pages between the two parts, nor of a recording that is not all in the head.
/// @param head  the first HeadBytes of the file
/// @param tail  its last TailBytes; each is the whole file where this is shorter
RunEntry ReadRunEntry(std::string_view head, std::string_view tail, std::uintmax_t size);

}  // namespace bexlow::files
