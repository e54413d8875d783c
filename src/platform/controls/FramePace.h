// A window that is painted no more often than an eye can follow.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace bexlow::platform {

/// Delays a window's paint request until a frame's time has passed since the last frame.
/// Samples come up to thousands of times a second; painting each would leave the line waiting for the screen.
class FramePace : public QObject {
  Q_OBJECT

 public:
  explicit FramePace(QWidget& window);

  /// A chain calls this right after a request: if a frame is due, it updates the controls and paints them
  /// while the reply is on the line. As long as a chain calls it, the window is painted at no other time
  /// (except by PaintNow), and frames are longer.
  static void PaintWhileWaiting(const QWidget& inside, const std::function<void()>& show);
  /// Paints at once if a paint request of the window is delayed.
  static void PaintNow(const QWidget& window);

 private:
  static FramePace* Of(const QWidget& inside);
  bool eventFilter(QObject* watched, QEvent* event) override;
  void EndFrame();
  void PaintWhatIsOwed();
  void Paint();

  QWidget& window_;
  QElapsedTimer painted_;
  QElapsedTimer asked_;  ///< when a chain asked last
  QTimer frame_;         ///< runs from a frame until the next is allowed
  bool owed_ = false;
};

}  // namespace bexlow::platform
