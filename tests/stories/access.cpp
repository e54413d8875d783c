// Every screen without sight or mouse: each control has a name, Tab goes in reading order.
#include "support/Story.h"

namespace bexlow::test {

// A part of a Qt control (the box within a spin box) takes the focus for the control and is no stop.
bool IsStop(const QWidget& control, const QWidget& screen) {
  return (control.focusPolicy() & Qt::TabFocus) != 0 && !control.focusProxy() &&
         control.isVisibleTo(&screen) && !control.objectName().startsWith("qt_");
}

std::vector<QWidget*> Stops(QWidget& screen) {
  std::vector<QWidget*> stops;
  for (auto* next = screen.nextInFocusChain(); next != &screen; next = next->nextInFocusChain()) {
    if (screen.isAncestorOf(next) && IsStop(*next, screen)) stops.push_back(next);
  }
  return stops;
}

struct AccessStory : Story {
  void Look(const char* screen) {
    SCOPED_TRACE(screen);
    machine.Pass(2s);
    machine.boxes.clear();
    ASSERT_EQ(ScreenInFront(), screen);
    auto& form = *platform::Form::Active();
    const auto stops = Stops(form);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&form)->role() == QAccessible::Dialog, form.isWindow());
    EXPECT_TRUE(form.focusWidget() == &form || std::ranges::count(stops, form.focusWidget()) == 1)
        << "no control has the keyboard";
    for (auto* stop : stops) {
      const auto* heard = QAccessible::queryAccessibleInterface(stop);
      EXPECT_FALSE(heard->text(QAccessible::Name).trimmed().isEmpty())
          << qPrintable(stop->objectName()) << " has no name";
    }
    const auto placeOf = [&](const QWidget& stop) { return QRect(stop.mapTo(&form, QPoint()), stop.size()); };
    for (std::size_t i = 1; i < stops.size(); ++i) {
      const auto before = placeOf(*stops[i - 1]), here = placeOf(*stops[i]);
      // A stop may lie above the one before if it is in another column to the right.
      EXPECT_FALSE(here.bottom() < before.top() && here.left() <= before.right())
          << qPrintable(stops[i]->objectName()) << " comes behind " << qPrintable(stops[i - 1]->objectName());
    }
    for (const auto* frame : form.findChildren<QGroupBox*>()) {
      for (const auto* label : frame->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        EXPECT_FALSE(label->text().isEmpty() && label->isVisibleTo(&form))
            << "an empty label is read as the caption of " << qPrintable(frame->objectName());
    }
    for (const auto* menu : form.Menus())
      EXPECT_TRUE(menu->title().contains('&')) << menu->title().toStdString() << " has no key";
  }
  static void ExpectFirstOnWhatDoesSomething() {
    auto& form = *platform::Form::Active();
    const auto onlyShows = [](const QWidget* stop) { return stop->property("readOnly").toBool(); };
    const bool haveChoice = std::ranges::any_of(
        Stops(form), [&](const auto* stop) { return stop->isEnabled() && !onlyShows(stop); });
    const auto name = form.focusWidget()->objectName().toStdString();
    EXPECT_EQ(haveChoice, form.focusWidget() != &form) << name;
    EXPECT_FALSE(onlyShows(form.focusWidget())) << name;
  }
};

TEST_F(AccessStory, EachControlHasANameAndItsTurn) {
  StartConnected();
  ServiceChord();  // offers Remote Session
  for (const auto& [menu, entry, screen] :
       {std::tuple{"File", "Connect", "Connect"}, std::tuple{"Help", "About", "About"},
        std::tuple{"Tools", "Configuration", "Configuration"},
        std::tuple{"Tools", "Download", "DownloadErase"}, std::tuple{"Tools", "Graph", "Graph"},
        std::tuple{"Tools", "Graph Button Pushes", "GraphBP"}, std::tuple{"Tools", "Calibrate", "Calibrate"},
        std::tuple{"Display", "Accelerometers", "Accelerometers"}, std::tuple{"Display", "Angles", "Angles"},
        std::tuple{"Display", "Remote Session", "RemoteSession"}}) {
    Choose(menu, entry);
    Look(screen);
    ExpectFirstOnWhatDoesSomething();
    ServiceChord();  // shows the hidden parts of some
    Look(screen);
    if (Shown("Tools", "EEPROM")) {
      Choose("Tools", "EEPROM");
      Look("EEPROM");
      Close();
    }
    Close();
    ASSERT_EQ(ScreenInFront(), "Main");
  }
}

}  // namespace bexlow::test
