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
constexpr int TitleRoom = 8;  // pixels above and below a title

int TitleHeight(const TitledPlot& part) {
  return part.plot->fontMetrics().height() + TitleRoom;
}

QSize SizeOf(const PlotPage& page) {
  QSize size(0, 0);
  for (const auto& part : page) {
    size.rwidth() = std::max(size.width(), part.plot->width());
    size.rheight() += TitleHeight(part) + part.plot->height();
  }
  return size;
}

bool Paint(const PlotPage& page, QPaintDevice& device, QRectF target, QCPPainter::PainterModes modes) {
  QCPPainter painter;
  if (!painter.begin(&device)) return false;
  painter.setModes(modes);
  painter.translate(target.topLeft());
  painter.scale(target.width() / SizeOf(page).width(), target.height() / SizeOf(page).height());
  for (const auto& part : page) {
    const QRect title(part.plot->axisRect()->left(), 0, part.plot->axisRect()->width(), TitleHeight(part));
    painter.setFont(part.plot->font());
    painter.setPen(Qt::black);
    // The axis comes first and the launch last: a file name that is too long loses its middle.
    painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                     part.plot->fontMetrics().elidedText(part.title, Qt::ElideMiddle, title.width()));
    painter.translate(0, title.height());
    part.plot->toPainter(&painter, part.plot->width(), part.plot->height());
    painter.translate(0, part.plot->height());
  }
  return true;
}

bool PaintVectors(const PlotPage& page, QPaintDevice& device, QRectF target) {
  return Paint(page, device, target, QCPPainter::pmVectorized | QCPPainter::pmNoCaching);
}

bool WritePng(const PlotPage& page, QBuffer& file) {
  return PageImage(page).save(&file, "PNG");
}

bool WriteSvg(const PlotPage& page, QBuffer& file) {
  const auto size = SizeOf(page);
  QSvgGenerator svg;
  svg.setOutputDevice(&file);
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(), size));
  svg.setResolution(ScreenDotsPerInch);
  return PaintVectors(page, svg, QRectF(QPointF(), size));
}

bool WritePdf(const PlotPage& page, QBuffer& file) {
  const auto size = SizeOf(page);
  QPdfWriter pdf(&file);
  pdf.setResolution(ScreenDotsPerInch);
  const auto points = QSizeF(size) * PointsPerInch / ScreenDotsPerInch;
  pdf.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
  pdf.setPageMargins({});
  return PaintVectors(page, pdf, QRectF(QPointF(), size));
}

}  // namespace

QImage PageImage(const PlotPage& page) {
  const auto size = SizeOf(page);
  const double ratio = page.front().plot->devicePixelRatioF();
  QImage image(size * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  Paint(page, image, QRectF(QPointF(), size), QCPPainter::pmNoCaching);
  return image;
}

QByteArray PageFile(const PlotPage& page, const QString& extension) {
  struct Format {
    const char* extension;
    bool (*write)(const PlotPage&, QBuffer&);
  };
  static constexpr Format Formats[] = {{"png", WritePng}, {"pdf", WritePdf}, {"svg", WriteSvg}};
  const auto wanted = extension.toLower().toLatin1();
  const auto* format =
      std::ranges::find_if(Formats, [&](const Format& known) { return wanted == known.extension; });
  if (format == std::end(Formats)) return {};
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  return format->write(page, file) ? bytes : QByteArray();
}

// Lines are scaled to the sheet, fonts to the printer's resolution. At 96 dots an inch both match.
bool PrintPage(const PlotPage& page, QPrinter& printer) {
  printer.setResolution(ScreenDotsPerInch);
  const QRectF sheet = printer.pageLayout().paintRectPixels(printer.resolution());
  const auto size = QSizeF(SizeOf(page)).scaled(sheet.size(), Qt::KeepAspectRatio);
  return PaintVectors(page, printer, QRectF(QPointF((sheet.width() - size.width()) / 2, 0), size));
}

bool SaveBytes(const QString& path, const QByteArray& bytes, QString& reason) {
  QSaveFile file(path);
  const bool isSaved = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
  if (!isSaved) reason = file.errorString();
  return isSaved;
}

}  // namespace bexlow::platform
