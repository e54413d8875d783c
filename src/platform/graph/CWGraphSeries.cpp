#include "platform/graph/CWGraphSeries.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace bexlow::platform {

namespace {

std::optional<CWGraphRange> RangeOf(std::span<const double> values) {
  std::optional<CWGraphRange> range;
  for (const double value : values) {
    if (std::isnan(value)) continue;
    if (!range) range = {value, value};
    range->lower = std::min(range->lower, value);
    range->upper = std::max(range->upper, value);
  }
  return range;
}

bool IsPlace(double x) {
  return std::isfinite(x) && std::abs(x) <= CWGraphLargest;
}

}  // namespace

CWGraphSeries::CWGraphSeries(std::vector<double> values, double firstX, double stepX)
    : values_(std::move(values)),
      firstX_(IsPlace(firstX) ? firstX : 0),
      stepX_(IsPlace(stepX) && stepX > 0 ? stepX : 1) {
  for (double& value : values_) {
    value = std::isfinite(value) ? std::clamp(value, -CWGraphLargest, CWGraphLargest)
                                 : std::numeric_limits<double>::quiet_NaN();
  }
  yRange_ = RangeOf(values_);
}

std::optional<CWGraphRange> CWGraphSeries::XRange() const {
  if (IsEmpty()) return std::nullopt;
  return CWGraphRange{X(0), X(Size() - 1)};
}

bool CWGraphSeries::Counts(std::ptrdiff_t index) const {
  if (index < 0 || index >= std::ssize(values_)) return false;
  const double value = values_[static_cast<std::size_t>(index)];
  return value != 0 && !std::isnan(value);
}

std::optional<std::size_t> CWGraphSeries::Nearest(double x, Style style) const {
  if (IsEmpty() || std::isnan(x)) return std::nullopt;
  const double last = static_cast<double>(Size() - 1);
  const auto nearest = static_cast<std::ptrdiff_t>(std::clamp(std::round((x - firstX_) / stepX_), 0.0, last));
  if (style == Style::Linear) return static_cast<std::size_t>(nearest);
  for (const std::ptrdiff_t distance : {0, -1, 1, -2, 2}) {
    if (Counts(nearest + distance)) return static_cast<std::size_t>(nearest + distance);
  }
  return static_cast<std::size_t>(nearest);
}

std::size_t CWGraphSeries::Beyond(std::size_t index, std::ptrdiff_t points, Style style) const {
  const std::ptrdiff_t last = std::ssize(values_) - 1;
  const auto start = static_cast<std::ptrdiff_t>(index);
  if (style == Style::Linear)
    return static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(start + points, 0, last));
  const std::ptrdiff_t direction = points < 0 ? -1 : 1;
  std::ptrdiff_t reached = start;
  std::ptrdiff_t left = std::abs(points);
  for (auto i = start + direction; left > 0 && i >= 0 && i <= last; i += direction) {
    if (!Counts(i)) continue;
    reached = i;
    --left;
  }
  return static_cast<std::size_t>(reached);
}

QString CWGraphSeries::PointText(std::size_t index, Style style, std::optional<double> rate) const {
  const auto x = CWGraphNumber(X(index));
  const auto value = std::isnan(values_[index]) ? QStringLiteral("-") : CWGraphNumber(values_[index]);
  if (style == Style::Bin) return QStringLiteral("Angle %1°: count %2").arg(x, value);
  const auto time =
      rate ? QStringLiteral(", %1 at %2 Hz").arg(DurationWords(X(index) / *rate), CWGraphNumber(*rate))
           : QString();
  return QStringLiteral("Sample %1%2: %3°").arg(x, time, value);
}

QString CWGraphNumber(double value) {
  auto plain = QLocale::c();
  plain.setNumberOptions(QLocale::OmitGroupSeparator);
  return plain.toString(value == 0 ? 0.0 : value, 'g', 7);
}

QString DurationWords(double seconds) {
  const auto whole = std::llrint(seconds);
  QStringList words;
  if (whole >= 3600) words << QStringLiteral("%1 h").arg(whole / 3600);
  if (whole >= 60) words << QStringLiteral("%1 min").arg(whole / 60 % 60);
  words << QStringLiteral("%1 s").arg(whole % 60);
  return words.join(' ');
}

QString DurationClock(double seconds, int decimals) {
  const auto parts = static_cast<long long>(std::pow(10, decimals));  // of a second
  const auto count = std::llrint(std::abs(seconds) * static_cast<double>(parts));
  const auto whole = count / parts;
  auto text = whole >= 3600
                  ? QStringLiteral("%1:%2").arg(whole / 3600).arg(whole / 60 % 60, 2, 10, QChar('0'))
                  : QString::number(whole / 60);
  text += QStringLiteral(":%1").arg(whole % 60, 2, 10, QChar('0'));
  if (decimals > 0) text += QStringLiteral(".%1").arg(count % parts, decimals, 10, QChar('0'));
  return seconds < 0 && count > 0 ? '-' + text : text;
}

}  // namespace bexlow::platform
