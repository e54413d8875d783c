// The real file dialog, answered through its own controls.
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "platform/RealMachine.h"

namespace bexlow::test {

namespace {

constexpr auto Pictures = "PNG picture (*.png)|*.png|PDF document (*.pdf)|*.pdf|SVG drawing (*.svg)|*.svg";

// Goes so many filters down, types the name, and saves.
void Answer(int filtersDown, const char* name) {
  auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
  ASSERT_NE(dialog, nullptr);
  QTimer::singleShot(0, dialog, &QDialog::reject);  // where saving is refused the test goes on
  auto* filters = dialog->findChild<QComboBox*>("fileTypeCombo");
  for (int i = 0; i < filtersDown; ++i) QTest::keyClick(filters, Qt::Key_Down);
  dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
  dialog->findChild<QDialogButtonBox*>("buttonBox")->button(QDialogButtonBox::Save)->click();
}

}  // namespace

TEST(RealDialog, TheFilterOnShowGivesANameItsSuffix) {
  const QTemporaryDir folder;
  platform::RealMachine machine("/tmp");
  struct Row {
    const char *what, *filter;
    int first;
    const char* suffix;
    int down;
    const char *name, *saved;
  };
  for (const auto& [what, filter, first, suffix, down, name, saved] : std::vector<Row>{
           {"the first filter", Pictures, 1, "png", 0, "a", "a.png"},
           {"another at first", Pictures, 3, "png", 0, "a", "a.svg"},
           {"another chosen", Pictures, 1, "png", 1, "a", "a.pdf"},
           {"a suffix of the user's own", Pictures, 1, "png", 2, "a.b", "a.b"},
           {"a filter for any name", "All Files (*.*)|*.*", 1, "qbx", 0, "a", "a.qbx"},
           {"no default", Pictures, 1, "", 1, "a", "a"},
       }) {
    SCOPED_TRACE(what);
    QTimer::singleShot(0, [&] { Answer(down, name); });
    const auto chosen =
        machine.AskFile({true, true, folder.path().toStdString(), filter, first, suffix, {}}).value_or("");
    EXPECT_EQ(chosen, folder.filePath(saved).toStdString());
  }
}

}  // namespace bexlow::test
