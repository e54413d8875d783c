// How a graph looks: colours from the palette, ticks that suit degrees and counts.
#pragma once

#include <qcustomplot.h>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraphCursors.h"
#include "platform/graph/CWGraphSeries.h"

namespace bexlow::platform {

/// Ticks of both axes; the one of angles has marks at 30, 45, 90.
void DressInStyle(QCustomPlot& plot, CWGraphSeries::Style style);

void DressInColours(QCustomPlot& plot, QCPAbstractPlottable& curve, CWGraphCursors& cursors,
                    const Colours& colours);

}  // namespace bexlow::platform
