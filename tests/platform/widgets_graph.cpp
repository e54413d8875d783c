#include <QSignalSpy>
#include <qcustomplot.h>

#include <numeric>
#include <random>

#include "platform/Widgets.h"
#include "platform/controls/Colours.h"
#include "platform/graph/CWGraph.h"

namespace bexlow::platform {
using test::Inf, test::Nan;

constexpr std::size_t FullRun = 270204;  // samples of one axis of a full logger: 2047 pages of 132

struct Graph : testing::Test {
  Graph() {
    graph.resize(900, 300);
    graph.SetXAxis(true, 0, 10);
    graph.SetYAxis(false, -180, 180);
    graph.show();
    QApplication::processEvents();
  }

  QCustomPlot& Plot() { return *graph.findChild<QCustomPlot*>(); }
  QImage Picture() {
    graph.DrawNow();
    return Plot().toPixmap(Plot().width(), Plot().height()).toImage();
  }
  QPoint PixelOf(double x, double y) {
    graph.DrawNow();
    const auto left = std::floor(Plot().xAxis->coordToPixel(x));
    return {static_cast<int>(left), qRound(Plot().yAxis->coordToPixel(y))};
  }
  QRect PlaceOfColour(const QImage& image, const QColor& colour) const {
    QRect place;
    for (int i = 0; i < image.width() * image.height(); ++i) {
      const QPoint pixel(i % image.width(), i / image.width());
      if (image.pixelColor(pixel) == colour) place |= QRect(pixel, pixel);
    }
    return place;
  }

  // A thin line is blended with the paper, but keeps over a third of its contrast; the grid has less.
  bool StandsOut(const QImage& image, QPoint place) const {
    const int paper = ColoursOf(QApplication::palette()).paper.lightness();
    const int seen = paper - (paper - series.lightness()) / 3;
    for (int i = 0; i < 9; ++i) {
      const auto near = place + QPoint(i % 3 - 1, i / 3 - 1);
      if (image.valid(near) && image.pixelColor(near).lightness() < seen) return true;
    }
    return false;
  }

  CWGraph graph;
  const QColor series = ColoursOf(QApplication::palette()).series;
};

TEST_F(Graph, EverySpikeIsSeenInEveryView) {
  std::mt19937 random(7);
  std::vector<std::int16_t> values(FullRun, 0);
  std::vector<std::size_t> spikes{0, FullRun - 1};
  while (spikes.size() < 40) spikes.push_back(random() % FullRun);
  for (const auto place : spikes) values[place] = place % 2 == 0 ? 170 : -170;
  graph.PlotY(values);
  for (int view = 0; view < 60; ++view) {
    const double spike = static_cast<double>(spikes[static_cast<std::size_t>(view) % spikes.size()]);
    const double size = 400 + std::pow(10.0, 3 + view % 3) * static_cast<double>(random() % 100) / 50;
    const double lower = spike - size * static_cast<double>(random() % 1000) / 1000;
    graph.SetXView({lower, lower + size});
    SCOPED_TRACE(testing::Message() << "sample " << spike << " in " << lower << " and " << size);
    ASSERT_TRUE(graph.XView().lower <= spike && spike <= graph.XView().upper);
    const double value = values[static_cast<std::size_t>(spike)];
    const auto tip = PixelOf(spike, value - value / 20), half = PixelOf(spike, value / 2);
    const auto picture = Picture();
    EXPECT_TRUE(StandsOut(picture, half) && StandsOut(picture, tip));
  }
}

TEST_F(Graph, TheLineRunsFromFrameToFrameAndNotOverAGap) {
  graph.PlotY(std::vector<double>(FullRun, 45));
  for (const double size : {5.0, 300.0, 20000.0}) {
    graph.SetXView({1000.5, 1000.5 + size});
    const auto middle = PixelOf(1000.5 + size / 2, 45);
    const auto area = Plot().axisRect()->rect();
    const auto picture = Picture();
    for (int x = area.left() + 1; x < area.right(); ++x)
      ASSERT_TRUE(StandsOut(picture, {x, middle.y()}) || StandsOut(picture, {x, middle.y() - 1}))
          << x << ' ' << size;
  }
  graph.PlotY(std::vector<double>{45, 45, Nan, Nan, Nan, 45, 45});
  graph.ShowAll();
  const auto middle = PixelOf(3, 45), before = PixelOf(0.5, 45);
  EXPECT_TRUE(StandsOut(Picture(), before));
  EXPECT_FALSE(StandsOut(Picture(), middle));
  graph.SetBreaks({3});
  graph.PlotY(std::vector<double>(7, 45));
  EXPECT_FALSE(StandsOut(Picture(), PixelOf(2.75, 45))) << "before it a page is missing";
  EXPECT_TRUE(StandsOut(Picture(), middle));
  std::vector<double> x, y;
  for (double seconds = 0; seconds < 30; seconds += 0.005) {
    if (seconds > 13 && y.back() == 60) x.push_back(seconds), y.push_back(Nan);
    if (seconds >= 10 && seconds <= 13) continue;
    if (seconds > 20 && seconds < 20.5) continue;
    x.push_back(seconds);
    y.push_back(seconds < 10 ? 60 : seconds <= 20 ? -60 : 0);
  }
  graph.PlotXY(x, y);
  graph.ShowAll();
  const auto dense = Picture();
  EXPECT_FALSE(StandsOut(dense, PixelOf(13, 60)) || StandsOut(dense, PixelOf(13.03, 60)))
      << "it was left at 10 s";
  EXPECT_TRUE(StandsOut(dense, PixelOf(20.25, -30))) << "a short pause is no gap";
}

// Every fourth sample lies at the other end of the scale, alone between two crossings.
TEST_F(Graph, ACrossingIsAGapAndASampleBetweenTwoIsSeen) {
  std::vector<std::int16_t> values(FullRun);
  for (std::size_t i = 0; i < FullRun; ++i) values[i] = i % 4 == 3 ? -170 : 170;
  graph.PlotY(values);
  for (const double size : {8.0, 400.0, 20000.0, FullRun - 1.0})
    for (const bool joined : {false, true}) {
      SCOPED_TRACE(testing::Message() << size << (joined ? " joined" : " with gaps"));
      graph.SetCrossing(joined ? std::nullopt : std::optional(180.0));
      graph.SetXView({1000, 1000 + size});
      const auto between = PixelOf(1002.44, 20);
      const auto picture = Picture();
      EXPECT_EQ(StandsOut(picture, between), joined);
      EXPECT_TRUE(StandsOut(picture, PixelOf(1003, -170)) && StandsOut(picture, PixelOf(1001, 170)));
    }
}

TEST_F(Graph, WhatIsDrawnIsWhatIsCounted) {
  using Drawn = std::optional<std::pair<std::size_t, std::size_t>>;
  EXPECT_EQ(graph.DrawnSamples(), Drawn());
  graph.PlotY(std::vector<double>(1000, 1));
  EXPECT_EQ(graph.DrawnSamples(), Drawn({0, 999}));
  for (const auto& [lower, upper, drawn] : {std::tuple{300., 394.99999999999994, Drawn({300, 395})},
                                            {300., 400., Drawn({299, 401})},
                                            {100., 400., Drawn({97, 403})},
                                            {299.4, 309.6, Drawn({300, 309})},
                                            {0., 5., Drawn({0, 5})}}) {
    graph.SetXView({lower, upper});
    EXPECT_EQ(graph.DrawnSamples(), drawn) << lower;
  }
}

TEST_F(Graph, TakesAnyNumbers) {
  using Row = std::tuple<std::vector<double>, double, double>;
  for (const auto& [values, firstX, stepX] :
       {Row{{}, 0, 1}, Row{{Nan, Nan}, 0, 1}, Row{{1, Nan, 2, Inf, 3}, 0, 1}, Row{{1e308, -1e308, 0}, 0, 1},
        Row{{5e-324, 0}, 0, 1}, Row{{1, 2}, 1e300, 1}, Row{{1, 2}, 0, 0}, Row{{1, 2}, Nan, Nan}}) {
    SCOPED_TRACE(testing::PrintToString(values));
    for (const auto style : {PlotStyle::Bin, PlotStyle::Linear}) {
      graph.SetPlotStyle(style);
      graph.SetXAxis(true, Nan, Inf);
      graph.SetYAxis(true, 3, 3);
      graph.PlotY(values, firstX, stepX);
      graph.DrawNow();
      EXPECT_TRUE(graph.XView().Size() > 0 && std::isfinite(graph.YView().Size()));
      EXPECT_FALSE(graph.Description().isEmpty());
    }
  }
}

TEST_F(Graph, BinsStandOnZeroAndTheOnesThatCountAreShownAndReadOut) {
  graph.SetPlotStyle(PlotStyle::Bin);
  graph.SetXAxis(false, -180, 180);
  graph.SetYAxis(true, 0, 1);
  std::vector<double> counts(361, 0);
  counts[180 + 90] = 40;
  graph.PlotY(counts, -180, 1);
  const auto top = PixelOf(90, 40), foot = PixelOf(90, 0);
  const auto bar = PlaceOfColour(Picture(), series);
  EXPECT_NEAR(bar.top(), top.y(), 2);
  EXPECT_NEAR(bar.bottom(), foot.y(), 2);
  EXPECT_NEAR(bar.center().x(), foot.x(), 2);
  EXPECT_LE(bar.width(), 5) << "bins without a count show nothing";
  for (const auto& [degree, count] : {std::pair{0U, 4}, {3U, 17}, {20U, 5}}) counts[180 + degree] = count;
  graph.PlotY(counts, -180, 1);
  for (const char* text : {"Angle 0°: count 4", "Angle 3°: count 17", "Angle 20°: count 5",
                           "Angle 90°: count 40", "Angle 90°"}) {
    QTest::keyClick(&graph, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(graph.ReadOutText().startsWith(QString::fromUtf8(text))) << text;
  }
  graph.SetXView({10, 60});
  graph.PlotY(std::vector<double>(361, 80), -180, 1);  // the next pair of pages
  EXPECT_EQ(graph.XView(), (CWGraphRange{10, 60})) << "new data keeps a fixed view";
  EXPECT_EQ(graph.YView(), (CWGraphRange{0, 80})) << "and fits an automatic one";
}

TEST_F(Graph, AsManyCursorsAsSamples) {
  graph.SetXAxis(false, 0, FullRun - 1);
  std::vector<double> places(FullRun);
  std::iota(places.begin(), places.end(), 0);
  graph.SetCursors(places);
  graph.DrawNow();
  graph.resize(1800, 300);  // each column of a plot that has grown, too
  const auto end = PixelOf(FullRun - 1, 90);
  const auto paper = ColoursOf(QApplication::palette()).paper;
  const auto image = Picture();
  for (int x = PixelOf(0, 0).x() + 1; x < end.x(); ++x) ASSERT_NE(image.pixelColor(x, end.y()), paper) << x;
}

TEST_F(Graph, CursorsAreRedLinesWithAMarkAndOneIsStressed) {
  graph.SetXAxis(false, 0, 100);
  graph.DrawNow();
  QApplication::processEvents();
  QSignalSpy drawn(&Plot(), &QCustomPlot::afterReplot);
  graph.SetCursors({75, 25, Nan, 50});
  EXPECT_TRUE(drawn.wait());
  graph.StressCursor(50);
  EXPECT_TRUE(drawn.wait());
  const auto red = ColoursOf(QApplication::palette()).mark;
  const auto picture = Picture();
  const auto reds = [&](double x, int reach) {
    int count = 0;
    for (int i = -reach; i <= reach; ++i) count += picture.pixelColor(PixelOf(x, -90) + QPoint(i, 0)) == red;
    return count;
  };
  for (const auto& [x, width] : {std::pair{25, 1}, {50, 3}, {75, 1}}) EXPECT_EQ(reds(x, 5), width) << x;
  EXPECT_EQ(reds(50, 400), 5) << "a cursor without a finite x is not drawn";
  EXPECT_EQ(picture.pixelColor(PixelOf(25, 0) + QPoint(3, 0)), red);
}

TEST_F(Graph, FollowsThePalette) {
  QPalette dark = QApplication::palette();
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  dark.setColor(QPalette::Text, QColor(70, 70, 70));
  graph.setPalette(dark);
  graph.PlotY(std::vector<double>{1, 2});
  EXPECT_EQ(Picture().pixelColor(1, 1), QColor(20, 20, 20));
  for (const auto& axisColour :
       {Plot().xAxis->tickLabelColor(), Plot().xAxis->labelColor(), ColoursOf(dark).text})
    EXPECT_GE(Contrast(axisColour, QColor(20, 20, 20)), 4.5);
  EXPECT_GE(Contrast(ColoursOf(dark).series, QColor(20, 20, 20)), 3);
  EXPECT_GE(Contrast(ColoursOf(PaperPalette()).text, Qt::white), 4.5);
}

TEST_F(Graph, TellsInWordsWhatItShows) {
  graph.setAccessibleName("X");
  auto* heard = QAccessible::queryAccessibleInterface(&graph);
  ASSERT_TRUE(heard);
  const auto words = [&] { return heard->text(QAccessible::Description).toStdString(); };
  EXPECT_TRUE(heard->role() == QAccessible::Chart && heard->text(QAccessible::Name) == "X");
  EXPECT_EQ(words(), "No data; Sample from 0 to 10; Angle (degrees) from -180 to 180");
  graph.PlotY(std::vector<std::int16_t>{3, -12, 140});
  graph.SetAxisTitles("Sample", "X angle (degrees)");
  graph.SetCursors({0});
  const std::string start =
      "3 points; Sample from 0 to 2; X angle (degrees) from -180 to 180; least value -12, greatest value "
      "140; ";
  EXPECT_EQ(words(), start + "1 cursor at 0");
  graph.SetCursors({0, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 1100, 1200});
  EXPECT_EQ(words(), start + "12 cursors at 0, 200, 300, 400, 500, 600, 700, 800, 900, 1000 and more");
  graph.SetLimit(1);
  graph.SetNumbers("in view");
  QStringList lines;
  for (int i = 0; i < heard->childCount(); ++i) lines << heard->child(i)->text(QAccessible::Name);
  EXPECT_EQ(lines, (QStringList{"in view", graph.ReadOutText()}));
}

TEST_F(Graph, TheEndsOfTheScaleAreToldInLargeLetters) {
  auto large = graph.font();
  large.setPointSize(16);
  graph.setFont(large);
  for (const double fullScale : {180.0, 90.0}) {
    graph.SetYAxis(false, -fullScale, fullScale);
    const auto end = PixelOf(graph.XView().lower, fullScale);
    const auto label = Picture().copy(QRect(end - QPoint(60, 4), QSize(40, 8)));
    EXPECT_FALSE(PlaceOfColour(label, Plot().yAxis->tickLabelColor()).isNull()) << fullScale;
  }
}

// Words that got their place only while they were drawn stayed unpainted until the next event.
TEST_F(Graph, WordsMadeWhileDrawingMoveNothing) {
  const auto& plot = *graph.findChild<QCustomPlot*>();
  const int height = plot.height();
  graph.SetLimit(1);
  ASSERT_TRUE(QTest::qWaitFor([&] { return plot.height() < height; }));
  const auto place = plot.geometry();
  graph.Moved = [&] { graph.SetNumbers("in view"); };
  graph.PlotY(std::vector<double>{1, 2});
  graph.DrawNow();
  EXPECT_EQ(graph.WordsShown().size(), 2);
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(plot.geometry(), place);
}

}  // namespace bexlow::platform
