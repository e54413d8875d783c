#include "support/Story.h"

#include "platform/machine/EventGate.h"

namespace bexlow::test {

Story::Story() {
  Shared = {};
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                     QString::fromStdString((machine.ProgramFolder() / "settings").string()));
}

Story::~Story() {
  for (const auto& box : machine.boxes) ADD_FAILURE() << "a box was shown that nobody expected: " << box;
  outer.reset();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(machine.AnyPortOpen()) << "a port outlived its screen";
  while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
}

void Story::Start() {
  outer = std::make_unique<shell::MDIForm1>();
  if (!outer->Load()) return;
  outer->ShowChild(shell::MakeMain(*outer));
  outer->show();
  machine.Settle();
}

void Story::StartConnected() {
  machine.Plug(logger, 1);
  Start();
  Choose("File", "Connect");
  Press("OK");
  ASSERT_TRUE(Offered("Tools", "Launch"));
  machine.wire.clear();
}

void Story::Choose(const QString& menu, const QString& entry) {
  ASSERT_TRUE(Offered(menu, entry)) << menu.toStdString() << ", " << entry.toStdString() << " is not offered";
  FindEntry(*outer, menu, entry)->trigger();
  machine.Settle();
}

void Story::Press(const QString& caption) {
  auto* button = FindButton(caption);
  ASSERT_TRUE(button != nullptr && button->isEnabled()) << caption.toStdString() << " cannot be pressed";
  button->click();
  machine.Settle();
}

void Story::Key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
  auto* form = platform::Form::Active();
  ASSERT_NE(form, nullptr);
  form->window()->activateWindow();
  QCoreApplication::processEvents();  // the keys of a screen work in the active window only
  QTest::keyClick(form->focusWidget() != nullptr ? form->focusWidget() : form, key, modifiers);
  machine.Settle();
}

std::string Story::NextBox(const std::string& text) {
  const std::string box = machine.boxes.empty() ? "no box" : machine.boxes.front();
  if (!machine.boxes.empty()) machine.boxes.pop_front();
  const bool isError = box.starts_with("The error shown below has occurred!\r\n");
  EXPECT_TRUE(box == text || (isError && Contains(box, "\r\nSource: " + text + "\r\n")))
      << "expected: " << text << "\nread: " << box;
  return box;
}

std::string Story::Text(const char* name) const {
  const auto& control = The<QWidget>(name);
  const char* property = qobject_cast<const QGroupBox*>(&control) != nullptr ? "title" : "text";
  return control.property(property).toString().toStdString();
}

void Story::Type(const char* name, const QString& text) {
  auto& control = The<QWidget>(name);
  control.setFocus();
  QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&control, Qt::Key_Delete);
  TypeInto(control, text);
  machine.Settle();
}

void Story::TypeInto(QWidget& control, const QString& text) {
  for (const QChar key : text) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(key));
    QApplication::sendEvent(&control, &press);
  }
}

void Story::ExpectProgress(const std::string& caption, int bar, const char* frame) const {
  EXPECT_EQ(Text(frame), caption);
  EXPECT_EQ(The<QProgressBar>("PBar").value(), bar);
}

void Story::Close() {
  platform::Form::Active()->close();
  machine.Settle();
}

void Story::ExpectIdle() {
  EXPECT_FALSE(PointerIsBusy());
  EXPECT_FALSE(machine.AnyPortOpen());
  const auto bytes = machine.wire.size();
  machine.Pass(30s);
  EXPECT_EQ(machine.wire.size(), bytes);
}

void Story::ChooseFile(const QString& menu, const QString& entry, const std::string& name) {
  path = DataFile(name);
  machine.WillChooseFile(path.string());
  Choose(menu, entry);
}

void Story::Open(const std::string& text) {
  WriteFile(DataFile("f.qbx"), text);
  ChooseFile("File", "Open", "f.qbx");
}

std::vector<std::string> Story::LinesAfter(int headerLines) const {
  auto lines = LinesOf(FileText(path));
  lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(headerLines, std::ssize(lines)));
  return lines;
}

}  // namespace bexlow::test
