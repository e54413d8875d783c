// Text files, the running-copy test and the file dialog on the real file system.
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/Processes.h"
#include "platform/controls/CommonDialog.h"
#include "platform/machine/RealMachine.h"
#include "platform/machine/System.h"
#include "platform/machine/TextFile.h"

namespace bexlow::test {

namespace fs = std::filesystem;

class Files : public ::testing::Test {
 protected:
  static int ErrorOf(const std::function<void()>& action) { return FailureOf(action).code; }
  const QTemporaryDir temporary;
  const fs::path folder{temporary.path().toStdString()};
};

TEST_F(Files, NothingWaitsForTheOtherEndOfAPipe) {
  EXPECT_EQ(ErrorOf([&] { platform::ReadWhole(folder / "none"); }), ENOENT);
  const auto pipe = folder / "x.qbx";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf([&] { platform::ReadWhole(pipe); }), EINVAL);
  EXPECT_EQ(ErrorOf([&] { platform::Append(pipe, "x"); }), ENXIO);
}

// A disk that fills up in the middle of a record must not leave half of it.
TEST_F(Files, APartOfARecordIsCutBack) {
  const auto path = folder / "full.qbx";
  platform::WriteWhole(path, "whole\r\n");
  EXPECT_TRUE(InAnotherProcess([&] {
    const platform::RealMachine machine(folder);  // without this object the signal ends the program
    const rlimit limit{10, 10};
    setrlimit(RLIMIT_FSIZE, &limit);
    return ErrorOf([&] { platform::Append(path, "a record"); }) == EFBIG;
  }));
  EXPECT_EQ(platform::ReadWhole(path), "whole\r\n");
}

TEST_F(Files, ACopyThatWasKilledLeavesNoLock) {
  WithStillProcess([] { static const platform::RunningCopy copy; },
                   [] { EXPECT_TRUE(platform::RunningCopy().AnotherRuns()); });
  EXPECT_FALSE(platform::RunningCopy().AnotherRuns());
}

/// Goes so many filters down, types the name, and saves.
void Answer(int filtersDown, const char* name) {
  auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
  ASSERT_NE(dialog, nullptr);
  QTimer::singleShot(0, dialog, &QDialog::reject);  // where saving is refused the test goes on
  const auto& sizes = *dialog->findChild<QTreeView*>("treeView")->header();
  EXPECT_EQ(sizes.sortIndicatorSection(), 3);
  EXPECT_EQ(sizes.sortIndicatorOrder(), Qt::DescendingOrder) << "the newest first";
  auto* filters = dialog->findChild<QComboBox*>("fileTypeCombo");
  for (int i = 0; i < filtersDown; ++i) QTest::keyClick(filters, Qt::Key_Down);
  dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
  dialog->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Save)->click();
}

TEST_F(Files, TheFilterOnShowGivesANameItsSuffix) {
  constexpr auto Pictures = "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";
  platform::RealMachine machine("/tmp");
  using Row = std::tuple<const char*, const char*, int, const char*, int, const char*, const char*>;
  for (const auto& [what, filter, first, suffix, down, name, saved] :
       {Row{"the first filter", Pictures, 1, "png", 0, "a", "a.png"},
        Row{"another at first", Pictures, 3, "png", 0, "a", "a.svg"},
        Row{"another chosen", Pictures, 1, "png", 1, "a", "a.pdf"},
        Row{"a suffix of the user's own", Pictures, 1, "png", 2, "a.b", "a.b"},
        Row{"a filter for any name", "All Files (*.*)|*.*", 1, "qbx", 0, "a", "a.qbx"},
        Row{"no default", Pictures, 1, "", 1, "a", "a"}}) {
    SCOPED_TRACE(what);
    QTimer::singleShot(0, [&] { Answer(down, name); });
    platform::CommonDialog dialog;
    dialog.InitDir = folder;
    dialog.Filter = filter;
    dialog.FilterIndex = first;
    dialog.DefaultExt = suffix;
    dialog.Saves = true;
    EXPECT_EQ(machine.AskFile(dialog).value_or(""), folder / saved);
  }
}

}  // namespace bexlow::test
