// Whole stories: the real screens on the virtual machine, and a user who chooses, presses and reads.
#pragma once

#include <QTest>
#include <QtWidgets>

#include "platform/controls/CWNumEdit.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/System.h"
#include "shared/Records.h"
#include "shell/MDIForm1.h"
#include "support/DataFiles.h"
#include "support/Find.h"
#include "support/VirtualLogger.h"

namespace bexlow::test {

using shared::Shared;

struct Story : ::testing::Test {
  /// Types any characters, even those that no key of the test's keyboard has.
  static void TypeInto(QWidget& control, const QString& text) {
    for (const QChar key : text) {
      QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(key));
      QApplication::sendEvent(&control, &press);
    }
  }

  Story() {
    Shared = {};
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       QString::fromStdString((machine.ProgramFolder() / "settings").string()));
  }
  ~Story() override {
    for (const auto& box : machine.boxes) ADD_FAILURE() << "a box was shown that nobody expected: " << box;
    outer.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(machine.AnyPortOpen()) << "a port outlived its screen";
    while (QApplication::overrideCursor() != nullptr) QApplication::restoreOverrideCursor();
  }

  void Start() {
    outer = std::make_unique<shell::MDIForm1>();
    if (!outer->Load()) return;
    outer->ShowChild(shell::MakeMain(*outer));
    outer->show();
    machine.Settle();
  }
  /// Starts, with the logger on a port that is selected and reached, and chooses an entry of Tools.
  void StartConnected(const QString& tool = {}) {
    machine.Plug(logger, 1);
    Start();
    Choose("File", "Connect");
    Press("OK");
    ASSERT_TRUE(Offered("Tools", "Launch"));
    machine.wire.clear();
    if (!tool.isEmpty()) Choose("Tools", tool);
  }

  /// By captions. Fails the test if the entry is not offered.
  void Choose(const QString& menu, const QString& entry) {
    ASSERT_TRUE(Offered(menu, entry)) << qPrintable(menu + ", " + entry + " is not offered");
    FindEntry(*outer, menu, entry)->trigger();
    machine.Settle();
  }
  void Press(const QString& caption) {
    auto* button = FindButton(caption);
    ASSERT_TRUE(button != nullptr && button->isEnabled()) << caption.toStdString() << " cannot be pressed";
    button->click();
    machine.Settle();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    auto* form = Form::Active();
    ASSERT_NE(form, nullptr);
    form->window()->activateWindow();
    QCoreApplication::processEvents();  // the keys of a screen work in the active window only
    QTest::keyClick(form->focusWidget() != nullptr ? form->focusWidget() : form, key, modifiers);
    machine.Settle();
  }
  void ServiceChord() { Key(Qt::Key_F11, Qt::ControlModifier); }
  /// The next boxes must have these texts, or be the error boxes with these sources. Gives the last one.
  template <class... More>
  std::string Reads(const std::string& text, const More&... more) {
    std::string box = NextBox(text);
    ((box = NextBox(more)), ...);
    return box;
  }
  bool Offered(const QString& menu, const QString& entry) const {
    return IsOffered(FindEntry(*outer, menu, entry));
  }
  /// Visible in its menu, enabled or not.
  bool Shown(const QString& menu, const QString& entry) const { return Is(&QAction::isVisible, menu, entry); }
  bool Checked(const QString& menu, const QString& entry) const {
    return Is(&QAction::isChecked, menu, entry);
  }

  std::string Text(const std::string& name) const {
    const auto title = The(name).property("title");
    return (title.isValid() ? title : The(name).property("text")).toString().toStdString();
  }
  /// Several texts, each with a bar behind it.
  template <class... Names>
  std::string Texts(const Names&... names) const {
    return ((Text(names) + "|") + ...);
  }
  std::string Status(const char* label) const {
    return outer->findChild<QLabel*>(label)->text().toStdString();
  }
  /// Types into a box, replacing what it holds, key by key.
  void Type(const std::string& name, const QString& text) {
    auto& control = The(name);
    control.setFocus();
    QTest::keyClick(&control, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&control, Qt::Key_Delete);
    TypeInto(control, text);
    machine.Settle();
  }
  static std::string ScreenInFront() {
    const auto* form = Form::Active();
    return form == nullptr ? "" : form->Name();
  }
  void Front(const char* screen) { outer->ShowChild(outer->Child(screen)); }
  static bool PointerIsBusy() { return QApplication::overrideCursor() != nullptr; }
  void Close() {
    Form::Active()->close();
    machine.Settle();
  }
  /// What a frame and the bar in it tell.
  void ExpectProgress(const std::string& caption, int bar, const char* frame = "fraProgress") const {
    EXPECT_EQ(Text(frame), caption);
    EXPECT_EQ(The<QProgressBar>("PBar").value(), bar);
  }
  /// The pointer is free, no port is open, and nothing goes out however long one waits.
  void ExpectIdle() {
    EXPECT_FALSE(PointerIsBusy() || machine.AnyPortOpen());
    const auto bytes = machine.wire.size();
    machine.Pass(30s);
    EXPECT_EQ(machine.wire.size(), bytes);
  }

  static fs::path DataFile(const std::string& name) { return DataFilesFolder() / name; }
  static void WriteFile(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
  }
  /// Chooses an entry and, in the dialog that it opens, a data file: from then on this one is `path`.
  void ChooseFile(const QString& menu, const QString& entry, const std::string& name) {
    path = DataFile(name);
    machine.WillChooseFile(path.string());
    Choose(menu, entry);
  }
  void Open(const std::string& text) {
    WriteFile(DataFile("f.qbx"), text);
    ChooseFile("File", "Open", "f.qbx");
  }
  /// The lines of `path` after its header.
  std::vector<std::string> LinesAfter(int headerLines) const {
    auto lines = LinesOf(FileText(path));
    lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(headerLines, std::ssize(lines)));
    return lines;
  }

  static ::testing::AssertionResult Contains(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << text;
  }

  VirtualMachine machine;
  VirtualLogger logger;
  std::unique_ptr<shell::MDIForm1> outer;
  fs::path path;

 private:
  bool Is(bool (QAction::*state)() const, const QString& menu, const QString& entry) const {
    const auto* action = FindEntry(*outer, menu, entry);
    return action != nullptr && (action->*state)();
  }
  std::string NextBox(const std::string& text) {
    const std::string box = machine.boxes.empty() ? "no box" : machine.boxes.front();
    if (!machine.boxes.empty()) machine.boxes.pop_front();
    const bool isError = box.starts_with("The error shown below has occurred!\r\n");
    EXPECT_TRUE(box == text || (isError && Contains(box, "\r\nSource: " + text + "\r\n")))
        << "expected: " << text << "\nread: " << box;
    return box;
  }
};

}  // namespace bexlow::test
