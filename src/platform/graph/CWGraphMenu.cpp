// The context menu of a graph, and its pictures for reports.
#include <QClipboard>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <qcustomplot.h>

#include "platform/controls/Colours.h"
#include "platform/graph/CWGraph.h"
#include "platform/graph/CWGraphExport.h"
#include "platform/machine/EventGate.h"
#include "platform/machine/Folders.h"
#include "platform/machine/Machine.h"

namespace bexlow::platform {

namespace {

constexpr auto PictureFilter =
    "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";

}  // namespace

QAction* CWGraph::AddEntry(const QString& caption, const QKeySequence& keys, std::function<void()> action) {
  auto* entry = new QAction(caption, this);
  entry->setShortcut(keys);
  entry->setShortcutContext(Qt::WidgetShortcut);  // of two graphs, the one with the focus
  connect(entry, &QAction::triggered, this, [this, action = std::move(action)] {
    EventGate::Get().Click(this, action);
    RenewMenu();
  });
  addAction(entry);
  menu_->addAction(entry);
  return entry;
}

void CWGraph::BuildMenu() {
  menu_ = new QMenu(this);
  AddEntry(tr("Show &All"), {}, [this] { ShowAll(); });
  timeEntry_ = AddEntry(tr("&Time on the Axis"), {}, [this] { ShowTime(!timeShown_); });
  timeEntry_->setCheckable(true);
  menu_->addSeparator();
  numbersEntry_ = AddEntry(tr("Copy &Numbers"), {}, [this] { CopyNumbers(); });
  AddEntry(tr("&Copy Picture"), QKeySequence::Copy, [this] { CopyPicture(Extent::This); });
  AddEntry(tr("&Save Picture As..."), QKeySequence::Save, [this] { SaveByUser(Extent::This); });
  AddEntry(tr("&Print..."), QKeySequence::Print, [this] { PrintByUser(Extent::This); });
  pairEntries_ = {menu_->addSeparator(),
                  AddEntry(tr("C&opy Both"), {}, [this] { CopyPicture(Extent::Both); }),
                  AddEntry(tr("Sa&ve Both As..."), {}, [this] { SaveByUser(Extent::Both); }),
                  AddEntry(tr("P&rint Both..."), {}, [this] { PrintByUser(Extent::Both); })};
  RenewMenu();
}

// Hides entries that do not apply and sets the check mark.
void CWGraph::RenewMenu() {
  timeEntry_->setVisible(rate_.has_value());
  timeEntry_->setChecked(timeShown_);
  numbersEntry_->setVisible(NumbersToCopy && !numbers_->text().isEmpty());
  for (auto* entry : pairEntries_) entry->setVisible(linked_ != nullptr);
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

void CWGraph::SetHeading(const QString& heading, const QString& fileStem) {
  heading_ = heading;
  fileStem_ = fileStem;
}

std::vector<const CWGraph*> CWGraph::Graphs(Extent extent) const {
  if (extent == Extent::This || !linked_) return {this};
  if (isSecond_) return {linked_.data(), this};
  return {this, linked_.data()};
}

QString CWGraph::NamesOf(Extent extent) const {
  QStringList names;
  for (const auto* graph : Graphs(extent)) names << graph->accessibleName();
  const auto name = names.join(tr(" and "));
  return name.isEmpty() ? tr("Graph") : name;
}

// Pictures use the light palette, whatever the screen uses.
template <class Draw>
auto CWGraph::OnPaper(Extent extent, Draw draw) const {
  PlotPage page;
  for (const auto* graph : Graphs(extent)) {
    graph->ApplyColours(PaperPalette());
    QStringList title{graph->accessibleName()};
    if (!graph->heading_.isEmpty()) title << graph->heading_;
    page.push_back({graph->plot_, title.join(", ")});
  }
  auto result = draw(page);
  for (const auto* graph : Graphs(extent)) graph->ApplyColours(graph->palette());
  return result;
}

void CWGraph::CopyPicture(Extent extent) const {
  QGuiApplication::clipboard()->setImage(OnPaper(extent, PageImage));
}

void CWGraph::CopyNumbers() const {
  QGuiApplication::clipboard()->setText(NumbersToCopy());
}

void CWGraph::SaveByUser(Extent extent) {
  auto path = AskPicturePath((fileStem_.isEmpty() ? "" : fileStem_ + " ") + NamesOf(extent) + ".png");
  if (path.isEmpty()) return;
  if (QFileInfo(path).suffix().isEmpty()) path += QStringLiteral(".png");
  const auto bytes =
      OnPaper(extent, [&](const PlotPage& page) { return PageFile(page, QFileInfo(path).suffix()); });
  auto reason = tr("the name of a picture ends in .png, .pdf or .svg");
  if (!bytes.isEmpty() && SaveBytes(path, bytes, reason)) return;
  TellFailure(tr("The picture cannot be saved as %1: %2").arg(path, reason));
}

void CWGraph::PrintByUser(Extent extent) {
  QPrinter printer;
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(NamesOf(extent));
  if (!AskPrinter(printer)) return;
  if (OnPaper(extent, [&](const PlotPage& page) { return PrintPage(page, printer); })) return;
  const auto file = printer.outputFileName();
  TellFailure(file.isEmpty() ? tr("The printer cannot be used") : tr("%1 cannot be written").arg(file));
}

}  // namespace bexlow::platform
