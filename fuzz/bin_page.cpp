// Bin data files as Graph pages through them: two bytes for the page, then the file.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <vector>

#include "Target.h"
#include "graph/BinPages.h"

namespace bexlow::fuzz {

namespace {

std::vector<double> WithoutZeros(std::span<const double> values) {
  std::vector<double> others;
  for (const double value : values) {
    Require(std::isfinite(value), "every count is finite");
    if (value != 0) others.push_back(value);
  }
  return others;
}

}  // namespace

void Try(std::string_view bytes) {
  if (bytes.size() < 2) return;
  const auto page = static_cast<std::int16_t>(static_cast<std::uint8_t>(bytes[0]) * 256 +
                                              static_cast<std::uint8_t>(bytes[1]));
  const auto text = bytes.substr(2);
  graph::BinPair pair;
  if (!Takes([&] { pair = graph::FindPair(text, page); })) return;
  if (pair.result == graph::PairResult::NoPage) {
    return Require(WithoutZeros(pair.XPoints).empty(), "no page, no counts");
  }
  Require(LinesOf(text) >= (pair.result == graph::PairResult::Found ? 2u : 1u), "a pair is two lines");
  const auto degrees = graph::SpreadOverDegrees(pair.XPoints, pair.YPoints);
  Require(WithoutZeros(degrees.XDegrees) == WithoutZeros(pair.XPoints), "every X count stands on its axis");
  Require(WithoutZeros(degrees.YDegrees) == WithoutZeros(pair.YPoints), "every Y count stands on its axis");
}

}  // namespace bexlow::fuzz
