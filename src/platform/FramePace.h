// A window that is painted no more often than an eye can follow.
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace bexlow::platform {

/// Holds back what a window asks to have painted until a frame's time has passed since the last frame.
/// Samples come up to thousands of times a second; painting each would leave the line waiting for the screen.
class FramePace : public QObject {
  Q_OBJECT

 public:
  explicit FramePace(QWidget& window);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void PaintWhatIsOwed();

  QWidget& window_;
  QTimer frame_;  ///< runs from a frame until the next is allowed
  bool owed_ = false;
};

}  // namespace bexlow::platform
