// Marks along the axes of a graph, and its numbers.
#pragma once

#include <QString>

#include <functional>
#include <optional>

class QCustomPlot;

namespace bexlow::platform {

/// Bin: separate counts over degrees. Linear: a run of samples.
enum class PlotStyle { Bin, Linear };

/// When the samples of a run were taken, in seconds since its launch, or since sampling was started. A page
/// that is missing is a jump.
struct SampleTimes {
  double rate = 1;  // samples a second; 0 where they came unevenly, to hundredths of a second
  std::function<double(double sample)> secondsAt;
  std::function<double(double seconds)> sampleAt;
};

/// Ticks of both axes; the one of angles has marks at 30, 45, 90.
/// @param clock  where the x axis is to show times instead of samples
void SetTickers(QCustomPlot& plot, PlotStyle style, const std::optional<SampleTimes>& clock);

/// A number in plain digits with a point and no grouping, as short as it can be.
QString CWGraphNumber(double value);

}  // namespace bexlow::platform
