#include "Figure.h"

#include <algorithm>
#include <cstdio>
#include <system_error>

namespace bexlow::bench {

std::string Fixed(double value, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

void PrintFigure(const std::string& name, double measured, Limit limit, const std::string& unit,
                 const std::string& detail) {
  const int decimals = unit.empty() ? 3 : 2;
  const std::string bound = limit.value == NoLimit
                                ? "none"
                                : (limit.atLeast ? "at least " : "") + Fixed(limit.value, decimals) + unit;
  std::printf("%s\t%s%s (%s)\t%s\t%s\n", name.c_str(), Fixed(measured, decimals).c_str(), unit.c_str(),
              detail.c_str(), bound.c_str(), limit.Kept(measured) ? "yes" : "NO");
  std::fflush(stdout);
}

double Median(std::vector<double> values) {
  if (values.empty())
    throw std::system_error(std::make_error_code(std::errc::invalid_argument), "Nothing was measured");
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

}  // namespace bexlow::bench
