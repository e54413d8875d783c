#include "platform/Widgets.h"
#include "platform/controls/CWNumEdit.h"

namespace bexlow::platform {
struct NumEdit : testing::Test {
  NumEdit() {
    edit.show();
    edit.activateWindow();
    edit.setFocus();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&edit));
  }

  void Prepare(double minimum, double maximum, int decimals, double value) {
    edit.SetLimits(minimum, maximum);
    edit.SetDecimals(decimals);
    edit.Value(value);
    edit.selectAll();
  }

  CWNumEdit edit;
};

TEST_F(NumEdit, TypingAndPastingStayInsideTheLimits) {
  for (const auto& [what, minimum, maximum, decimals, keys, value, text] :
       {std::tuple{"the limit itself", 0.0, 1024.0, 0, "1024", 1024.0, "1024"},
        {"a digit too many ends at the limit", 0, 1024, 0, "1025", 1024, "1024"},
        {"below the lower limit", 1, 255, 0, "0", 1, "1"},
        {"no sign where none fits", 0, 1024, 0, "-", 7, "7"},
        {"both sides of 0", -180, 180, 2, "-12.25", -12.25, "-12.25"},
        {"beyond the negative limit", -180, 180, 0, "-181", -180, "-180"},
        {"a comma is a point", -180, 180, 1, "1,5", 1.5, "1.5"},
        {"no exponents", 0, 1024, 0, "1e3", 13, "13"},
        {"a decimal too many is rounded", -180, 180, 3, "-20.00162", -20.002, "-20.002"},
        {"a sign alone", -90, 90, 1, "-", 7, "7.0"}}) {
    Prepare(minimum, maximum, decimals, 7);
    QTest::keyClicks(&edit, keys);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(std::tuple(edit.Value(), edit.text().toStdString()), std::tuple(value, text)) << what;
  }
  for (const auto& [pasted, value] :
       {std::pair{"512", 512}, {"51.5", 7}, {"5000", 1024}, {"-1", 7}, {"nan", 7}, {"0x10", 7}}) {
    Prepare(0, 1024, 0, 7);
    QApplication::clipboard()->setText(pasted);
    edit.findChild<QLineEdit*>()->paste();
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.Value(), value) << pasted;
  }
  const auto colour = [&] { return edit.palette().color(QPalette::Text); };
  const auto usual = colour();
  Prepare(1, 3, 0, 5000);
  EXPECT_NE(colour(), usual) << "it lies outside the limits";
  QTest::keyClick(&edit, Qt::Key_End);
  for (int i = 0; i < 4; ++i) QTest::keyClick(&edit, Qt::Key_Backspace);
  QTest::keyClicks(&edit, "2");
  EXPECT_EQ(edit.Value(), 2) << "from an assigned value outside";
  EXPECT_EQ(colour(), usual);
}

TEST_F(NumEdit, SaysWhatItRefusesUntilTheNextKey) {
  edit.setAccessibleDescription("bits");
  const auto said = [&](const char* keys) {
    Prepare(0, 1024, 0, 7);
    QTest::keyClicks(&edit, keys);
    return edit.accessibleDescription().toStdString();
  };
  for (const auto* keys : {"-", "1,", "1e", "1025"})
    EXPECT_NE(said(keys).find("0 to 1024"), std::string::npos) << keys;
  EXPECT_EQ(edit.Value(), 1024) << "also read before the box is left";
  QTest::keyClick(&edit, Qt::Key_Return);
  EXPECT_EQ(edit.accessibleDescription(), "1025 is outside 0 to 1024: the box now holds 1024");
  EXPECT_TRUE(QTest::qWaitFor([] { return QToolTip::text().startsWith("1025 is outside"); }))
      << QToolTip::text().toStdString();
  EXPECT_EQ(said("1024"), "bits");
  QTest::keyClicks(&edit, "0");
  QTest::keyClick(&edit, Qt::Key_Down);
  EXPECT_EQ(edit.Value(), 1023) << "an arrow goes on from the limit";
}

TEST_F(NumEdit, AssignedValueIsKeptToTheLastBit) {
  for (const auto& [value, text] :
       {std::pair{11.249, "11.2"}, std::pair{-3641.0 / 32767 * 180, "-20.0"}, std::pair{-0.04, "0.0"},
        std::pair{5000.75, "5000.8"}, std::pair{1e300, "1e+300"}}) {
    Prepare(-180, 180, 1, value);
    EXPECT_EQ(edit.text().toStdString(), text);
    QTest::keyClick(&edit, Qt::Key_Return);
    edit.clearFocus();
    edit.setFocus();
    edit.interpretText();
    EXPECT_EQ(std::tuple(edit.Value(), edit.text().toStdString()), std::tuple(value, text));
  }
  edit.Value(4);
  edit.Value(std::numeric_limits<double>::quiet_NaN());
  edit.Value(std::numeric_limits<double>::infinity());
  EXPECT_EQ(edit.Value(), 4);
  QTest::keyClicks(&edit, "-");
  edit.Value(4);
  EXPECT_EQ(edit.text(), "4.0") << "an assignment replaces half-typed text";
}

TEST_F(NumEdit, StepsEndAtTheLimits) {
  for (const auto& [what, before, notches, after] :
       {std::tuple{"up", 2, 1, 4}, std::tuple{"to the upper limit", 262, 1, 263},
        std::tuple{"at the upper limit", 263, 3, 263}, std::tuple{"to the lower limit", 1, -1, 0},
        std::tuple{"from above", 5000, -1, 263}, std::tuple{"from below", -40, 1, 0}}) {
    Prepare(0, 263, 0, before);
    edit.setSingleStep(2);
    test::Wheel(edit, 120 * notches);
    EXPECT_EQ(edit.Value(), after) << what;
  }
  Prepare(0, 263, 0, 10);
  for (const auto key : {Qt::ControlModifier, Qt::ShiftModifier}) test::Wheel(edit, 120, {5, 5}, key);
  edit.clearFocus();
  test::Wheel(edit, 120);
  EXPECT_EQ(edit.Value(), 10) << "a page, or without the focus";
}

}  // namespace bexlow::platform
