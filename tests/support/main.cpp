// The screens run offscreen, also while the build asks for its tests, and touch no running program's folder.
#include <QApplication>
#include <QTemporaryDir>

#include <clocale>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  const QTemporaryDir runtime;
  setenv("XDG_RUNTIME_DIR", runtime.path().toUtf8(), 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  for (const char* set : {"QT_SCALE_FACTOR", "QT_FONT_DPI", "QT_STYLE_OVERRIDE", "QT_QPA_PLATFORMTHEME"})
    unsetenv(set);
  const QApplication application(argc, argv);
  setlocale(LC_MESSAGES, "C");  // the tests expect the system's words in English
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
