// Graphs on paper and in files: pictures, and sheets of text and graphs.
#pragma once

#include <functional>

#include "platform/graph/CWGraph.h"

class QPrinter;

namespace bexlow::graph {

using Graphs = std::vector<const platform::CWGraph*>;

/// What stands on a sheet from top to bottom: text, as rich text, or graphs side by side. Text takes the
/// height it needs, rows of graphs share the rest.
struct SheetRow {
  QString text;
  Graphs graphs;
};
using Sheet = std::vector<SheetRow>;
/// Graphs below each other.
Sheet SheetOf(const Graphs& graphs);

/// Graphs below each other, as large as on the screen.
QImage PictureOf(const Graphs& graphs);
/// Asks for a PNG, PDF or SVG file and draws the same in it.
void SavePicture(const Graphs& graphs, const std::string& suggestedName);
/// Asks where to save what is no data file, among the data files at first; the path, empty for none.
/// @param filter  as of CommonDialog
std::string AskWhereToSave(const std::string& filter, const std::string& extension,
                           const std::string& suggestedName);

/// Prints a sheet, upright for a report. In the dialog stands a PDF file of this name among the data files;
/// for graphs alone, only where there is no printer.
void Print(const std::string& name, const Sheet& sheet, bool isReport = true);
/// Asks for a printer and its settings, false for none: a print dialog, tests put something else here.
extern std::function<bool(QPrinter&)> AskPrinter;

}  // namespace bexlow::graph
