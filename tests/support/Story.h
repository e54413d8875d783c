// Whole stories: the real screens on the virtual machine, and a user who chooses, presses and reads.
#pragma once

#include <QTest>
#include <QtWidgets>

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/controls/CWNumEdit.h"
#include "platform/graph/CWGraph.h"
#include "platform/machine/System.h"
#include "platform/machine/TextFile.h"
#include "shared/Records.h"
#include "shell/MDIForm1.h"
#include "support/DataFiles.h"
#include "support/Find.h"
#include "support/VirtualLogger.h"

namespace bexlow::test {

using shared::Shared;
using namespace std::chrono_literals;

struct Story : ::testing::Test {
  /// Types any characters, even those that no key of the test's keyboard has.
  static void TypeInto(QWidget& control, const QString& text);

  Story();
  ~Story() override;

  void Start();
  /// Starts, with the logger on a port that is selected and reached.
  void StartConnected();

  /// By captions. Fails the test if the entry is not offered.
  void Choose(const QString& menu, const QString& entry);
  void Press(const QString& caption);
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
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

  std::string Text(const char* name) const;
  /// A label of the status line.
  std::string Status(const char* label) const {
    return outer->findChild<QLabel*>(label)->text().toStdString();
  }
  /// Types into a box, replacing what it holds, key by key.
  void Type(const char* name, const QString& text);
  static std::string ScreenInFront() {
    const auto* form = platform::Form::Active();
    return form == nullptr ? "" : form->Name();
  }
  void Front(const char* screen) { outer->ShowChild(outer->Child(screen)); }
  static bool PointerIsBusy() { return QApplication::overrideCursor() != nullptr; }
  void Close();
  /// What a frame and the bar in it tell.
  void ExpectProgress(const std::string& caption, int bar, const char* frame = "fraProgress") const;
  /// The pointer is free, no port is open, and nothing goes out however long one waits.
  void ExpectIdle();

  static std::filesystem::path DataFile(const std::string& name) {
    return platform::DataFilesFolder() / name;
  }
  static void WriteFile(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
  }
  /// Chooses an entry and, in the dialog that it opens, a data file: from then on this one is `path`.
  void ChooseFile(const QString& menu, const QString& entry, const std::string& name);
  /// Opens a data file of this text.
  void Open(const std::string& text);
  /// The lines of `path` after its header.
  std::vector<std::string> LinesAfter(int headerLines) const;

  static ::testing::AssertionResult Contains(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << text;
  }

  VirtualMachine machine;
  VirtualLogger logger;
  std::unique_ptr<shell::MDIForm1> outer;
  std::filesystem::path path;

 private:
  bool Is(bool (QAction::*state)() const, const QString& menu, const QString& entry) const {
    const auto* action = FindEntry(*outer, menu, entry);
    return action != nullptr && (action->*state)();
  }
  std::string NextBox(const std::string& text);
};

}  // namespace bexlow::test
