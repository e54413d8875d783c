#include "rig/Rig.h"

#include <QAction>
#include <QApplication>
#include <QTimer>

#include <cstdlib>
#include <stdexcept>

#include "shared/Records.h"

namespace bexlow::rig {

namespace {
constexpr int PatienceMs = 20'000;  // even a machine that is building starts a process within this
}

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

Scratch::Scratch() {
  for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) setenv(name, path_.c_str(), 1);
  if (getenv("DISPLAY") == nullptr) setenv("QT_QPA_PLATFORM", "offscreen", 0);
}

StandIn::StandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                 const QStringList& options) {
  std::filesystem::create_directories(folder / "Ports");
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(QString::fromStdString(logger.string()),
                 QStringList{"--link", QString::fromStdString((folder / "Ports/COM1").string())} + options);
  Require(process_.waitForStarted(PatienceMs) && process_.waitForReadyRead(PatienceMs),
          "the stand-in logger does not start");
}

StandIn::~StandIn() {
  End();
}

void StandIn::End() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  process_.waitForFinished(PatienceMs);
}

platform::Answer AnsweredMachine::Ask(const std::string& text, platform::Buttons buttons) {
  if (onBox) onBox(text, buttons);
  if (buttons == platform::Buttons::RetryCancel) return platform::Answer::Retry;
  return buttons == platform::Buttons::YesNo ? platform::Answer::No : platform::Answer::Ok;
}

Program::Program() {
  shared::Shared = {};
  Require(outer.Load(), "the program does not start");
  shared::Shared.CurrentCommPort = 1;
}

void Program::Run(QAction* entry, int limitMs) {
  QTimer limit;
  limit.setSingleShot(true);
  QObject::connect(&limit, &QTimer::timeout, qApp, &QApplication::quit);
  limit.start(limitMs);
  QTimer::singleShot(0, entry, &QAction::trigger);
  QApplication::exec();
}

}  // namespace bexlow::rig
