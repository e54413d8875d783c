// The context menu of a graph, and its pictures for reports.
#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSvgGenerator>
#include <QTextDocument>
#include <qcustomplot.h>

#include <algorithm>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Machine.h"
#include "platform/machine/System.h"
#include "platform/machine/TextFile.h"

namespace bexlow::platform {

namespace {

constexpr auto PictureFilter =
    "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";
constexpr int PaperDotsPerInch = 96;  // those of the screen: fonts and lines keep their proportion
constexpr double PointsPerInch = 72;
constexpr int SheetPoints = 8;  // of text on a sheet
constexpr int TitleRoom = 8;    // pixels above and below a title

void LayOut(QTextDocument& document, const QString& text, QPaintDevice& device, int width) {
  document.documentLayout()->setPaintDevice(&device);
  document.setDefaultFont(QFont(QGuiApplication::font().family(), SheetPoints));
  document.setDocumentMargin(0);
  document.setHtml("<body style='color: black'>" + text);
  document.setTextWidth(width);
}

}  // namespace

QAction* CWGraph::AddEntry(const QString& caption, const QKeySequence& keys, std::function<void()> action) {
  auto* entry = new QAction(caption, this);
  entry->setShortcut(keys);
  entry->setShortcutContext(Qt::WidgetShortcut);  // of two graphs, the one with the focus
  connect(entry, &QAction::triggered, this,
          [this, action = std::move(action)] { EventGate::Get().Click(this, action); });
  addAction(entry);
  menu_->addAction(entry);
  return entry;
}

void CWGraph::BuildMenu() {
  const auto copy = [this](Extent extent) { QGuiApplication::clipboard()->setImage(Picture(extent)); };
  menu_ = new QMenu(this);
  connect(menu_, &QMenu::aboutToShow, this, [this] { RenewMenu(); });
  AddEntry(tr("&Whole Run"), {}, [this] { ShowAll(); });
  timeEntry_ = AddEntry(tr("&Time on the Axis"), {}, [this] { ShowTime(!timeShown_); });
  timeEntry_->setCheckable(true);
  menu_->addSeparator();
  pictures_ = menu_->addSeparator();
  AddEntry(tr("&Copy Picture"), QKeySequence::Copy, [copy] { copy(Extent::This); });
  AddEntry(tr("&Save Picture As..."), QKeySequence::Save, [this] { SaveByUser(Extent::This); });
  AddEntry(tr("&Print..."), QKeySequence::Print,
           [this] { Print(SuggestedName(Extent::This), Rows(Extent::This), false); });
  allEntries_ = {menu_->addSeparator(), AddEntry(tr("C&opy Both"), {}, [copy] { copy(Extent::All); }),
                 AddEntry(tr("Sa&ve Both As..."), {}, [this] { SaveByUser(Extent::All); }),
                 AddEntry(tr("Print &Both..."), {},
                          [this] { Print(SuggestedName(Extent::All), Rows(Extent::All), false); })};
  AskPrinter = [this](QPrinter& printer) {
    QPrintDialog dialog(&printer, this);
    dialog.setWindowTitle(tr("Print %1").arg(printer.docName()));
    return dialog.exec() == QDialog::Accepted;
  };
}

void CWGraph::AddMenuEntry(const QString& caption, const std::function<void()>& action,
                           const std::function<bool()>& applies) {
  auto* entry = AddEntry(caption, {}, [action, applies] {
    if (applies()) action();  // a screen reader presses what is not on show, too
  });
  menu_->insertAction(pictures_, entry);
  ownersEntries_.emplace_back(entry, applies);
}

// Hides entries that do not apply and sets the check mark.
void CWGraph::RenewMenu() {
  timeEntry_->setVisible(times_.has_value());
  timeEntry_->setChecked(timeShown_);
  for (const auto& [entry, applies] : ownersEntries_) entry->setVisible(applies());
  const auto count = Graphs(Extent::All).size();
  for (auto* entry : allEntries_) {
    entry->setVisible(count > 1);
    entry->setText(entry->text().replace(count > 2 ? "Both" : "All", count > 2 ? "All" : "Both"));
  }
}

void CWGraph::OpenMenu() { menu_->popup(mapToGlobal(rect().center())); }

void CWGraph::SetHeading(const QString& heading, const QString& fileStem) {
  heading_ = heading;
  fileStem_ = fileStem;
}

std::vector<const CWGraph*> CWGraph::Graphs(Extent extent) const {
  if (extent == Extent::This) return {this};
  std::vector<const CWGraph*> graphs(linked_.begin(), linked_.end());
  std::erase(graphs, nullptr);
  return graphs;
}

// "run1 X", "run1 X and Y".
QString CWGraph::SuggestedName(Extent extent) const {
  QStringList names;
  for (const auto* graph : Graphs(extent)) names << graph->accessibleName();
  const auto name = names.join(tr(" and "));
  return QStringLiteral("%1 %2").arg(fileStem_, name.isEmpty() ? tr("Graph") : name).trimmed();
}

int CWGraph::TitleHeight() const { return fontMetrics().height() + TitleRoom; }

QSize CWGraph::PictureSize(Extent extent) const {
  QSize part(0, 0);
  const auto graphs = Graphs(extent);
  for (const auto* graph : graphs)
    part = part.expandedTo(graph->plot_->size() + QSize(0, graph->TitleHeight()));
  return {part.width(), part.height() * static_cast<int>(graphs.size())};
}

// In the light palette, whatever the screen uses, and without the read-out. The axis comes first in the title
// and the launch last: a file name that is too long loses its middle.
void CWGraph::PaintPart(QCPPainter& painter, QSize size) const {
  const QSize area(size.width(), size.height() - TitleHeight());
  const QRect title(plot_->axisRect()->left(), 0, area.width() - plot_->axisRect()->left(), TitleHeight());
  const auto words = accessibleName() + (heading_.isEmpty() ? "" : ", " + heading_);
  ApplyColours(PaperPalette());
  FitCursors();
  FitTitles(area);
  plot_->layer("point")->setVisible(false);
  painter.save();
  painter.setFont(font());
  painter.setPen(Qt::black);
  painter.drawText(title, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(words, Qt::ElideMiddle, title.width()));
  painter.translate(0, TitleHeight());
  plot_->toPainter(&painter, area.width(), area.height());
  painter.restore();
  plot_->layer("point")->setVisible(read_.has_value());
  ApplyColours(palette());
  plot_->replot(QCustomPlot::rpQueuedReplot);  // lays it out for the screen again
}

std::vector<CWGraph::SheetRow> CWGraph::Rows(Extent extent) const {
  std::vector<SheetRow> rows;
  for (const auto* graph : Graphs(extent)) rows.push_back({{}, {graph}});
  return rows;
}

bool CWGraph::Paint(const std::vector<SheetRow>& rows, QPaintDevice& device, QSize size, bool asVectors) {
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
      graph->PaintPart(painter, part);
      painter.translate(part.width(), 0);
    }
    painter.translate(-part.width() * count, count == 0 ? texts[i].size().toSize().height() : part.height());
  }
  return true;
}

QImage CWGraph::Picture(Extent extent) const {
  const auto size = PictureSize(extent);
  QImage image(size * devicePixelRatioF(), QImage::Format_RGB32);
  image.setDevicePixelRatio(devicePixelRatioF());
  image.fill(Qt::white);
  Paint(Rows(extent), image, size, false);
  return image;
}

// The content of a file that ends in .png, .pdf or .svg, in any case; nothing for any other.
QByteArray CWGraph::PictureFile(Extent extent, const QString& extension) const {
  QByteArray bytes;
  QBuffer file(&bytes);
  file.open(QIODevice::WriteOnly);
  const auto kind = extension.toLower();
  const auto size = PictureSize(extent);
  if (kind == QStringLiteral("png")) Picture(extent).save(&file, "PNG");
  if (kind == QStringLiteral("svg")) {
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(size);
    svg.setViewBox(QRect(QPoint(), size));
    svg.setResolution(PaperDotsPerInch);
    Paint(Rows(extent), svg, size, true);
  }
  const auto points = QSizeF(size) * PointsPerInch / PaperDotsPerInch;
  const QPageSize page(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
  return kind == QStringLiteral("pdf")
             ? Pdf(Rows(extent), {page, QPageLayout::Portrait, {}}, SuggestedName(extent))
             : bytes;
}

QByteArray CWGraph::Pdf(const std::vector<SheetRow>& rows, const QPageLayout& layout, const QString& title) {
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

void CWGraph::SaveByUser(Extent extent) {
  CommonDialog question;
  question.Flags = OverwritePrompt;
  question.InitDir = DataFilesFolder().string();
  question.Filter = PictureFilter;
  question.DefaultExt = "png";
  question.SuggestedName = SuggestedName(extent).toStdString() + ".png";
  if (!question.ShowSave()) return;
  auto path = QString::fromStdString(question.FileName);
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".png");
  const auto bytes = PictureFile(extent, QFileInfo(path).suffix());
  const auto reason = bytes.isEmpty() ? "the name of a picture ends in .png, .pdf or .svg"
                                      : Replace(path.toStdString(), bytes.toStdString());
  if (!reason.empty()) MsgBox("The picture cannot be saved as " + path.toStdString() + ": " + reason);
}

// Fills one sheet. A PDF file is made in memory first, so that a full disk leaves no half file, and it
// replaces no data file.
void CWGraph::Print(const QString& name, const std::vector<SheetRow>& rows, bool isReport) {
  QPrinter printer;
  printer.setDocName(name);
  printer.setPageOrientation(isReport ? QPageLayout::Portrait : QPageLayout::Landscape);
  if (isReport || QPrinterInfo::defaultPrinterName().isEmpty()) {
    const bool usesLetter = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
    printer.setOutputFileName(QString::fromStdString(DataFilesFolder().string()) + '/' + name + ".pdf");
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
  const bool isPdf = QFileInfo(printer.outputFileName()).suffix().toLower() == QStringLiteral("pdf");
  const auto reason = isPdf ? Replace(path, Pdf(rows, layout, printer.docName()).toStdString())
                            : "the name of a PDF file ends in .pdf";
  if (!reason.empty()) MsgBox(path + " cannot be written: " + reason);
}

}  // namespace bexlow::platform
