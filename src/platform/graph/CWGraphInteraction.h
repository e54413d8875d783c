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

class CWGraphOverlay;
class CWGraphReadOut;
class CWGraphView;

class CWGraphInteraction : public QObject {
 public:
  /// Watches the events of the graph. The pieces belong to the graph and live as long as it does.
  CWGraphInteraction(QWidget& graph, QCustomPlot& plot, CWGraphView& view, CWGraphReadOut& readOut,
                     CWGraphOverlay& overlay);

  /// The right button was pressed and released in one place (on the screen), or the menu's keys.
  std::function<void(QPoint global)> MenuWanted;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Drag { None, Pan, Rectangle };

  bool Press(const QMouseEvent& event);
  bool Move(const QMouseEvent& event);
  bool Release(const QMouseEvent& event);
  bool Wheel(const QWheelEvent& event);
  bool Key(const QKeyEvent& event);
  bool OpenMenu();
  bool ReadOutKey(int key);
  bool ViewKey(int key, bool withControl);
  void PanTo(QPoint place);
  void ZoomIntoRectangle();
  void Cancel();
  void ShowAll();
  void Tell();

  QWidget& graph_;
  QCustomPlot& plot_;
  CWGraphView& view_;
  CWGraphReadOut& readOut_;
  CWGraphOverlay& overlay_;
  Drag drag_ = Drag::None;
  QPoint from_;
  QPoint last_;
};

}  // namespace bexlow::platform
