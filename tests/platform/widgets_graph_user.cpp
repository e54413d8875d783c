#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>
#include <qcustomplot.h>

#include <gtest/gtest.h>
#include <vector>

#include "platform/controls/EventGate.h"
#include "platform/graph/CWGraph.h"

namespace bexlow::platform {
namespace {

class GraphUser : public testing::Test {
 protected:
  GraphUser() {
    graph.resize(900, 300);
    graph.SetXAxis(true, 0, 1);
    graph.SetYAxis(false, -180, 180);
    std::vector<std::int16_t> values;
    for (int i = 0; i <= 1000; ++i) values.push_back(static_cast<std::int16_t>(i % 100));
    graph.PlotY(values);
    graph.show();
    graph.activateWindow();
    graph.setFocus();
    graph.DrawNow();
  }

  QPoint PlaceOf(double x, double y) const {
    const auto& plot = *graph.findChild<QCustomPlot*>();
    return QPointF(plot.xAxis->coordToPixel(x), plot.yAxis->coordToPixel(y)).toPoint() + plot.pos();
  }
  void Wheel(QPoint place, int notches, Qt::KeyboardModifiers modifiers = {}) {
    QWheelEvent event(place, graph.mapToGlobal(QPointF(place)), {}, {0, 120 * notches}, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&graph, &event);
  }
  void Drag(Qt::MouseButton button, QPoint from, QPoint to) {
    QTest::mousePress(&graph, button, {}, from);
    QMouseEvent move(QEvent::MouseMove, to, graph.mapToGlobal(QPointF(to)), Qt::NoButton, button, {});
    QApplication::sendEvent(&graph, &move);
    QTest::mouseRelease(&graph, button, {}, to);
  }
  void Near(CWGraphRange seen, CWGraphRange wanted, double by = 4) {
    EXPECT_NEAR(seen.lower, wanted.lower, by);
    EXPECT_NEAR(seen.upper, wanted.upper, by);
  }
  QMenu& Menu() { return *graph.findChild<QMenu*>(); }
  void Choose(const QString& caption) {
    for (auto* entry : Menu().actions()) {
      if (entry->text().remove('&') == caption) return entry->trigger();
    }
    FAIL() << caption.toStdString();
  }

  CWGraph graph;
};

TEST_F(GraphUser, KeysZoomAndPan) {
  struct Keys {
    const char* what;
    std::vector<Qt::Key> keys;
    Qt::KeyboardModifiers modifiers;
    CWGraphRange x, y;
  };
  const CWGraphRange all{-180, 180};
  for (const auto& [what, keys, modifiers, x, y] :
       std::vector<Keys>{{"in", {Qt::Key_Plus}, {}, {429, 571}, all},
                         {"out", {Qt::Key_Minus}, {}, {357, 643}, all},
                         {"y in", {Qt::Key_Equal}, Qt::ControlModifier, {400, 600}, {-126, 126}},
                         {"left", {Qt::Key_Left}, {}, {380, 580}, all},
                         {"right", {Qt::Key_Right}, {}, {420, 620}, all},
                         {"a page back", {Qt::Key_PageUp}, {}, {220, 420}, all},
                         {"to the end", std::vector(3, Qt::Key_PageDown), {}, {800, 1000}, all},
                         {"up with all of y on show", {Qt::Key_Up}, {}, {400, 600}, all},
                         {"all", {Qt::Key_Plus, Qt::Key_Home}, {}, {0, 1000}, all}}) {
    SCOPED_TRACE(what);
    graph.ShowAll();
    graph.SetXView({400, 600});
    for (const auto key : keys) QTest::keyClick(&graph, key, modifiers);
    Near(graph.XView(), x, 1);
    Near(graph.YView(), y, 1);
  }
  for (int i = 0; i < 60; ++i) QTest::keyClick(&graph, Qt::Key_Plus);
  EXPECT_NEAR(graph.XView().Size(), 4, 1e-9);
  for (int i = 0; i < 60; ++i) QTest::keyClick(&graph, Qt::Key_Minus);
  Near(graph.XView(), {0, 1000}, 0);
}

TEST_F(GraphUser, MouseZoomsAboutThePointerAndPansToTheEnds) {
  Wheel(PlaceOf(250, 0), 1);
  Near(graph.XView(), {50, 850});
  Near(graph.YView(), {-180, 180}, 0);
  Wheel(PlaceOf(250, 90), 1, Qt::ControlModifier);
  Near(graph.YView(), {-126, 162});
  graph.ShowAll();
  graph.SetXView({400, 600});
  graph.DrawNow();
  Drag(Qt::LeftButton, PlaceOf(500, 0), PlaceOf(450, 0));
  Near(graph.XView(), {450, 650});
  Drag(Qt::LeftButton, PlaceOf(500, 0), PlaceOf(500, 0) + QPoint(20000, 0));
  Near(graph.XView(), {0, 200}, 0);
  QTest::mouseDClick(&graph, Qt::LeftButton, {}, PlaceOf(100, 0));
  Near(graph.XView(), {0, 1000}, 0);
}

TEST_F(GraphUser, RightButtonDrawsARectangleToZoomInto) {
  Drag(Qt::RightButton, PlaceOf(200, 90), PlaceOf(400, -45));
  Near(graph.XView(), {200, 400});
  Near(graph.YView(), {-45, 90});
  EXPECT_FALSE(Menu().isVisible());
  graph.ShowAll();
  graph.DrawNow();
  QTest::mousePress(&graph, Qt::RightButton, {}, PlaceOf(200, 90));
  QTest::mouseMove(&graph, PlaceOf(400, -45));
  QTest::keyClick(&graph, Qt::Key_Escape);
  QTest::mouseRelease(&graph, Qt::RightButton, {}, PlaceOf(400, -45));
  Near(graph.XView(), {0, 1000}, 0);
}

TEST_F(GraphUser, PointerAndKeysReadOut) {
  QTest::mouseMove(&graph, PlaceOf(0, 0));
  QTest::mouseMove(&graph, PlaceOf(250, 0));
  EXPECT_TRUE(graph.ReadOutText().startsWith("Sample 2")) << graph.ReadOutText().toStdString();
  QTest::keyClick(&graph, Qt::Key_Escape);
  graph.SetXView({496, 500});
  graph.DrawNow();
  for (const auto& [key, text] : {std::pair{Qt::Key_Right, "Sample 498: 98°"},
                                  {Qt::Key_Right, "Sample 499: 99°"},
                                  {Qt::Key_Left, "Sample 498: 98°"},
                                  {Qt::Key_End, "Sample 1000: 0°"},
                                  {Qt::Key_Right, "Sample 1000: 0°"},
                                  {Qt::Key_Home, "Sample 0: 0°"}}) {
    QTest::keyClick(&graph, key, Qt::ShiftModifier);
    EXPECT_EQ(graph.ReadOutText(), QString::fromUtf8(text));
    const double sample = graph.ReadOutText().section(' ', 1, 1).remove(':').toDouble();
    EXPECT_TRUE(graph.XView().lower <= sample && sample <= graph.XView().upper);
  }
  graph.PlotY(std::vector<double>{});
  QTest::keyClick(&graph, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(graph.ReadOutText(), "");
}

TEST_F(GraphUser, BinsReadOutTheOnesThatCount) {
  std::vector<double> counts(361, 0);
  counts[180] = 4;
  counts[183] = 17;
  graph.SetPlotStyle(PlotStyle::Bin);
  graph.SetXAxis(false, -180, 180);
  graph.PlotY(counts, -180, 1);
  for (const char* text : {"Angle 0°: count 4", "Angle 3°: count 17", "Angle 3°: count 17"}) {
    QTest::keyClick(&graph, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(graph.ReadOutText(), QString::fromUtf8(text));
  }
}

TEST_F(GraphUser, MenuOpensByClickAndByKeys) {
  const auto opens = [&] {
    const bool visible = Menu().isVisible();
    Menu().close();
    return visible;
  };
  QTest::mouseClick(&graph, Qt::RightButton, {}, PlaceOf(500, 0));
  EXPECT_TRUE(opens());
  QContextMenuEvent key(QContextMenuEvent::Keyboard, {5, 5}, graph.mapToGlobal(QPoint(5, 5)));
  QApplication::sendEvent(&graph, &key);
  EXPECT_TRUE(opens());
  QTest::keyClick(&graph, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(opens());
}

TEST_F(GraphUser, MenuCopiesSavesAndTellsFailures) {
  const QTemporaryDir folder;
  QString chosen;
  QStringList told;
  graph.setAccessibleName("X");
  graph.AskPicturePath = [&](const QString& suggested) {
    EXPECT_EQ(suggested, "X.png");
    return chosen;
  };
  graph.TellFailure = [&](const QString& reason) { told << reason; };
  graph.AskPrinter = [](QPrinter&) { return false; };
  Choose("Save Picture As...");  // thought better of it
  chosen = folder.filePath("plain");
  Choose("Save Picture As...");
  EXPECT_TRUE(QFile::exists(folder.filePath("plain.png")));
  EXPECT_TRUE(told.isEmpty());
  chosen = folder.filePath("none/a.png");
  Choose("Save Picture As...");
  ASSERT_EQ(told.size(), 1);
  EXPECT_TRUE(told.front().contains("a.png"));
  Choose("Print...");
  graph.AskPrinter = [&](QPrinter& printer) {
    printer.setOutputFileName(chosen);
    return true;
  };
  Choose("Print...");
  ASSERT_EQ(told.size(), 2);
  EXPECT_TRUE(told.back().contains("a.png"));
  chosen = folder.filePath("paper.pdf");
  Choose("Print...");
  QFile paper(chosen);
  ASSERT_TRUE(paper.open(QIODevice::ReadOnly));
  EXPECT_EQ(paper.readAll().count("/Type /Page\n"), 1);
  EXPECT_EQ(told.size(), 2);
  Choose("Copy Picture");
  EXPECT_EQ(QApplication::clipboard()->image().size(), graph.Picture().size());
  graph.SetXView({10, 90});
  {
    const EventGate::Hold hold;
    Choose("Show All");  // a screen reader's press, while a handler runs or a box is open
    Near(graph.XView(), {10, 90}, 0);
  }
  Choose("Show All");
  Near(graph.XView(), {0, 1000}, 0);
}

}  // namespace
}  // namespace bexlow::platform
