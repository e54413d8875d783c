#include "platform/graph/CWGraphExport.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrinter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <qcustomplot.h>

#include <algorithm>

namespace bexlow::platform {

namespace {

constexpr int ScreenDotsPerInch = 96;
constexpr double PointsPerInch = 72;

bool Paint(QCustomPlot& plot, QPaintDevice& device, QRectF target) {
  QCPPainter painter;
  if (!painter.begin(&device)) return false;
  painter.setMode(QCPPainter::pmVectorized);
  painter.setMode(QCPPainter::pmNoCaching);
  painter.translate(target.topLeft());
  painter.scale(target.width() / plot.width(), target.height() / plot.height());
  plot.toPainter(&painter, plot.width(), plot.height());
  return true;
}

bool WritePng(QCustomPlot& plot, QBuffer& file) {
  return PlotImage(plot).save(&file, "PNG");
}

bool WriteSvg(QCustomPlot& plot, QBuffer& file) {
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  svg.setSize(plot.size());
  svg.setViewBox(QRect(QPoint(), plot.size()));
  svg.setResolution(ScreenDotsPerInch);
  return Paint(plot, svg, QRectF(QPointF(), plot.size()));
}

bool WritePdf(QCustomPlot& plot, QBuffer& file) {
  QPdfWriter pdf(&file);
  pdf.setResolution(ScreenDotsPerInch);
  const auto points = QSizeF(plot.size()) * PointsPerInch / ScreenDotsPerInch;
  pdf.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
  pdf.setPageMargins({});
  return Paint(plot, pdf, QRectF(QPointF(), plot.size()));
}

}  // namespace

QImage PlotImage(QCustomPlot& plot) {
  const double ratio = plot.devicePixelRatioF();
  auto image = plot.toPixmap(plot.width(), plot.height(), ratio).toImage();
  image.setDevicePixelRatio(ratio);
  return image;
}

QByteArray PlotFile(QCustomPlot& plot, const QString& extension) {
  struct Format {
    const char* extension;
    bool (*write)(QCustomPlot&, QBuffer&);
  };
  static constexpr Format Formats[] = {{"png", WritePng}, {"pdf", WritePdf}, {"svg", WriteSvg}};
  const auto wanted = extension.toLower().toLatin1();
  const auto* format =
      std::ranges::find_if(Formats, [&](const Format& known) { return wanted == known.extension; });
  if (format == std::end(Formats)) return {};
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  return format->write(plot, file) ? bytes : QByteArray();
}

bool PrintPlot(QCustomPlot& plot, QPrinter& printer) {
  const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
  const auto size = QSizeF(plot.size()).scaled(page.size(), Qt::KeepAspectRatio);
  return Paint(plot, printer, QRectF(QPointF((page.width() - size.width()) / 2, 0), size));
}

bool SaveBytes(const QString& path, const QByteArray& bytes, QString& reason) {
  QSaveFile file(path);
  const bool isSaved = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
  if (!isSaved) reason = file.errorString();
  return isSaved;
}

}  // namespace bexlow::platform
