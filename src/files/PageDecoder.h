// From the 264 bytes of a page to the text after the page number in a data file.
#pragma once

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

}  // namespace bexlow::files
