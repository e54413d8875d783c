// What the screens that draw a data file share: the File menu, the box for the file's name, the two graphs.
#pragma once

#include "graph/GraphPair.h"
#include "platform/controls/Form.h"
#include "platform/machine/Machine.h"

namespace bexlow::graph {

class DataScreen : public platform::Form {
 public:
  /// The Open action with a file that is chosen already.
  virtual void Open(const std::string& fileName) = 0;

 protected:
  /// @param separator  stands between Open and Return in the File menu
  DataScreen(const char* name, const QString& caption, bool separator);

  /// The box for the file's name over the graphs, and a frame beside it; Page Up and Page Down press its
  /// buttons.
  void BuildBody(QWidget* besideName = nullptr, QPushButton* back = nullptr, QPushButton* forward = nullptr);
  virtual void mnuOpen_Click() = 0;
  void FileName(const std::string& path);
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
bool AskForDataFile(platform::CommonDialog& dialog);

}  // namespace bexlow::graph
