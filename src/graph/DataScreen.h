// What the screens that draw a data file share: the File menu, the box for the file's name, the two graphs.
#pragma once

#include "graph/GraphPair.h"
#include "platform/controls/Form.h"
#include "platform/machine/Machine.h"
#include "platform/machine/System.h"

namespace bexlow::graph {

class DataScreen : public platform::Form {
 public:
  /// The Open action with a file that is chosen already.
  virtual void Open(const std::string& fileName) = 0;

 protected:
  /// A long path is scrolled to its end; the tool tip shows all of it.
  /// @param separator  stands between Open and Return in the File menu
  DataScreen(const char* name, const QString& caption, bool separator)
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

  /// The box for the file's name over the graphs, and a frame beside it; Page Up and Page Down press its
  /// buttons.
  void BuildBody(QWidget* besideName = nullptr, QPushButton* back = nullptr, QPushButton* forward = nullptr) {
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
  virtual void mnuOpen_Click() = 0;
  void FileName(const std::string& path) {
    fileName_ = path;
    txtFileName->setText(QString::fromStdString(path));
  }
  const std::string& FileName() const { return fileName_; }

  platform::CommonDialog CommonDialog1;
  QGroupBox* fraFileName;
  QLineEdit* txtFileName;
  GraphPair* graphs_ = nullptr;

 private:
  std::string fileName_;  ///< its bytes; a name that is no UTF-8 cannot be read back from the box
};

inline constexpr auto EndOfFileText = "End of data file has been reached!";

/// Asks for a data file; its path is then in the dialog's FileName.
/// @return false if the dialog was cancelled and its CancelError is not set
inline bool AskForDataFile(platform::CommonDialog& dialog) {
  dialog.InitDir = platform::DataFilesFolder().string();
  dialog.DefaultExt = "qbx";
  if (dialog.Filter.empty()) dialog.Filter = "QBX Files (*.qbx)|*.qbx";
  return dialog.ShowOpen();
}

}  // namespace bexlow::graph
