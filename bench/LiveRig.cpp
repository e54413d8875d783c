#include "LiveRig.h"

#include <QApplication>
#include <QEventLoop>
#include <QMouseEvent>
#include <QPushButton>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <sys/resource.h>

#include "shared/Screens.h"

namespace bexlow::bench {

namespace {

constexpr int ClickEveryMs = 40;
constexpr int TickMs = 5;

class CountedLine : public platform::SerialLine {
 public:
  CountedLine(std::unique_ptr<platform::SerialLine> line, std::int64_t& count)
      : line_(std::move(line)), count_(count) {}
  void Write(std::span<const std::uint8_t> bytes) override {
    count_ += static_cast<std::int64_t>(bytes.size());
    line_->Write(bytes);
  }

 private:
  std::unique_ptr<platform::SerialLine> line_;
  std::int64_t& count_;
};

void Spin(double seconds) {
  QEventLoop loop;
  QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, &QEventLoop::quit);
  loop.exec();
}

double CpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

CountingMachine::CountingMachine(const std::filesystem::path& folder)
    : AnsweredMachine(folder, folder / "live.csv") {
  onBox = [this](const std::string& text, platform::Buttons) {
    ++boxes;
    std::fprintf(stderr, "%s\n", text.c_str());
  };
}

std::unique_ptr<platform::SerialLine> CountingMachine::OpenSerial(
    int comm, std::function<void(platform::Bytes)> received) {
  return std::make_unique<CountedLine>(RealMachine::OpenSerial(comm, std::move(received)), requests);
}

LiveRig::LiveRig(const char* logger, const std::filesystem::path& folder, const LiveScreen& screen,
                 bool paced, bool saving)
    : standIn_(logger, folder, {"--pace", paced ? "on" : "off", "--motion", "turn"}), machine_(folder) {
  Open(screen, saving);
}

void LiveRig::Open(const LiveScreen& screen, bool saving) {
  form_ = std::string(screen.name) == "Angles" ? live::MakeAngles() : live::MakeAccelerometers();
  program_.outer.ShowChild(form_);
  program_.outer.show();
  probe_ = new QPushButton("probe", form_);
  probe_->show();
  connect(probe_, &QPushButton::clicked, this,
          [this] { clickMs_.push_back(static_cast<double>(clicked_.nsecsElapsed()) / 1e6); });
  form_->findChild<QWidget*>(std::string(screen.name) == "Angles" ? "dialX" : "SlideAccX")
      ->installEventFilter(this);
  if (saving) Trigger("mnuSave");
}

void LiveRig::Trigger(const char* entry) { form_->findChild<QAction*>(entry)->trigger(); }

bool LiveRig::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Paint) ++repaints_;
  return false;
}

// Comes after all events that wait by then, as a mouse click does.
void LiveRig::Click() {
  clicked_.start();
  const QPointF place(4, 4);
  for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
    const auto held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
    QCoreApplication::postEvent(probe_, new QMouseEvent(type, place, probe_->mapToGlobal(place),
                                                        Qt::LeftButton, held, Qt::NoModifier));
  }
}

void LiveRig::Toggle() {
  Trigger("mnuSample");
  Spin(0.3);
}

Figures LiveRig::Watch(double seconds) {
  QTimer clicks, ticks;
  connect(&clicks, &QTimer::timeout, this, [this] { Click(); });
  connect(&ticks, &QTimer::timeout, this, [this] {
    longestGapMs_ = std::max(longestGapMs_, static_cast<double>(served_.nsecsElapsed()) / 1e6 - TickMs);
    served_.start();
  });
  const auto requests = machine_.requests, repaints = repaints_;
  const double cpu = CpuSeconds();
  clickMs_.clear();
  longestGapMs_ = 0;
  served_.start();
  clicks.start(ClickEveryMs);
  ticks.setTimerType(Qt::PreciseTimer);
  ticks.start(TickMs);
  QElapsedTimer time;
  time.start();
  Spin(seconds);
  const double passed = static_cast<double>(time.nsecsElapsed()) / 1e9;
  Figures figures;
  figures.samples = machine_.requests - requests;
  figures.samplesASecond = static_cast<double>(figures.samples) / passed;
  figures.repaintsASecond = static_cast<double>(repaints_ - repaints) / passed;
  figures.cpuShare = (CpuSeconds() - cpu) / passed;
  figures.longestGapMs = longestGapMs_;
  if (clickMs_.empty() || machine_.boxes > 0)
    throw std::runtime_error("clicks went lost, or a box was shown");
  std::ranges::sort(clickMs_);
  figures.clickMsMedian = clickMs_[clickMs_.size() / 2];
  figures.clickMsMost = clickMs_.back();
  return figures;
}

double ResidentMiB() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    double size = 0;  // KiB
    if (word == "VmRSS:" && status >> size) return size / 1024;
  }
  return 0;
}

}  // namespace bexlow::bench
