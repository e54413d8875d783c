// Plain controls with their names: objectName for the program, accessible name for screen readers. Whoever
// includes this has the classes of the controls and of the layouts, too.
#pragma once

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>

namespace bexlow::platform {

/// A frame with a caption.
QGroupBox* MakeFrame(const char* name, const QString& caption, QWidget* parent);
/// A label; with a buddy it is read aloud as the buddy's name and brings the keyboard there.
QLabel* MakeLabel(const char* name, const QString& text, QWidget* parent, QWidget* buddy = nullptr);
/// A text box that only the program fills, without the white ground of a box to write in; it can be focused
/// and copied from.
QLineEdit* MakeReadOnlyBox(const char* name, const QString& accessibleName, QWidget* parent);
QLineEdit* MakeTextBox(const char* name, const QString& accessibleName, QWidget* parent);

/// A frame whose caption tells how far something has come, with a bar from 0 that shows no number of its own.
struct Progress {
  QGroupBox* frame;
  QProgressBar* bar;
  QHBoxLayout* line;  ///< for what stands beside the bar

  /// @param value  limited to the bar's range
  void Show(const QString& caption, double value) const;
};
/// @param caption  of the frame at first, and what the bar is called
Progress MakeProgress(const char* frame, const char* bar, const QString& caption, int maximum,
                      QWidget* parent);

inline constexpr auto Emblem = ":/bexlow.svg";
/// A drawing of the program's resources on a transparent ground.
QPixmap Drawing(const QString& resource, QSize size, double devicePixelRatio = 1);
/// A decoration.
QLabel* MakePicture(const char* name, const QString& resource, QSize size, QWidget* parent);

/// A tool tip that shows any text as it is, and reads it aloud; Qt would take some for HTML.
void SetPlainToolTip(QWidget* widget, const QString& text);

}  // namespace bexlow::platform
