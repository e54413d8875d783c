#include "platform/graph/CWGraphAxis.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace bexlow::platform {

namespace {

constexpr double DeepestZoom = 1.0 / 500;  // of the whole, where nothing finer is known

CWGraphRange Sound(CWGraphRange range) {
  const auto known = [](double end) {
    return std::isnan(end) ? 0 : std::clamp(end, -CWGraphLargest, CWGraphLargest);
  };
  auto [lower, upper] = std::minmax({known(range.lower), known(range.upper)});
  const double least = std::max(1e-9, std::max(std::abs(lower), std::abs(upper)) * 1e-9);
  if (upper - lower >= least) return {lower, upper};
  return {lower - std::max(0.5, least), upper + std::max(0.5, least)};
}

}  // namespace

void CWGraphAxis::SetWhole(bool autoScale, CWGraphRange given) {
  autoScale_ = autoScale;
  given_ = Sound(given);
  ShowWhole();
}

void CWGraphAxis::SetData(std::optional<CWGraphRange> data, double leastSize) {
  data_ = data;
  leastSize_ = leastSize;
  if (autoScale_) ShowWhole();
}

CWGraphRange CWGraphAxis::Whole() const { return autoScale_ && data_ ? Sound(*data_) : given_; }

void CWGraphAxis::Show(CWGraphRange wanted) {
  if (!std::isfinite(wanted.lower) || !std::isfinite(wanted.upper)) return;
  auto limits = Whole();
  if (data_) limits = {std::min(limits.lower, data_->lower), std::max(limits.upper, data_->upper)};
  const double least = std::min(limits.Size(), leastSize_ > 0 ? leastSize_ : Whole().Size() * DeepestZoom);
  const double size = std::clamp(std::abs(wanted.Size()), least, limits.Size());
  const double lower = std::clamp(wanted.Middle() - size / 2, limits.lower, limits.upper - size);
  const bool isAll = size == limits.Size(), isEnd = lower + size > limits.upper - size * 1e-9;  // by rounding
  ShowExactly(isAll ? limits : CWGraphRange{lower, isEnd ? limits.upper : lower + size});
}

void CWGraphAxis::ShowExactly(CWGraphRange range) {
  view_ = Sound(range);
  const double room = view_.Size() * room_;
  axis_.setRange(view_.lower - room, view_.upper + room);
}

void CWGraphAxis::Zoom(double factor, double anchor) {
  const double held = std::clamp(anchor, view_.lower, view_.upper);
  Show({held + (view_.lower - held) * factor, held + (view_.upper - held) * factor});
}

void CWGraphAxis::Pan(double share) {
  const double way = view_.Size() * share;
  Show({view_.lower + way, view_.upper + way});
}

void CWGraphAxis::Include(double place) {
  if (!view_.Holds(place)) Pan((place - view_.Middle()) / view_.Size());
}

}  // namespace bexlow::platform
