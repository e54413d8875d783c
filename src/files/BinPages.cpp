#include "files/BinPages.h"

#include <system_error>

#include "files/Lines.h"
#include "values/Conversions.h"
#include "values/NumberText.h"

namespace bexlow::files {

namespace {

[[noreturn]] void Throw(std::size_t line, const std::string& fault) {
  throw std::system_error(std::make_error_code(std::errc::invalid_argument),
                          "Line " + std::to_string(line) + ": " + fault);
}

/// The 132 counts after a line's first comma; the last is the rest of the line.
BinPoints PointsOf(std::string_view line, std::size_t lineNumber) {
  BinPoints points{};
  std::optional<std::string_view> rest = AfterFirstComma(line);
  for (std::size_t i = 0; i < BinCount; ++i) {
    const bool last = i + 1 == BinCount;
    const auto field = !rest || last ? rest : BeforeFirstComma(*rest);
    if (!field) Throw(lineNumber, "fewer than 132 fields");
    const auto number = values::WholeNumber(*field);
    if (!number) Throw(lineNumber, "field " + std::to_string(i + 1) + " is no number");
    points[i] = *number;
    rest = AfterFirstComma(*rest);
  }
  return points;
}

}  // namespace

BinPair FindPair(std::string_view text, int page) {
  const std::string number = values::NumberText(page);
  BinPair pair;
  LineReader lines(text);
  auto line = lines.Next();
  while (line && BeforeFirstComma(*line) != number) line = lines.Next();
  if (!line) return pair;
  pair.XPoints = PointsOf(*line, lines.LinesRead());
  line = lines.Next();
  pair.result = line ? PairResult::Found : PairResult::NoPartner;
  if (line) pair.YPoints = PointsOf(*line, lines.LinesRead());
  return pair;
}

int DegreeOfBin(std::size_t bin, int degrees) {
  const int half = degrees / 2;
  return values::ToInt16(static_cast<double>(degrees) / BinCount * static_cast<double>(bin) - half);
}

DegreeArrays SpreadOverDegrees(const BinPoints& XPoints, const BinPoints& YPoints) {
  DegreeArrays arrays;
  for (std::size_t bin = 0; bin < BinCount; ++bin) {
    const int x = DegreeOfBin(bin, 361) + 180;
    const int y = DegreeOfBin(bin, 181) + 90;
    arrays.XDegrees[static_cast<std::size_t>(x)] = XPoints[bin];
    arrays.YDegrees[static_cast<std::size_t>(y)] = YPoints[bin];
  }
  return arrays;
}

}  // namespace bexlow::files
