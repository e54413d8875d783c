// A window that is painted no more often than an eye can follow.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace bexlow::platform {

/// Holds back what a window asks to have painted until a frame's time has passed since the last frame.
/// Samples come up to thousands of times a second; painting each would leave the line waiting for the screen.
class FramePace : public QObject {
  Q_OBJECT

 public:
  explicit FramePace(QWidget& window);

  /// For a chain, right behind a request: if it is time for a frame, brings the controls up to date and
  /// paints them while the reply is on the line. As long as it is called, nothing else in the window is
  /// painted in between, and live values at a slower pace.
  static void PaintWhileWaiting(const QWidget& inside, const std::function<void()>& show);
  /// Paints at once what a window owes.
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
