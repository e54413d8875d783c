// Mouse, wheel and keys of a graph, turned into views and read-outs.
#pragma once

#include <QObject>
#include <QPoint>

#include <functional>
#include <optional>

class QCustomPlot;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace bexlow::platform {

class CWGraphLimit;
class CWGraphOverlay;
class CWGraphReadOut;
class CWGraphView;

class CWGraphInteraction : public QObject {
 public:
  /// Watches the events of the graph. The pieces belong to the graph and live as long as it does.
  CWGraphInteraction(QWidget& graph, QCustomPlot& plot, CWGraphView& view, CWGraphReadOut& readOut,
                     CWGraphOverlay& overlay, CWGraphLimit& limit);

  /// The right button was pressed and released in one place (on the screen), or a menu key was pressed.
  std::function<void(QPoint global)> MenuWanted;
  /// The left button was pressed and released in one place. While off: pressed, or Space (in the middle).
  std::function<void(QPoint place)> Clicked;
  /// Page Up and Page Down go here first; false leaves them to the view.
  std::function<bool(bool forward)> Paged;

  /// When off, only clicks and Space are reported.
  void SwitchOn(bool on);
  bool IsOn() const { return isOn_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Drag { None, Pan, Rectangle, Limit };

  bool WhenOff(QEvent& event);
  bool Press(const QMouseEvent& event);
  bool Move(const QMouseEvent& event);
  bool Release(const QMouseEvent& event);
  bool Wheel(const QWheelEvent& event);
  bool Key(const QKeyEvent& event);
  bool OpenMenu();
  bool ShiftKey(int key);
  bool ViewKey(int key, bool withControl);
  double ZoomAnchor(bool ofY) const;
  bool Page(bool forward, bool withControl);
  void Click(QPoint place);
  void PanTo(QPoint place);
  void DragLimitTo(QPoint place);
  void ZoomIntoRectangle();
  void Cancel();
  void ShowAll();
  void Tell();

  QWidget& graph_;
  QCustomPlot& plot_;
  CWGraphView& view_;
  CWGraphReadOut& readOut_;
  CWGraphOverlay& overlay_;
  CWGraphLimit& limit_;
  bool isOn_ = true;
  Drag drag_ = Drag::None;
  QPoint from_;
  QPoint last_;
};

}  // namespace bexlow::platform
