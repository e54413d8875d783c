// Text files as bytes: each call opens, works, checks and closes. Failures throw std::system_error with the
// path and the system's own words; nothing fails in silence, a full disk included.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace bexlow::platform {

/// The whole file. A file above 1 GiB is refused: the longest that a logger can fill is some 3.5 MB.
std::string ReadWhole(const std::filesystem::path& path);
/// The first and the last bytes of a file; both overlap in a short one.
struct FileEnds {
  std::string head, tail;
  std::uintmax_t size;
};
FileEnds ReadEnds(const std::filesystem::path& path, std::size_t head, std::size_t tail);
/// Puts a file of these bytes in the place of the one that is there, whole or not at all.
/// @return  the system's words where it fails, else nothing
std::string Replace(const std::filesystem::path& path, std::string_view bytes);
/// Creates or empties the file and writes the text.
void WriteWhole(const std::filesystem::path& path, std::string_view text);
/// Opens for appending (creating a missing file), writes the text, closes. If not all of the text finds room
/// the file is cut back to what it held, so that it ends with its last whole record.
void Append(const std::filesystem::path& path, std::string_view text);

}  // namespace bexlow::platform
