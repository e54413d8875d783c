#include "graph/DataFileFrame.h"

#include <QVBoxLayout>

#include "platform/controls/CommonDialog.h"
#include "platform/controls/Controls.h"
#include "platform/machine/Folders.h"

namespace bexlow::graph {

// A long path is scrolled to its end; the tool tip shows all of it.
QWidget* MakeDataFileFrame(QWidget* parent, QLineEdit*& txtFileName) {
  auto* frame = platform::MakeFrame("fraFileName", "Data File", parent);
  auto* box = platform::MakeReadOnlyBox("txtFileName", "Data File", frame);
  QObject::connect(box, &QLineEdit::textChanged, box, [box](const QString& path) {
    platform::SetPlainToolTip(box, path);
    box->end(false);
  });
  auto* layout = new QVBoxLayout(frame);
  layout->addWidget(box);
  txtFileName = box;
  return frame;
}

bool AskForDataFile(platform::CommonDialog& dialog) {
  dialog.InitDir = platform::DataFilesFolder().string();
  dialog.DefaultExt = "qbx";
  if (dialog.Filter.empty()) dialog.Filter = "QBX Files (*.qbx)|*.qbx";
  return dialog.ShowOpen();
}

}  // namespace bexlow::graph
