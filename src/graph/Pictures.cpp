#include "graph/Pictures.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QBuffer>
#include <QFileInfo>
#include <QLocale>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSvgGenerator>
#include <QTextDocument>
#include <qcustomplot.h>

#include <algorithm>
#include <deque>

#include "platform/machine/Machine.h"
#include "platform/machine/System.h"

namespace bexlow::graph {

using namespace platform;

namespace {

constexpr auto PictureFilter =
    "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";
constexpr int PaperDotsPerInch = 96;  // those of the screen: fonts and lines keep their proportion
constexpr double PointsPerInch = 72;
constexpr int SheetPoints = 8;  // of text on a sheet

void LayOut(QTextDocument& document, const QString& text, QPaintDevice& device, int width) {
  document.documentLayout()->setPaintDevice(&device);
  document.setDefaultFont(QFont(QGuiApplication::font().family(), SheetPoints));
  document.setDocumentMargin(0);
  document.setHtml("<body style='color: black'>" + text);
  document.setTextWidth(width);
}

bool Paint(const Sheet& rows, QPaintDevice& device, QSize size, bool asVectors) {
  QCPPainter painter;
  if (!painter.begin(&device)) return false;
  painter.setModes(asVectors ? QCPPainter::pmVectorized | QCPPainter::pmNoCaching : QCPPainter::pmNoCaching);
  std::deque<QTextDocument> texts(rows.size());
  int room = size.height(), graphRows = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    LayOut(texts[i], rows[i].text, device, size.width());
    if (rows[i].graphs.empty()) room -= texts[i].size().toSize().height();
    graphRows += rows[i].graphs.empty() ? 0 : 1;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto count = static_cast<int>(rows[i].graphs.size());
    if (count == 0) texts[i].drawContents(&painter);
    const QSize part(size.width() / std::max(count, 1), std::max(0, room) / std::max(graphRows, 1));
    for (const auto* graph : rows[i].graphs) {
      graph->PaintPicture(painter, part);
      painter.translate(part.width(), 0);
    }
    painter.translate(-part.width() * count, count == 0 ? texts[i].size().toSize().height() : part.height());
  }
  return true;
}

QByteArray Pdf(const Sheet& rows, const QPageLayout& layout, const QString& title) {
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&file);
  pdf.setPageLayout(layout);
  pdf.setResolution(PaperDotsPerInch);
  pdf.setTitle(title);
  pdf.setCreator(QGuiApplication::applicationDisplayName());
  Paint(rows, pdf, layout.paintRectPixels(PaperDotsPerInch).size(), true);
  return bytes;
}

QSize SizeOf(const Graphs& graphs) {
  QSize part(0, 0);
  for (const auto* graph : graphs) part = part.expandedTo(graph->PictureSize());
  return {part.width(), part.height() * static_cast<int>(graphs.size())};
}

// The content of a file that ends in .png, .pdf or .svg, in any case; nothing for any other.
QByteArray PictureFile(const Graphs& graphs, const QString& extension, const QString& title) {
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  const auto kind = extension.toLower();
  const auto size = SizeOf(graphs);
  if (kind == "png") PictureOf(graphs).save(&file, "PNG");
  if (kind == "svg") {
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    svg.setResolution(PaperDotsPerInch);
    Paint(SheetOf(graphs), svg, size, true);
  }
  if (kind != "pdf") return bytes;
  const auto points = QSizeF(size) * PointsPerInch / PaperDotsPerInch;
  const QPageSize page(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
  return Pdf(SheetOf(graphs), {page, QPageLayout::Portrait, {}}, title);
}

}  // namespace

std::function<bool(QPrinter&)> AskPrinter = [](QPrinter& printer) {
  QPrintDialog dialog(&printer, QApplication::activeWindow());
  dialog.setWindowTitle("Print " + printer.docName());
  return dialog.exec() == QDialog::Accepted;
};

Sheet SheetOf(const Graphs& graphs) {
  Sheet sheet;
  for (const auto* graph : graphs) sheet.push_back({{}, {graph}});
  return sheet;
}

QImage PictureOf(const Graphs& graphs) {
  const auto size = SizeOf(graphs);
  const double ratio = graphs.front()->devicePixelRatioF();
  QImage image(size * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  Paint(SheetOf(graphs), image, size, false);
  return image;
}

std::string AskWhereToSave(const std::string& filter, const std::string& extension,
                           const std::string& suggestedName) {
  CommonDialog question;
  question.Flags = OverwritePrompt;
  question.InitDir = DataFilesFolder().string();
  question.Filter = filter;
  question.DefaultExt = extension;
  question.SuggestedName = suggestedName + "." + extension;
  question.ShowSave();
  return question.FileName;
}

void SavePicture(const Graphs& graphs, const std::string& suggestedName) {
  const auto chosen = AskWhereToSave(PictureFilter, "png", suggestedName);
  if (chosen.empty()) return;
  auto path = QString::fromStdString(chosen);
  if (QFileInfo(path).suffix().isEmpty()) path += ".png";
  const auto bytes = PictureFile(graphs, QFileInfo(path).suffix(), QString::fromStdString(suggestedName));
  const auto reason = bytes.isEmpty() ? "the name of a picture ends in .png, .pdf or .svg"
                                      : Replace(path.toStdString(), bytes.toStdString());
  if (!reason.empty()) MsgBox("The picture cannot be saved as " + path.toStdString() + ": " + reason);
}

// Fills one sheet. A PDF file is made in memory first, so that a full disk leaves no half file, and it
// replaces no data file.
void Print(const std::string& name, const Sheet& rows, bool isReport) {
  QPrinter printer;
  printer.setDocName(QString::fromStdString(name));
  printer.setPageOrientation(isReport ? QPageLayout::Portrait : QPageLayout::Landscape);
  if (isReport || QPrinterInfo::defaultPrinterName().isEmpty()) {
    const bool usesLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    printer.setOutputFileName(QString::fromStdString((DataFilesFolder() / (name + ".pdf")).string()));
    printer.setPageMargins({15, 12, 15, 12}, QPageLayout::Millimeter);
    printer.setPageSize(QPageSize(usesLetter ? QPageSize::Letter : QPageSize::A4));
  }
  if (!AskPrinter(printer)) return;
  printer.setResolution(PaperDotsPerInch);
  const auto layout = printer.pageLayout();
  const auto path = printer.outputFileName().toStdString();
  if (path.empty()) {
    if (!Paint(rows, printer, layout.paintRectPixels(PaperDotsPerInch).size(), true))
      MsgBox("The printer cannot be used");
    return;
  }
  const bool isPdf = QFileInfo(printer.outputFileName()).suffix().toLower() == "pdf";
  const auto reason = isPdf ? Replace(path, Pdf(rows, layout, printer.docName()).toStdString())
                            : "the name of a PDF file ends in .pdf";
  if (!reason.empty()) MsgBox(path + " cannot be written: " + reason);
}

}  // namespace bexlow::graph
