#include <numbers>

#include "platform/Widgets.h"
#include "platform/controls/CWKnob.h"
#include "platform/controls/CWSlide.h"

namespace bexlow::platform {
namespace {

using test::Inf, test::Nan;

QImage Shown(QWidget& widget) { return widget.grab().toImage(); }

const auto Series = [] { return ColoursOf(QApplication::palette()).series; };

/// Sets any double, and it stays as it is.
void Set(auto& control, double value) {
  control.Value(value);
  EXPECT_TRUE(control.Value() == value || (std::isnan(value) && std::isnan(control.Value()))) << value;
}

struct CountedKnob : CWKnob {
  using CWKnob::CWKnob;
  void paintEvent(QPaintEvent* event) override { CWKnob::paintEvent(event), ++paints; }
  int paints = 0;
};

TEST(Knob, PointsWhereTheValueStands) {
  CWKnob x, y(nullptr, 89.9, 180);
  for (const auto& [value, onX] :
       {std::pair{0., 0}, {45., 45}, {-60., -60}, {180., 180}, {-1e300, -180}, {Nan, 0}, {Inf, 180}}) {
    for (auto [knob, degrees] : {std::pair(&x, onX), std::pair(&y, std::clamp(onX, -90, 90))}) {
      knob->resize(400, 400);
      Set(*knob, value);
      const double angle = degrees * std::numbers::pi / 180;
      const auto onNeedle = 0.4 * knob->Radius() * QPointF(std::sin(angle), -std::cos(angle));
      EXPECT_EQ(Shown(*knob).pixelColor((knob->Centre() + onNeedle).toPoint()), Series()) << value;
    }
  }
}

TEST(Knob, StandsOnItsFrameAndIsRedrawnForWhatCanBeSeen) {
  QGroupBox frame("X");
  CountedKnob knob(&frame);
  knob.setGeometry(10, 30, 200, 200);
  frame.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
  frame.setPalette(Qt::darkBlue);
  EXPECT_EQ(Shown(frame).pixelColor(12, 32), Shown(frame).pixelColor(8, 32));
  QApplication::processEvents();
  for (const auto& [value, paints] : {std::pair{0.01, 0}, {-0.04, 0}, {90.0, 1}}) {
    knob.paints = 0;
    knob.Value(value);
    QApplication::processEvents();
    EXPECT_EQ(knob.paints, paints) << value;
  }
}

TEST(Slide, FillsUpToTheValue) {
  CWSlide slide;
  slide.resize(80, 300);
  const auto fill = [&](double value) {
    Set(slide, value);
    const auto image = Shown(slide);
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) rows += image.pixelColor(11, y) == Series();
    return rows;
  };
  const double all = fill(1024);
  for (const auto& [value, share] :
       {std::pair{0., 0.}, {256.4, 0.25}, {-7., 0.}, {1e300, 1.}, {Nan, 0.}, {-Inf, 0.}, {5000., 1.}})
    EXPECT_NEAR(fill(value) / all, share, 0.01) << value;
}

TEST(Slide, HasNumbersThatDoNotTouch) {
  CWSlide slide;
  slide.Value(1024);
  slide.setEnabled(false);  // what is past has no value over the scale
  const int width = slide.minimumSizeHint().width(), room = slide.fontMetrics().horizontalAdvance("1024");
  for (const auto& [height, numbers] : {std::pair{120, 3}, {280, 5}, {600, 9}}) {
    slide.resize(width, height);
    const auto image = Shown(slide).copy(width - room, 0, room, height);
    const auto hasInk = [&](int y) { return image.copy(0, y, room, 1) != image.copy(0, 0, room, 1); };
    int seen = 0;
    for (int y = 1; y < height; ++y) seen += hasInk(y) && !hasInk(y - 1);
    EXPECT_EQ(seen, numbers) << height;
  }
}

struct UserSlide : testing::Test {
  UserSlide() {
    slide.SetReadOnly(false);
    slide.PointerValueChanged = [this](double value) { told.push_back(value); };
    slide.resize(80, 300);
    window.show();
    window.activateWindow();
    slide.setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  void Key(Qt::Key key) { QTest::keyClick(window.windowHandle(), key); }

  QWidget window;
  CWSlide slide{&window};
  std::vector<double> told;
};

TEST_F(UserSlide, AKeyMovesFromTheValueOnShowAndIsTold) {
  for (const auto& [key, before, after] :
       {std::tuple{Qt::Key_PageUp, 10., 74.}, std::tuple{Qt::Key_Up, 5000., 1024.},
        std::tuple{Qt::Key_Down, 5000., 1023.}, std::tuple{Qt::Key_Up, Nan, 1.},
        std::tuple{Qt::Key_Up, 10.4, 11.}, std::tuple{Qt::Key_Home, 0.4, 0.}}) {
    slide.Value(before);
    Key(key);
    EXPECT_EQ(slide.Value(), after) << before;
    EXPECT_EQ(std::exchange(told, {}), std::vector{after}) << "only the user's move";
  }
  Key(Qt::Key_Down);
  EXPECT_TRUE(told.empty()) << "it stood at the end already";
}

TEST_F(UserSlide, APressGoesToItsPlaceAndDrags) {
  QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, {11, 160});
  EXPECT_NEAR(slide.Value(), 512, 40);
  for (const int y : {100, -500}) QTest::mouseMove(window.windowHandle(), {11, y});
  QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, {11, -500});
  EXPECT_EQ(told.size(), 3U);
  EXPECT_EQ(slide.Value(), 1024);
}

TEST_F(UserSlide, AWheelNeedsTheFocusAndNothingMovesOneThatOnlyShows) {
  for (const int part : {20, 20}) test::Wheel(slide, part);
  slide.clearFocus();
  test::Wheel(slide, 120);
  slide.SetReadOnly(true);
  QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, {11, 30});
  Key(Qt::Key_Up);
  EXPECT_EQ(told, std::vector{1.}) << "by two parts of a notch";
  EXPECT_EQ(slide.value(), 1);
}

TEST(Instruments, AreReadAloudAndSetByAssistiveTools) {
  CWKnob knob;
  CWSlide reading, dac;
  dac.SetReadOnly(false);
  knob.Value(12.6), reading.Value(12.6), dac.Value(12.6);
  for (const auto& [control, text, set] : std::initializer_list<std::tuple<QWidget*, const char*, double>>{
           {&knob, "12.6°", 12.6}, {&reading, "12.6", 12.6}, {&dac, "12.6", 300}}) {
    auto* heard = QAccessible::queryAccessibleInterface(control);
    EXPECT_EQ(heard->text(QAccessible::Value), QString::fromUtf8(text));
    EXPECT_EQ(heard->state().readOnly, set == 12.6);
    heard->valueInterface()->setCurrentValue(300.4);
    EXPECT_EQ(heard->valueInterface()->currentValue().toDouble(), set);
  }
}

}  // namespace
}  // namespace bexlow::platform
