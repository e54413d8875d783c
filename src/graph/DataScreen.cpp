#include "graph/DataScreen.h"

#include "platform/machine/System.h"

namespace bexlow::graph {

// A long path is scrolled to its end; the tool tip shows all of it.
DataScreen::DataScreen(const char* name, const QString& caption, bool separator)
    : Form(name, caption),
      fraFileName(platform::MakeFrame("fraFileName", "Data File", this)),
      txtFileName(platform::MakeReadOnlyBox("txtFileName", "Data File", fraFileName)) {
  auto* file = AddMenu("mnuFile", "&File");
  AddEntry(
      file, "mnuOpen", "&Open", [this] { mnuOpen_Click(); }, QKeySequence::Open);
  if (separator) file->addSeparator()->setObjectName("mnuSep");
  AddEntry(file, "mnuReturn", "&Return", [this] { Unload(); });
  (new QVBoxLayout(fraFileName))->addWidget(txtFileName);
  connect(txtFileName, &QLineEdit::textChanged, this, [this](const QString& path) {
    platform::SetPlainToolTip(txtFileName, path);
    txtFileName->end(false);
  });
}

void DataScreen::BuildBody(QWidget* besideName, QPushButton* back, QPushButton* forward) {
  auto* top = new QHBoxLayout;
  top->addWidget(fraFileName, 1);
  graphs_ = new GraphPair(this);
  if (besideName) {
    top->addWidget(besideName);
    graphs_->PageWith(back, forward);
  }
  FirstFocus(graphs_->CWGraph1);  // the boxes above it are read-only
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(graphs_, 1);
}

void DataScreen::FileName(const std::string& path) {
  fileName_ = path;
  txtFileName->setText(QString::fromStdString(path));
}

bool AskForDataFile(platform::CommonDialog& dialog) {
  dialog.InitDir = platform::DataFilesFolder().string();
  dialog.DefaultExt = "qbx";
  if (dialog.Filter.empty()) dialog.Filter = "QBX Files (*.qbx)|*.qbx";
  return dialog.ShowOpen();
}

}  // namespace bexlow::graph
