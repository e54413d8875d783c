// The screens run on the offscreen platform, also while the build asks which tests there are. The runtime
// folder and the settings are a scratch folder, so that neither a running program nor the user's settings are
// touched.
#include <QApplication>
#include <QStandardPaths>

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  char scratch[] = "/tmp/bexlow-runtime-XXXXXX";
  setenv("XDG_RUNTIME_DIR", mkdtemp(scratch), 1);
  setenv("QT_QPA_PLATFORM", "offscreen", 0);
  const QApplication application(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  std::filesystem::remove_all(scratch);
  return result;
}
