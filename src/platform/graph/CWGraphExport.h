// Pictures of a plot: as pixels, as a file, on paper.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <vector>

class QCustomPlot;
class QPrinter;

namespace bexlow::platform {

/// A plot and its title.
struct TitledPlot {
  QCustomPlot* plot = nullptr;
  QString title;
};
/// Plots below each other.
using PlotPage = std::vector<TitledPlot>;

/// In pixels, on white.
QImage PageImage(const PlotPage& page);

/// A page as the content of a file.
/// @param extension  "png", "pdf" or "svg", in any case
/// @return nothing for any other, or when the page cannot be drawn
QByteArray PageFile(const PlotPage& page, const QString& extension);

/// Puts it on one sheet, as large as it fits.
/// @return false when the printer cannot be drawn on
bool PrintPage(const PlotPage& page, QPrinter& printer);

/// Writes a file whole or not at all.
/// @return false on failure, with the system's words in reason
bool SaveBytes(const QString& path, const QByteArray& bytes, QString& reason);

}  // namespace bexlow::platform
