// Pictures of a plot: as pixels, as a file, on paper.
#pragma once

#include <QByteArray>
#include <QImage>

class QCustomPlot;
class QPrinter;

namespace bexlow::platform {

/// The plot as seen, in device pixels.
QImage PlotImage(QCustomPlot& plot);

/// The plot as the content of a file.
/// @param extension  "png", "pdf" or "svg", in any case
/// @return nothing for any other, or when the plot cannot be drawn
QByteArray PlotFile(QCustomPlot& plot, const QString& extension);

/// Puts the plot on one page, as large as it fits.
/// @return false when the printer cannot be drawn on
bool PrintPlot(QCustomPlot& plot, QPrinter& printer);

/// Writes a file whole or not at all.
/// @return false on failure, with the system's words in reason
bool SaveBytes(const QString& path, const QByteArray& bytes, QString& reason);

}  // namespace bexlow::platform
