#include "rig/Rig.h"

#include <QApplication>
#include <QTimer>

#include "files/Pages.h"
#include "shared/Records.h"
#include "support/DataFiles.h"

namespace bexlow::rig {

constexpr int PatienceMs = 20'000;  // even a machine that is building starts a process within this

QStringList RecordsIn(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  const auto file = [&](const char* name) { return QString::fromStdString((folder / name).string()); };
  return {"--dump-pages", file("pages.bin"),   "--dump-eeprom", file("eeprom.bin"),
          "--samples",    file("samples.txt"), "--log",         file("line.log")};
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

StandIn::~StandIn() { End(); }

void StandIn::End() {
  if (process_.state() == QProcess::NotRunning) return;
  process_.terminate();
  process_.waitForFinished(PatienceMs);
}

RecordedStandIn::RecordedStandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                                 const QStringList& options)
    : StandIn(logger, folder, RecordsIn(folder / "stand-in") + options), records_(folder / "stand-in") {}

std::vector<std::uint8_t> RecordedStandIn::Dump(const char* name, std::size_t size) const {
  const std::string bytes = test::FileText(records_ / name);
  Require(bytes.size() == size, std::string("the stand-in has not written ") + name);
  return {bytes.begin(), bytes.end()};
}

std::vector<std::vector<int>> RecordedStandIn::Samples() const {
  std::vector<std::vector<int>> samples;
  for (const auto& line : test::LinesOf(test::FileText(records_ / "samples.txt"))) {
    std::istringstream words(line);
    auto& sample = samples.emplace_back();
    for (int word = 0; words >> word;) sample.push_back(word);
  }
  return samples;
}

std::string RecordedStandIn::ExpectedDataFile() const {
  using namespace files;
  const auto cells = Eeprom(), pages = Pages();
  const int mode = cells[42], channels = cells[43];
  DownloadHeader header;
  header.FirmwareVersionText = "3.3";
  header.SamplingFrequencyText = "7.5";
  FillHeader1(std::span(cells).subspan(100, 10), header);
  FillHeader2(std::span(cells).subspan(2, 16), header);
  auto text = DataFileHeader(DataFileKind::DownloadPages, "3.2.3", header, mode, channels);
  for (int n = 1; n < 2048; ++n) {
    const Page page(&pages[static_cast<std::size_t>(n) * PageBytes], PageBytes);
    if (IsBlankPage(page)) break;
    text += PageRecord(n, DecodePage(page, mode, channels));
  }
  return text;
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
