#include <qcustomplot.h>

#include "platform/Widgets.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/EventGate.h"

namespace bexlow::platform {
/// A page of 100 seconds is missing before sample 750.
const SampleTimes Times{
    10, [](double sample) { return sample / 10 + (sample >= 750 ? 100 : 0); },
    [](double seconds) { return std::min(seconds * 10, std::max(750., (seconds - 100) * 10)); }};

struct GraphUser : testing::Test {
  GraphUser() {
    graph.resize(900, 300);
    graph.SetXAxis(true, 0, 1);
    graph.SetYAxis(false, -180, 180);
    std::vector<std::int16_t> values;
    for (int i = 0; i <= 1000; ++i) values.push_back(static_cast<std::int16_t>(i % 100));
    graph.PlotY(values);
    graph.MenuAsked = [this](QPoint) { ++asked; };
    graph.show();
    graph.activateWindow();
    graph.setFocus();
    graph.DrawNow();
  }

  QPoint PlaceOf(double x, double y) const {
    const auto& plot = *graph.findChild<QCustomPlot*>();
    return QPointF(plot.xAxis->coordToPixel(x), plot.yAxis->coordToPixel(y)).toPoint() + plot.pos();
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

  CWGraph graph;
  int asked = 0;  ///< for the menu
};

TEST_F(GraphUser, KeysZoomAndPan) {
  using Row = std::tuple<const char*, std::vector<QKeyCombination>, CWGraphRange, CWGraphRange>;
  const auto pageDown = Qt::SHIFT | Qt::Key_PageDown;
  const CWGraphRange all{-180, 180};
  for (const auto& [what, keys, x, y] :
       {Row{"in", {Qt::Key_Plus}, {429, 571}, all}, Row{"out", {Qt::Key_Minus}, {357, 643}, all},
        Row{"y in", {Qt::CTRL | Qt::Key_Equal}, {400, 600}, {-126, 126}},
        Row{"left", {Qt::Key_Left}, {380, 580}, all}, Row{"right", {Qt::Key_Right}, {420, 620}, all},
        Row{"a page back", {Qt::Key_PageUp}, {220, 420}, all},
        Row{"to the end", std::vector(3, QKeyCombination(Qt::Key_PageDown)), {800, 1000}, all},
        Row{"up with all of y on show", {Qt::Key_Up}, {400, 600}, all},
        Row{"all", {Qt::Key_Plus, Qt::Key_Home}, {0, 1000}, all},
        Row{"about sample 300, which is read out",
            {Qt::Key_Home, Qt::SHIFT | Qt::Key_Home, pageDown, pageDown, pageDown, Qt::Key_Plus},
            {90, 790},
            all}}) {
    SCOPED_TRACE(what);
    graph.ShowAll();
    graph.SetXView({400, 600});
    for (const auto key : keys) QTest::keyClick(&graph, key.key(), key.keyboardModifiers());
    Near(graph.XView(), x, 1);
    Near(graph.YView(), y, 1);
  }
  for (int i = 0; i < 60; ++i) QTest::keyClick(&graph, Qt::Key_Plus);
  EXPECT_NEAR(graph.XView().Size(), 4, 1e-9);
  for (int i = 0; i < 60; ++i) QTest::keyClick(&graph, Qt::Key_Minus);
  Near(graph.XView(), {0, 1000}, 0);
  graph.PlotY(std::vector<double>(7920));
  QTest::keyClick(&graph, Qt::Key_End, Qt::ShiftModifier);
  for (int i = 0; i < 10; ++i) QTest::keyClick(&graph, Qt::Key_Plus);
  EXPECT_EQ(graph.XView().upper, 7919) << "about the last sample, which is read out";
}

TEST_F(GraphUser, MouseZoomsAboutThePointerAndPansToTheEnds) {
  test::Wheel(graph, 120, PlaceOf(250, 0));
  Near(graph.XView(), {50, 850});
  Near(graph.YView(), {-180, 180}, 0);
  test::Wheel(graph, 120, PlaceOf(250, 90), Qt::ControlModifier);
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
  EXPECT_EQ(asked, 0);
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
  using Row = std::pair<Qt::Key, const char*>;
  for (const auto& [key, text] :
       {Row{Qt::Key_Right, "Sample 498: 98°"}, Row{Qt::Key_Right, "Sample 499: 99°"},
        Row{Qt::Key_Left, "Sample 498: 98°"}, Row{Qt::Key_End, "Sample 1000: 0°"},
        Row{Qt::Key_Right, "Sample 1000: 0°"}, Row{Qt::Key_Home, "Sample 0: 0°"}}) {
    QTest::keyClick(&graph, key, Qt::ShiftModifier);
    EXPECT_EQ(graph.ReadOutText(), QString::fromUtf8(text));
    const double sample = graph.ReadOutText().section(' ', 1, 1).remove(':').toDouble();
    EXPECT_TRUE(graph.XView().lower <= sample && sample <= graph.XView().upper);
  }
  graph.PlotY(std::vector<double>{});
  QTest::keyClick(&graph, Qt::Key_Right, Qt::ShiftModifier);
  graph.SetPlotStyle(PlotStyle::Bin);
  graph.PlotY(std::vector<double>{0, 5, 0, 7, 0}, -2);
  for (const auto& [key, text] :
       {Row{Qt::Key_End, "Angle 1°: count 7"}, Row{Qt::Key_Home, "Angle -1°: count 5"}}) {
    QTest::keyClick(&graph, key, Qt::ShiftModifier);
    EXPECT_EQ(graph.ReadOutText(), QString::fromUtf8(text)) << "the ends hold no bin";
  }
}

TEST_F(GraphUser, MenuOpensByClickAndByKeys) {
  QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {5, 5}, graph.mapToGlobal(QPoint(5, 5)));
  for (const auto& open : std::vector<std::function<void()>>{
           [&] { QTest::mouseClick(&graph, Qt::RightButton, {}, PlaceOf(500, 0)); },
           [&] { QApplication::sendEvent(&graph, &menuKey); },
           [&] { QTest::keyClick(&graph, Qt::Key_F10, Qt::ShiftModifier); }})
    open();
  EXPECT_EQ(asked, 3);
}

TEST_F(GraphUser, TimesAreToldAndShownWhereTheyAreKnown) {
  CWGraph other;
  graph.LinkXAxis(other);
  EXPECT_FALSE(graph.HasTimes());
  for (auto* each : {&graph, &other}) each->SetSampleTimes(Times);
  QTest::keyClick(&graph, Qt::Key_End, Qt::ShiftModifier);
  EXPECT_EQ(graph.ReadOutText(), QString::fromUtf8("Sample 1000, 3 min 20 s at 10 Hz: 0°"));
  graph.ShowTime(true);
  EXPECT_TRUE(other.TimeShown());
  const QString title = "Time since launch (h:mm:ss), at 10 Hz";
  for (auto* each : {&graph, &other}) EXPECT_TRUE(each->Description().contains(title));
  EXPECT_TRUE(graph.Description().contains(title + " from 0:00:00 to 0:03:20"));
  graph.DrawNow();
  auto& axis = *graph.findChild<QCustomPlot*>()->xAxis;
  EXPECT_EQ(axis.tickVectorLabels().join(' '), "0:00:00 0:00:30 0:01:00 0:03:00") << "and none in the gap";
  EXPECT_EQ(axis.tickVector(), (QVector<double>{0, 300, 600, 800}));
  EXPECT_EQ(axis.label(), title);
  // A hundred samples a second, a pause of 1000 s between 499 and 500, and no rate.
  const auto second = [](double sample) { return sample / 100 + 1000 * std::clamp(sample - 499, 0.0, 1.0); };
  graph.SetSampleTimes(SampleTimes{0, second, [](double seconds) {
                                     if (seconds > 1005) return 100 * (seconds - 1000);
                                     return seconds < 4.99 ? 100 * seconds : 499 + (seconds - 4.99) / 1000.01;
                                   }});
  for (const auto& [view, labels] :
       {std::pair{CWGraphRange{0, 1000}, "0:00:00 0:05:00"},
        {{300, 304}, "0:00:03.00 0:00:03.01 0:00:03.02 0:00:03.03 0:00:03.04"}}) {
    graph.SetXView(view);
    graph.DrawNow();
    EXPECT_EQ(axis.tickVectorLabels().join(' '), labels);
  }
  graph.SetSampleTimes({});
  EXPECT_FALSE(graph.HasTimes());
  for (const auto& [height, x, y] :
       {std::tuple{300, "Sample", "Angle (degrees)"}, {140, "Sample", "Angle"}, {90, "", ""}}) {
    graph.resize(400, height);
    graph.DrawNow();
    const auto& yAxis = *graph.findChild<QCustomPlot*>()->yAxis;
    EXPECT_EQ(axis.label() + "|" + yAxis.label(), QString(x) + "|" + y) << height;
  }
}

TEST_F(GraphUser, APageKeyHasOneReceiver) {
  class : public QWidget {
   public:
    int keys = 0;
    void keyPressEvent(QKeyEvent*) override { ++keys; }
  } screen;
  auto* inner = new CWGraph(&screen);
  inner->PlotY(std::vector<double>(1000, 1));
  inner->LinkXAxis(graph);
  int pages = 0;
  inner->Paged = graph.Paged = [&](bool forward) { return pages += forward ? 1 : 10, pages < 11; };
  for (const auto& [key, counted, lower] :
       {std::tuple{Qt::Key_PageDown, 1, 400}, {Qt::Key_PageUp, 11, 220}, {Qt::Key_F5, 11, 220}}) {
    if (pages == 0) inner->SetXView({400, 600});
    QTest::keyClick(inner, key);
    EXPECT_EQ(std::tuple(pages, inner->XView().lower, screen.keys),
              std::tuple(counted, lower, key == Qt::Key_F5));
  }
}

TEST_F(GraphUser, TheLimitIsDraggedAndStepped) {
  int moved = 0;
  graph.Moved = [&] { ++moved; };
  graph.SetLimit(0);
  graph.DrawNow();
  EXPECT_EQ(moved, 1);
  Drag(Qt::LeftButton, PlaceOf(500, 0), PlaceOf(520, 45));
  const double limit = *graph.Limit();
  EXPECT_TRUE(std::abs(limit - 45) <= 2 && limit == std::round(limit)) << limit;
  Near(graph.XView(), {0, 1000}, 0);
  graph.DrawNow();
  EXPECT_GT(moved, 1);
  graph.SetLimit(45);
  QTest::keyClick(&graph, Qt::Key_Up, Qt::ShiftModifier);
  EXPECT_EQ(graph.Limit(), 46);
  graph.DrawNow();
  Drag(Qt::LeftButton, PlaceOf(500, 46), PlaceOf(500, 46) + QPoint(0, 20000));
  EXPECT_EQ(graph.Limit(), -180) << "held within full scale";
  QTest::keyClick(&graph, Qt::Key_Equal, Qt::ControlModifier);
  graph.DrawNow();
  Drag(Qt::LeftButton, PlaceOf(500, -180), PlaceOf(500, -100));
  EXPECT_EQ(graph.Limit(), -180) << "out of view";
}

TEST_F(GraphUser, ClicksAreToldAndMovesAreNot) {
  std::vector<double> cursors;
  int clicks = 0;
  graph.SetCursors({300});
  graph.DrawNow();
  graph.CursorClicked = [&](double x) { cursors.push_back(x); };
  graph.Clicked = [&] { ++clicks; };
  const auto click = [&](double x) { QTest::mouseClick(&graph, Qt::LeftButton, {}, PlaceOf(x, 90)); };
  graph.SetLimit(90);  // a click on the line is one, too
  click(301);
  click(400);
  Drag(Qt::LeftButton, PlaceOf(300, 90), PlaceOf(400, 90));
  EXPECT_EQ(cursors, std::vector<double>{300});
  EXPECT_EQ(clicks, 2);
  {
    const EventGate::Hold hold;
    click(300);
  }
  EXPECT_EQ(clicks, 2);
  graph.SetInteractive(false);
  click(400);
  QTest::keyClick(&graph, Qt::Key_Space);
  QTest::mouseDClick(&graph, Qt::LeftButton, {}, PlaceOf(400, 90));
  QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, " ", true);
  QApplication::sendEvent(&graph, &held);
  EXPECT_EQ(clicks, 5);
  test::Wheel(graph, 360, PlaceOf(250, 0));
  QTest::keyClick(&graph, Qt::Key_Plus);
  QTest::mouseClick(&graph, Qt::RightButton, {}, PlaceOf(500, 0));
  Near(graph.XView(), {0, 1000}, 0);
  EXPECT_EQ(asked, 0);
}

}  // namespace bexlow::platform
