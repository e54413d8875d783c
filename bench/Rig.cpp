#include "Rig.h"

#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace bexlow::bench {

namespace {
constexpr int PatienceMs = 5000;
}

Scratch::Scratch() {
  char folder[] = "/tmp/bexlow-bench-XXXXXX";
  if (mkdtemp(folder) == nullptr) throw std::system_error(errno, std::generic_category(), folder);
  path_ = folder;
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) setenv(name, folder, 1);
  if (getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
}

Scratch::~Scratch() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

StandIn::StandIn(const char* logger, const std::filesystem::path& folder, const QStringList& options) {
  std::filesystem::create_directories(folder / "Ports");
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(logger,
                 QStringList{"--link", QString::fromStdString((folder / "Ports/COM1").string())} + options);
  if (!process_.waitForStarted(PatienceMs) || !process_.waitForReadyRead(PatienceMs))
    throw std::runtime_error("the stand-in logger does not start");
}

StandIn::~StandIn() {
  End();
}

void StandIn::End() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  process_.waitForFinished(PatienceMs);
}

}  // namespace bexlow::bench
