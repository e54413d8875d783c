// Reads numbers from command-line texts: a number within limits, or an exception that says what is wrong.
#pragma once
#include <cstdint>
#include <string_view>

namespace bexlow::simulator {

/// @throws std::invalid_argument that names `what` and the limits
std::uint64_t WholeNumber(std::string_view text, std::string_view what, std::uint64_t least,
                          std::uint64_t most);
double Decimal(std::string_view text, std::string_view what, double least, double most);

}  // namespace bexlow::simulator
