// A figure: what was measured, and its limit.
#pragma once

#include <limits>
#include <string>
#include <vector>

namespace bexlow::bench {

/// The limit of a figure. A number alone is an upper limit.
struct Limit {
  constexpr Limit(double number, bool least = false) : value(number), atLeast(least) {}
  bool Kept(double measured) const { return atLeast ? measured >= value : measured <= value; }
  double value;
  bool atLeast;
};
constexpr Limit AtLeast(double value) { return {value, true}; }
/// The limit of a figure that is only reported.
inline constexpr double NoLimit = std::numeric_limits<double>::infinity();

/// Prints a line "name TAB measured TAB limit TAB within", which bench/run gathers into its table.
/// @param detail  how the figure came about, such as "163.1 ms over 162.0 ms"; shown behind the number
void PrintFigure(const std::string& name, double measured, Limit limit, const std::string& unit,
                 const std::string& detail);

/// The middle one. Throws std::system_error (invalid argument) if there is none.
double Median(std::vector<double> values);

/// A number with so many decimals.
std::string Fixed(double value, int decimals);

}  // namespace bexlow::bench
