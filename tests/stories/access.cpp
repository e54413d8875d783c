// Every screen without sight or mouse: each control has a name, Tab goes in reading order.
#include "support/Story.h"

namespace bexlow::test {

// A part of a Qt control (the box within a spin box) takes the focus for the control and is no stop.
std::vector<QWidget*> Stops(QWidget& screen) {
  std::vector<QWidget*> stops;
  for (auto* next = screen.nextInFocusChain(); next != &screen; next = next->nextInFocusChain()) {
    const bool takesTab = (next->focusPolicy() & Qt::TabFocus) != 0 && !next->focusProxy();
    if (takesTab && screen.isAncestorOf(next) && next->isVisibleTo(&screen) &&
        !next->objectName().startsWith("qt_"))
      stops.push_back(next);
  }
  return stops;
}

struct AccessStory : Story {
  void Look(const char* screen) {
    SCOPED_TRACE(screen);
    machine.Pass(2s);
    machine.boxes.clear();
    ASSERT_EQ(ScreenInFront(), screen);
    auto& form = *Form::Active();
    const auto stops = Stops(form);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&form)->role() == QAccessible::Dialog, form.isWindow());
    EXPECT_TRUE(form.focusWidget() == &form || std::ranges::count(stops, form.focusWidget()) == 1)
        << "no control has the keyboard";
    for (auto* stop : stops) {
      const auto name = QAccessible::queryAccessibleInterface(stop)->text(QAccessible::Name);
      EXPECT_FALSE(name.trimmed().isEmpty()) << qPrintable(stop->objectName()) << " has no name";
    }
    for (std::size_t i = 1; i < stops.size(); ++i) {
      const auto placeOf = [&](auto* stop) { return QRect(stop->mapTo(&form, QPoint()), stop->size()); };
      const auto before = placeOf(stops[i - 1]), here = placeOf(stops[i]);
      // A stop may lie above the one before if it is in another column to the right.
      EXPECT_FALSE(here.bottom() < before.top() && here.left() <= before.right())
          << qPrintable(stops[i]->objectName()) << " comes behind " << qPrintable(stops[i - 1]->objectName());
    }
    for (const auto* frame : form.findChildren<QGroupBox*>())
      for (const auto* label : frame->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly))
        EXPECT_FALSE(label->text().isEmpty() && label->isVisibleTo(&form))
            << "an empty label is read as the caption of " << qPrintable(frame->objectName());
    for (const auto* menu : form.Menus())
      EXPECT_TRUE(menu->title().contains('&')) << menu->title().toStdString() << " has no key";
  }
  static void ExpectFirstOnWhatDoesSomething() {
    auto& form = *Form::Active();
    const auto does = [](const QWidget* stop) {
      return stop->isEnabled() && !stop->property("readOnly").toBool();
    };
    const auto* first = form.focusWidget();
    EXPECT_EQ(std::ranges::any_of(Stops(form), does), first != &form) << qPrintable(first->objectName());
    EXPECT_TRUE(does(first)) << qPrintable(first->objectName());
  }
};

TEST_F(AccessStory, EachControlHasANameAndItsTurn) {
  StartConnected();
  ServiceChord();  // offers Remote Session
  using Row = std::array<const char*, 3>;
  for (const auto& [menu, entry, screen] :
       {Row{"File", "Connect", "Connect"}, Row{"Help", "About", "About"},
        Row{"Tools", "Configuration", "Configuration"}, Row{"Tools", "Download", "DownloadErase"},
        Row{"Tools", "Graph", "Graph"}, Row{"Tools", "Graph Button Pushes", "GraphBP"},
        Row{"Tools", "Calibrate", "Calibrate"}, Row{"Display", "Accelerometers", "Accelerometers"},
        Row{"Display", "Angles", "Angles"}, Row{"Display", "Remote Session", "RemoteSession"}}) {
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
