// How a graph looks: colours from the palette, ticks that suit degrees and counts.
#pragma once

#include <qcustomplot.h>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraphCursors.h"
#include "platform/graph/CWGraphSeries.h"

namespace bexlow::platform {

/// Ticks of both axes; the one of angles has marks at 30, 45, 90.
/// @param clockRate  samples a second, where the x axis is to show times instead of samples
void DressInStyle(QCustomPlot& plot, CWGraphSeries::Style style, std::optional<double> clockRate);

void DressInColours(QCustomPlot& plot, QCPAbstractPlottable& curve, CWGraphCursors& cursors,
                    const Colours& colours);

}  // namespace bexlow::platform
