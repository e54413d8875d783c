// The frame with the name of the open data file, for the two screens that draw one.
#pragma once

class QLineEdit;
class QWidget;

namespace bexlow::platform {
class CommonDialog;
}

namespace bexlow::graph {

inline constexpr auto EndOfFileText = "End of data file has been reached!";

/// The frame, with the box for the name in it.
QWidget* MakeDataFileFrame(QWidget* parent, QLineEdit*& txtFileName);

/// Asks for a data file; its path is then in the dialog's FileName.
/// @return false if the dialog was cancelled and its CancelError is not set
bool AskForDataFile(platform::CommonDialog& dialog);

}  // namespace bexlow::graph
