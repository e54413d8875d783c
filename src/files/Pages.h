// The pages of a run: from their 264 bytes to the text in a data file, and from that to pairs of bin pages
// and their counts over whole degrees.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace bexlow::files {

inline constexpr std::size_t PageBytes = 264;
inline constexpr int LastPage = 2047;  ///< page 0 holds no samples
using Page = std::span<const std::uint8_t, PageBytes>;

/// The fields of a page, separated by commas; empty for a mode or number of channels that has no layout.
/// @param mode      0 = Bin, 1 = Linear
/// @param channels  of a Linear page: 1 = X, 2 = Y, 3 = X and Y
std::string DecodePage(Page page, double mode, double channels);

/// The first six bytes are all 255: the page was never written, the data ends before it.
bool IsBlankPage(Page page);

inline constexpr std::size_t BinCount = 132;
using BinPoints = std::array<double, BinCount>;

enum class PairResult {
  Found,
  NoPage,    ///< no record has the page number
  NoPartner  ///< no line follows the record
};

struct BinPair {
  PairResult result = PairResult::NoPage;
  BinPoints XPoints{};       ///< counts of the X page
  BinPoints YPoints{};       ///< counts of the next line, whatever its number
  std::int32_t partner = 0;  ///< that number, 0 where its text is none
};

/// The page number of a record, 0 where its text is none.
std::int32_t PageOf(std::string_view line);

/// Finds the pair that begins at a page.
/// @throws std::system_error for a record of fewer than 132 fields or a field that is no number
BinPair FindPair(std::string_view text, int page);

/// Counts over whole degrees; places without a bin are 0.
struct DegreeArrays {
  std::array<double, 361> XDegrees{};  ///< index 0 stands for -180 degrees
  std::array<double, 181> YDegrees{};  ///< index 0 stands for -90 degrees
};

/// The degree of a bin: degrees / 132 * bin - (degrees - 1) / 2, with an exact half to the even degree.
/// @param degrees  places on the axis: 361 for X, 181 for Y
int DegreeOfBin(std::size_t bin, int degrees);

/// Puts each count at the degree of its bin.
DegreeArrays SpreadOverDegrees(const BinPoints& XPoints, const BinPoints& YPoints);

}  // namespace bexlow::files
