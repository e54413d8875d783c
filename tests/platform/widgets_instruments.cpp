#include <numbers>

#include "platform/Widgets.h"
#include "platform/controls/Colours.h"
#include "platform/instruments/CWKnob.h"
#include "platform/instruments/CWSlide.h"

namespace bexlow::platform {
namespace {

using test::Inf, test::Nan;

QImage Shown(QWidget& widget) { return widget.grab().toImage(); }

const auto Series = [] { return ColoursOf(QApplication::palette()).series; };

bool Holds(const Instrument& instrument, double value) {
  return std::isnan(value) ? std::isnan(instrument.Value()) : instrument.Value() == value;
}

class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QObject& watched) { watched.installEventFilter(this); }
  int paints = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint;
    return false;
  }
};

TEST(Knob, PointsWhereTheValueStands) {
  CWKnob x, y;
  y.SetScale(89.9, 0, 180);
  // The degrees on each dial are clockwise from the top.
  for (const auto& [value, onX, onY] :
       {std::tuple{0., 0, 0}, std::tuple{45., 45, 45}, std::tuple{-60., -60, -60}, std::tuple{180., 180, 90},
        std::tuple{-1e300, -180, -90}, std::tuple{Nan, 0, 0}, std::tuple{Inf, 180, 90}}) {
    SCOPED_TRACE(value);
    for (auto [knob, degrees] : {std::pair(&x, onX), std::pair(&y, onY)}) {
      knob->resize(400, 400);
      knob->Value(value);
      EXPECT_TRUE(Holds(*knob, value));
      const double angle = degrees * std::numbers::pi / 180;
      const QPointF onNeedle(std::sin(angle), -std::cos(angle));
      EXPECT_EQ(Shown(*knob).pixelColor((knob->Centre() + 0.4 * knob->Radius() * onNeedle).toPoint()),
                Series());
    }
  }
}

TEST(Knob, TheNeedlePassesNoNumber) {
  CWKnob knob;
  knob.resize(400, 400);
  const auto image = Shown(knob);
  const auto paper = QApplication::palette().color(QPalette::Base);
  for (double degrees = 20; degrees <= 340; ++degrees) {  // all around but where it points
    const auto ray = QLineF::fromPolar(0.53 * knob.Radius(), 90 - degrees).p2();
    for (double reach = 0.3; reach < 0.98; reach += 0.02)
      ASSERT_EQ(image.pixelColor((knob.Centre() + reach * ray).toPoint()), paper) << degrees << " " << reach;
  }
}

TEST(Slide, FillsUpToTheValue) {
  CWSlide slide;
  slide.resize(300, 300);
  const auto fill = [&](double value) {
    slide.Value(value);
    const auto image = Shown(slide);
    int inColour = 0;
    for (int i = 0; i < image.width() * image.height(); ++i) {
      inColour += image.pixelColor(i % image.width(), i / image.width()) == Series();
    }
    return inColour;
  };
  const int none = fill(0);
  const int all = fill(1024);
  ASSERT_GT(all, none + 500);
  for (const auto& [value, share] :
       {std::pair{256.0, 0.25}, {-7.0, 0.0}, {1e300, 1.0}, {Nan, 0.0}, {Inf, 1.0}}) {
    SCOPED_TRACE(value);
    EXPECT_NEAR(static_cast<double>(fill(value) - none) / (all - none), share, 0.03);
    EXPECT_TRUE(Holds(slide, value));
  }
}

TEST(Instruments, StandOnTheirFrameAndAreRedrawnAloneForWhatCanBeSeen) {
  QGroupBox frame("X");
  frame.resize(220, 240);
  CWKnob knob(&frame);
  knob.setGeometry(10, 30, 200, 200);
  frame.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
  QApplication::processEvents();
  QPalette dark = frame.palette();
  dark.setColor(QPalette::Window, QColor(30, 40, 50));
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  for (const auto& palette : {frame.palette(), dark}) {
    frame.setPalette(palette);
    const auto behind = Shown(frame).pixelColor(12, 32);
    knob.hide();
    EXPECT_EQ(Shown(frame).pixelColor(12, 32), behind);
    EXPECT_EQ(behind.lightness() < 80, palette == dark);
    knob.show();
    EXPECT_EQ(Shown(knob).pixelColor((knob.Centre() + QPointF(0, 40)).toPoint()),
              palette.color(QPalette::Base));
  }
  QApplication::processEvents();
  const PaintCounter ofFrame(frame), ofKnob(knob);
  for (int i = 0; i < 40; ++i) {
    knob.Value(0.001 * i);
    QApplication::processEvents();
  }
  EXPECT_EQ(ofKnob.paints, 0);
  knob.Value(90);
  QApplication::processEvents();
  EXPECT_EQ(ofKnob.paints, 1);
  EXPECT_EQ(ofFrame.paints, 0);
}

class UserSlide : public testing::Test {
 protected:
  UserSlide() {
    slide.SetReadOnly(false);
    slide.PointerValueChanged = [this](double value) { told.push_back(value); };
    slide.resize(100, 300);
    slide.show();
    slide.activateWindow();
    slide.setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&slide));
  }

  CWSlide slide;
  std::vector<double> told;
};

TEST_F(UserSlide, KeysMoveThePointerInsideTheScale) {
  for (const auto& [key, before, after] :
       {std::tuple{Qt::Key_Left, 10., 9.}, std::tuple{Qt::Key_PageUp, 10., 74.},
        std::tuple{Qt::Key_PageDown, 10., 0.}, std::tuple{Qt::Key_Home, 10., 0.},
        std::tuple{Qt::Key_End, 10., 1024.}, std::tuple{Qt::Key_Down, 5000., 1023.},
        std::tuple{Qt::Key_Up, Nan, 1.}, std::tuple{Qt::Key_Up, 10.4, 11.}}) {
    SCOPED_TRACE(key);
    slide.Value(before);
    told.clear();
    QTest::keyClick(&slide, key);
    EXPECT_EQ(slide.Value(), after);
    EXPECT_EQ(told, std::vector<double>{after});
  }
  slide.Value(0);
  told.clear();
  QTest::keyClick(&slide, Qt::Key_Down);
  EXPECT_TRUE(told.empty()) << "it stood at the end already";
}

TEST_F(UserSlide, MouseDragsToWholeValues) {
  QTest::mousePress(&slide, Qt::LeftButton, {}, QPoint(30, 150));
  QTest::mouseMove(&slide, QPoint(30, 100));
  const double higher = slide.Value();
  QTest::mouseMove(&slide, QPoint(30, -500));
  QTest::mouseRelease(&slide, Qt::LeftButton, {}, QPoint(30, -500));
  ASSERT_EQ(told.size(), 3U);
  EXPECT_LT(told[0], told[1]);
  EXPECT_EQ(higher, std::round(higher));
  EXPECT_EQ(slide.Value(), 1024);
  QTest::mouseMove(&slide, QPoint(30, 150));
  EXPECT_EQ(slide.Value(), 1024);  // the button is up
}

TEST_F(UserSlide, WheelNeedsTheFocusAndGathersPartsOfANotch) {
  slide.Value(100);
  test::Wheel(slide, 20);
  EXPECT_EQ(slide.Value(), 100);
  test::Wheel(slide, 20);
  EXPECT_EQ(slide.Value(), 101);
  slide.SetReadOnly(true);
  told.clear();
  QTest::keyClick(&slide, Qt::Key_Up);
  QTest::mouseClick(&slide, Qt::LeftButton, {}, QPoint(30, 30));
  test::Wheel(slide, 120);
  EXPECT_TRUE(told.empty()) << "the user moves no indicator";
  slide.SetReadOnly(false);
  slide.clearFocus();
  test::Wheel(slide, 120);
  EXPECT_EQ(slide.Value(), 101);
}

TEST(Instruments, AreReadAloudAndSetByAssistiveTools) {
  CWKnob knob;
  CWSlide slide;
  for (const bool settable : {false, true}) {
    slide.SetReadOnly(!settable);
    for (Instrument* instrument : {static_cast<Instrument*>(&knob), static_cast<Instrument*>(&slide)}) {
      const bool dial = instrument == &knob;
      instrument->setAccessibleName("X Axis");
      instrument->Value(12.6);
      auto* heard = QAccessible::queryAccessibleInterface(instrument);
      ASSERT_TRUE(heard && heard->valueInterface());
      EXPECT_EQ(heard->role(), dial ? QAccessible::Dial : QAccessible::Slider);
      EXPECT_EQ(heard->text(QAccessible::Name), "X Axis");
      EXPECT_EQ(heard->text(QAccessible::Value), QString::fromUtf8(dial ? "12.6°" : "13"));
      EXPECT_EQ(heard->valueInterface()->currentValue().toDouble(), 12.6);
      EXPECT_EQ(heard->valueInterface()->maximumValue().toDouble(), instrument->Maximum());
      EXPECT_EQ(heard->state().readOnly, dial || !settable);
      EXPECT_EQ(instrument->focusPolicy() != Qt::NoFocus, !dial && settable);
      heard->valueInterface()->setCurrentValue(300);
      EXPECT_EQ(instrument->Value(), dial || !settable ? 12.6 : 300);
      instrument->setEnabled(false);
      EXPECT_EQ(heard->text(QAccessible::Value), "") << "what is past is not told as a reading";
      instrument->setEnabled(true);
    }
  }
}

}  // namespace
}  // namespace bexlow::platform
