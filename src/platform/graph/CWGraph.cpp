#include "platform/graph/CWGraph.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QVBoxLayout>
#include <qcustomplot.h>

#include <algorithm>

#include "platform/controls/Colours.h"
#include "platform/controls/EventGate.h"
#include "platform/graph/CWGraphCursors.h"
#include "platform/graph/CWGraphCurve.h"
#include "platform/graph/CWGraphExport.h"
#include "platform/graph/CWGraphInteraction.h"
#include "platform/graph/CWGraphLook.h"
#include "platform/graph/CWGraphOverlay.h"
#include "platform/graph/CWGraphReadOut.h"
#include "platform/graph/CWGraphView.h"
#include "platform/machine/Folders.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

namespace {

constexpr double LeastSamplesInView = 4;
constexpr int FocusFrame = 2;
constexpr auto PictureFilter =
    "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";
constexpr int CursorsInWords = 10;  // more than that nobody listens to

QString RangeWords(CWGraphRange range) {
  return QStringLiteral("%1 to %2").arg(CWGraphNumber(range.lower), CWGraphNumber(range.upper));
}

}  // namespace

CWGraph::CWGraph(QWidget* parent) : QWidget(parent) {
  InstallChartAccess();
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  BuildPlot();
  BuildInteraction();
  BuildMenu();
  PresetQuestions();
  SetPlotStyle(PlotStyle::Linear);
  ApplyColours(palette());
}

CWGraph::~CWGraph() = default;

void CWGraph::BuildPlot() {
  plot_ = new QCustomPlot(this);
  plot_->setAttribute(Qt::WA_TransparentForMouseEvents);  // this widget handles the mouse
  plot_->setFocusPolicy(Qt::NoFocus);
  plot_->axisRect()->setupFullAxesBox();
  plot_->xAxis2->setTicks(false);
  plot_->yAxis2->setTicks(false);
  FitMargins();
  cursors_ = new CWGraphCursors(plot_->xAxis, plot_->yAxis);  // drawn first, under the curve
  curve_ = new CWGraphCurve(plot_->xAxis, plot_->yAxis, series_);
  words_ = new QLabel(this);
  words_->setIndent(8);
  words_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  words_->setAttribute(Qt::WA_TransparentForMouseEvents);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(FocusFrame, FocusFrame, FocusFrame, FocusFrame + 2);
  layout->setSpacing(0);
  layout->addWidget(plot_, 1);
  layout->addWidget(words_);
}

// The left margin has room for a title and "-180", so that graphs above each other have their axes in line.
void CWGraph::FitMargins() {
  const int left = fontMetrics().horizontalAdvance(QStringLiteral("-1800")) + fontMetrics().height() + 22;
  plot_->axisRect()->setMinimumMargins(QMargins(left, 8, 14, 4));
}

void CWGraph::BuildInteraction() {
  overlay_ = new CWGraphOverlay(*this);
  view_ = std::make_unique<CWGraphView>(*plot_->xAxis, *plot_->yAxis);
  view_->Changed = [this] { PassXView(); };
  readOut_ = std::make_unique<CWGraphReadOut>(series_, *plot_, *view_, *overlay_, *words_);
  connect(plot_, &QCustomPlot::afterReplot, this, [this] { readOut_->Refresh(); });
  auto* interaction = new CWGraphInteraction(*this, *plot_, *view_, *readOut_, *overlay_);
  interaction->MenuWanted = [this](QPoint global) { menu_->popup(global); };
}

void CWGraph::AddEntry(const QString& caption, const QKeySequence& keys, void (CWGraph::*action)()) {
  auto* entry = new QAction(caption, this);
  entry->setShortcut(keys);
  entry->setShortcutContext(Qt::WidgetShortcut);  // of two graphs side by side the one with the focus
  connect(entry, &QAction::triggered, this,
          [this, action] { EventGate::Get().Click(this, [this, action] { (this->*action)(); }); });
  addAction(entry);
  menu_->addAction(entry);
}

void CWGraph::BuildMenu() {
  menu_ = new QMenu(this);
  AddEntry(tr("Show &All"), {}, &CWGraph::ShowAll);
  menu_->addSeparator();
  AddEntry(tr("&Copy Picture"), QKeySequence::Copy, &CWGraph::CopyPicture);
  AddEntry(tr("&Save Picture As..."), QKeySequence::Save, &CWGraph::SaveByUser);
  AddEntry(tr("&Print..."), QKeySequence::Print, &CWGraph::PrintByUser);
}

void CWGraph::PresetQuestions() {
  AskPicturePath = [](const QString& suggested) {
    FileQuestion question;
    question.save = question.confirmReplacing = true;
    question.folder = DataFilesFolder().string();
    question.filter = PictureFilter;
    question.defaultSuffix = "png";
    question.suggestedName = suggested.toStdString();
    const auto chosen = Machine::Get().AskFile(question);
    return QString::fromStdString(chosen.value_or(std::string()));
  };
  AskPrinter = [this](QPrinter& printer) { return QPrintDialog(&printer, this).exec() == QDialog::Accepted; };
  TellFailure = [](const QString& reason) { MsgBox(reason.toStdString()); };
}

void CWGraph::ClearData() {
  TakeSeries({});
}

void CWGraph::PlotY(std::span<const double> values, double firstX, double stepX) {
  TakeSeries({{values.begin(), values.end()}, firstX, stepX});
}

void CWGraph::PlotY(std::span<const std::int16_t> values, double firstX, double stepX) {
  TakeSeries({{values.begin(), values.end()}, firstX, stepX});
}

void CWGraph::TakeSeries(CWGraphSeries series) {
  series_ = std::move(series);
  auto yRange = series_.YRange();
  if (yRange && style_ == PlotStyle::Bin)
    yRange = {std::min(0.0, yRange->lower), std::max(1.0, yRange->upper)};
  view_->X.SetData(series_.XRange(), LeastSamplesInView * series_.StepX());
  view_->Y.SetData(yRange, 0);
  readOut_->Renew(style_);
  DrawSoon();
}

void CWGraph::SetPlotStyle(PlotStyle style) {
  style_ = style;
  curve_->SetStyle(style);
  DressInStyle(*plot_, style);
  ApplyTitles();
  TakeSeries(std::move(series_));
}

void CWGraph::SetXAxis(bool autoScale, double minimum, double maximum) {
  view_->X.SetWhole(autoScale, {minimum, maximum});
  DrawSoon();
}

void CWGraph::SetYAxis(bool autoScale, double minimum, double maximum) {
  view_->Y.SetWhole(autoScale, {minimum, maximum});
  DrawSoon();
}

void CWGraph::SetAxisTitles(const QString& x, const QString& y) {
  titleX_ = x;
  titleY_ = y;
  ApplyTitles();
  DrawSoon();
}

void CWGraph::ApplyTitles() {
  const bool isBin = style_ == PlotStyle::Bin;
  plot_->xAxis->setLabel(!titleX_.isEmpty() ? titleX_ : isBin ? tr("Angle (degrees)") : tr("Sample"));
  plot_->yAxis->setLabel(!titleY_.isEmpty() ? titleY_ : isBin ? tr("Count") : tr("Angle (degrees)"));
}

void CWGraph::EnableCursors() {
  if (CursorCount() > 0) return;
  AddCursor();
  SetCursorLook(1);
}

int CWGraph::CursorCount() const {
  return static_cast<int>(cursors_->All().size());
}

void CWGraph::AddCursor() {
  cursors_->All().emplace_back();
  DrawSoon();
}

void CWGraph::RemoveAllCursors() {
  cursors_->All().clear();
  DrawSoon();
}

void CWGraph::SetCursorLook(int n) {
  cursors_->Numbered(n).look = CWGraphCursors::Look::Marked;
  DrawSoon();
}

void CWGraph::SetCursorPosition(int n, double x, double y) {
  auto& cursor = cursors_->Numbered(n);
  cursor.x = x;
  cursor.y = y;
  DrawSoon();
}

double CWGraph::CursorX(int n) const {
  return cursors_->Numbered(n).x;
}
double CWGraph::CursorY(int n) const {
  return cursors_->Numbered(n).y;
}

void CWGraph::LinkXAxis(CWGraph& other) {
  linked_ = &other;
  other.linked_ = this;
  SetXLinkActive(true);
}

void CWGraph::SetXLinkActive(bool active) {
  linkActive_ = active;
  if (linked_) linked_->linkActive_ = active;
}

// What the user did here; the other graph follows without passing it back.
void CWGraph::PassXView() {
  DrawSoon();
  if (!linkActive_ || !linked_) return;
  linked_->view_->X.ShowExactly(XView());
  linked_->DrawSoon();
}

void CWGraph::ShowAll() {
  view_->X.ShowWhole();
  view_->Y.ShowWhole();
  PassXView();
}

CWGraphRange CWGraph::XView() const {
  return view_->X.View();
}
CWGraphRange CWGraph::YView() const {
  return view_->Y.View();
}

void CWGraph::SetXView(CWGraphRange range) {
  view_->X.Show(range);
  PassXView();
}

QString CWGraph::ReadOutText() const {
  return words_->text();
}
QWidget* CWGraph::WordsShown() const {
  return words_;
}

QString CWGraph::Description() const {
  QStringList words;
  const auto range = series_.YRange();
  words << (series_.IsEmpty() ? tr("No data") : tr("%1 points").arg(series_.Size()));
  words << tr("%1 from %2").arg(plot_->xAxis->label(), RangeWords(XView()));
  words << tr("%1 from %2").arg(plot_->yAxis->label(), RangeWords(YView()));
  if (range)
    words << tr("least value %1, greatest value %2")
                 .arg(CWGraphNumber(range->lower), CWGraphNumber(range->upper));
  if (CursorCount() > 0) words << CursorWords();
  return words.join(QStringLiteral("; "));
}

QString CWGraph::CursorWords() const {
  QStringList places;
  for (int n = 1; n <= std::min(CursorCount(), CursorsInWords); ++n) places << CWGraphNumber(CursorX(n));
  const auto more = CursorCount() > CursorsInWords ? tr(" and more") : QString();
  const auto count = CursorCount() == 1 ? tr("1 cursor") : tr("%1 cursors").arg(CursorCount());
  return tr("%1 at %2%3").arg(count, places.join(QStringLiteral(", ")), more);
}

QImage CWGraph::Picture() const {
  return PlotImage(*plot_);
}

void CWGraph::CopyPicture() {
  QGuiApplication::clipboard()->setImage(Picture());
}

// A picture goes into a report or on paper, also from a dark screen.
bool CWGraph::SavePicture(const QString& path, QString* reason) const {
  ApplyColours(PaperPalette());
  const auto bytes = PlotFile(*plot_, QFileInfo(path).suffix());
  ApplyColours(palette());
  auto words = tr("the name of a picture ends in .png, .pdf or .svg");
  if (!bytes.isEmpty() && SaveBytes(path, bytes, words)) return true;
  if (reason) *reason = tr("The picture cannot be saved as %1: %2").arg(path, words);
  return false;
}

bool CWGraph::Print(QPrinter& printer) const {
  ApplyColours(PaperPalette());
  const bool isPrinted = PrintPlot(*plot_, printer);
  ApplyColours(palette());
  return isPrinted;
}

void CWGraph::SaveByUser() {
  auto path = AskPicturePath(tr("%1.png").arg(accessibleName().isEmpty() ? tr("Graph") : accessibleName()));
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".png");
  QString reason;
  if (!SavePicture(path, &reason)) TellFailure(reason);
}

void CWGraph::PrintByUser() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(accessibleName());
  if (!AskPrinter(printer) || Print(printer)) return;
  const auto file = printer.outputFileName();
  TellFailure(file.isEmpty() ? tr("The printer cannot be used") : tr("%1 cannot be written").arg(file));
}

void CWGraph::DrawNow() {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  plot_->replot(QCustomPlot::rpImmediateRefresh);
}

void CWGraph::DrawSoon() {
  plot_->replot(QCustomPlot::rpQueuedReplot);
}

void CWGraph::ApplyColours(const QPalette& palette) const {
  DressInColours(*plot_, *curve_, *cursors_, ColoursOf(palette, palette.currentColorGroup()));
}

void CWGraph::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (!plot_) return;
  switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
      ApplyColours(palette());
      DrawSoon();
      break;
    case QEvent::FontChange:
      for (auto* axis : {plot_->xAxis, plot_->yAxis}) {
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
      }
      FitMargins();
      DrawSoon();
      break;
    default:
      break;
  }
}

void CWGraph::resizeEvent(QResizeEvent* event) {
  overlay_->setGeometry(rect());
  overlay_->raise();
  QWidget::resizeEvent(event);
}

// The screen it is shown on may have another density than the one it was made on.
void CWGraph::showEvent(QShowEvent* event) {
  plot_->setBufferDevicePixelRatio(devicePixelRatioF());
  DrawSoon();
  QWidget::showEvent(event);
}

void CWGraph::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() != QContextMenuEvent::Mouse) menu_->popup(mapToGlobal(rect().center()));
  event->accept();  // by mouse it opens on release, since the right button also draws the rectangle
}

QSize CWGraph::sizeHint() const {
  return {640, 260};
}
QSize CWGraph::minimumSizeHint() const {
  return {260, 140};
}

}  // namespace bexlow::platform
