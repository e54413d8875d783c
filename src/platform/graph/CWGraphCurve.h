// The curve of a graph: the plot library's own, which draws no line where two samples lie across a gap.
#pragma once

class QCPAxis;
class QCPGraph;

namespace bexlow::platform {

/// A value that is no number is a gap. Where several samples share a column of pixels, the column is drawn
/// from their least to their greatest value, so that no spike is lost. It belongs to the plot of the axes.
QCPGraph* MakeCurve(QCPAxis* x, QCPAxis* y);

}  // namespace bexlow::platform
