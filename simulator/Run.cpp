#include "Run.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>

#include "Wearer.h"

namespace bexlow::simulator {
namespace {

constexpr std::size_t BinCount = PageSize / 2;
constexpr std::uint8_t PushByte = 127;  // in both places of a pair
constexpr int SamplesOfABinSet = 900;   // two minutes at 7.5 Hz

std::vector<bool> ChoosePushes(std::size_t pairs, const PushPlan& plan, Random random) {
  const std::size_t wanted =
      plan.share > 0 ? static_cast<std::size_t>(std::llround(plan.share * static_cast<double>(pairs)))
                     : plan.count;
  std::vector<std::size_t> places(pairs);
  std::iota(places.begin(), places.end(), std::size_t{0});
  std::vector<bool> pushed(pairs);
  for (std::size_t i = 0; i < std::min(wanted, pairs); ++i) {
    std::swap(places[i], places[i + random.Below(pairs - i)]);
    pushed[places[i]] = true;
  }
  return pushed;
}

void StorePairs(std::span<std::uint8_t> bytes, const RunPlan& plan) {
  Wearer wearer(plan.seed);
  const std::vector<bool> pushed = ChoosePushes(bytes.size() / 2, plan.pushes, Random(~plan.seed));
  for (std::size_t pair = 0; pair < pushed.size(); ++pair) {
    const Pose pose = wearer.Next();
    bytes[2 * pair] = pushed[pair] ? PushByte : AngleByte(pose.x, 180);
    bytes[2 * pair + 1] = pushed[pair] ? PushByte : AngleByte(pose.y, 90);
  }
}

void StoreOneChannel(std::span<std::uint8_t> bytes, const RunPlan& plan) {
  Wearer wearer(plan.seed);
  for (auto& byte : bytes) {
    const Pose pose = wearer.Next();
    byte = plan.channels == 1 ? AngleByte(pose.x, 180) : AngleByte(pose.y, 90);
  }
}

void StoreLinear(std::span<std::uint8_t> pages, const RunPlan& plan) {
  const bool full = plan.pages == PageCount - 1;
  const auto written = pages.first(pages.size() - (full || pages.empty() ? 0 : PageSize / 3));
  if (plan.channels == 1 || plan.channels == 2) {
    StoreOneChannel(written, plan);
  } else {
    StorePairs(written, plan);
  }
}

using Histogram = std::array<int, BinCount>;

// A bin spans a 132th of the scale's whole degrees, both ends counted: 361 of X, 181 of Y.
void Count(Histogram& bins, double degrees, double fullScale) {
  const double place = (degrees + fullScale) * static_cast<double>(BinCount) / (2 * fullScale + 1);
  ++bins[static_cast<std::size_t>(std::clamp(std::lround(place), 0L, static_cast<long>(BinCount) - 1))];
}

void StoreHistogram(std::span<std::uint8_t> page, const Histogram& bins) {
  for (std::size_t k = 0; k < BinCount; ++k) {
    page[2 * k] = static_cast<std::uint8_t>(bins[k] >> 8);
    page[2 * k + 1] = static_cast<std::uint8_t>(bins[k] & 0xFF);
  }
}

void StoreBins(std::span<std::uint8_t> pages, const RunPlan& plan) {
  Wearer wearer(plan.seed);
  for (; !pages.empty(); pages = pages.subspan(std::min(pages.size(), 2 * PageSize))) {
    Histogram x{};
    Histogram y{};
    for (int n = 0; n < SamplesOfABinSet; ++n) {
      const Pose pose = wearer.Next();
      Count(x, pose.x, 180);
      Count(y, pose.y, 90);
    }
    StoreHistogram(pages.first(PageSize), x);
    if (pages.size() > PageSize) StoreHistogram(pages.subspan(PageSize, PageSize), y);
  }
}

}  // namespace

std::uint8_t AngleByte(double degrees, double fullScale) {
  const long steps = std::min(std::lround(std::abs(degrees) / fullScale * 128), 128L);
  if (degrees >= 0 || steps == 0) return static_cast<std::uint8_t>(steps);
  return static_cast<std::uint8_t>(255 - std::min(steps, 126L));
}

void StoreRun(DataMemory& memory, const RunPlan& plan) {
  memory.Erase(1, plan.pages);
  const auto pages = memory.Pages(1, plan.pages);
  if (plan.linear) {
    StoreLinear(pages, plan);
  } else {
    StoreBins(pages, plan);
  }
}

}  // namespace bexlow::simulator
