// The pace of the settings: the real Configuration screen on the real clock against the stand-in logger.
// The times of a whole write from the stand-in's log, beside those of a bare timer in the same run; and the
// time of the reads over that of line and pauses alone.
//
// bench_write_pace LOGGER
#include <QAction>
#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <thread>

#include "Figure.h"
#include "link/Communications.h"
#include "platform/machine/System.h"
#include "rig/Rig.h"
#include "shared/Screens.h"

namespace {

using namespace bexlow;
namespace fs = std::filesystem;

constexpr double TickMs = 500;
constexpr double PauseMs = 12;
constexpr double ByteMs = 10 * 1000.0 / 19'200;
constexpr int ReadCells = 53;
constexpr int LimitMs = 60'000;

/// The 40 cells of the write; after cell 25 four ticks send nothing.
constexpr int Written[] = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21,
                           22, 23, 24, 25, 30, 31, 32, 33, 34, 42, 43, 62, 63, 64, 65, 66, 67, 68, 69, 102};
constexpr int TickOf(std::size_t cell) { return static_cast<int>(cell) + (cell < 24 ? 1 : 5); }

double NowMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

/// The screen's last message box. Each box quits the event loop.
struct Box {
  double ms = 0;
  std::string text;
};

struct Heard {
  double ms;
  int byte;
};

/// What the stand-in has heard since a moment.
std::vector<Heard> HeardSince(const fs::path& log, double since) {
  std::this_thread::sleep_for(std::chrono::milliseconds(200));  // the stand-in writes its last lines
  std::vector<Heard> heard;
  std::istringstream lines(platform::ReadWhole(log));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    double us = 0;
    std::string direction;
    if (!(words >> us >> direction) || direction != "<" || us / 1000 < since) continue;
    for (int byte = 0; words >> std::hex >> byte;) heard.push_back({us / 1000, byte});
  }
  return heard;
}

/// A bare timer of the same interval, out of step with the screen's own. Its largest error is the machine's.
class TimerNoise {
 public:
  TimerNoise() {
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
      ++ticks_;
      largest = std::max(largest, std::abs(NowMs() - start_ - ticks_ * TickMs));
    });
    QTimer::singleShot(static_cast<int>(TickMs) / 2, &timer_, [this] {
      start_ = NowMs();
      timer_.start(static_cast<int>(TickMs));
    });
  }
  double largest = 0;

 private:
  QTimer timer_;
  double start_ = 0;
  int ticks_ = 0;
};

bool RunUntil(const Box& box, const std::string& message) {
  QApplication::exec();
  if (box.text == message) return true;
  std::fprintf(stderr, "bench_write_pace: %s\n", box.text.empty() ? "no end" : box.text.c_str());
  return false;
}

void PrintRead(const char* name, double ms, double bareMs) {
  bench::PrintFigure(name, ms / bareMs, 1.05, "",
                     bench::Fixed(ms, 1) + " ms over " + bench::Fixed(bareMs, 1) + " ms");
}

/// The cells of the screen, one by one: a pause, then the address and the reply on the line.
bool MeasureRead(const Box& box, const platform::Form& screen, const fs::path& log) {
  if (!RunUntil(box, "Read completed!")) return false;
  const double start = NowMs();
  screen.findChild<QAction*>("mnuRead")->trigger();
  if (!RunUntil(box, "Read completed!")) return false;
  const auto heard = HeardSince(log, start);
  if (heard.size() != 2 * ReadCells) return false;
  PrintRead("Read of 53 cells, over its bare line time", box.ms - heard.front().ms,
            ReadCells * (PauseMs + 2 * ByteMs));
  return true;
}

/// A block waits for fixed times only; their sum is its bare time.
bool MeasureBlock(const char* figure, const link::Block& block) {
  platform::Form screen("Bench", "Bench");
  platform::MSComm comm(screen, "MSComm1");
  const double start = NowMs();
  const auto reply = link::ReadBlock(comm, screen, block);
  const double ms = NowMs() - start;
  double bareMs = block.leadPauseMs;
  for (const auto& request : block.requests) {
    bareMs += block.pauseMs;
    for (const auto& step : request) bareMs += step.pauseMs;
  }
  if (reply.size() == block.reply) PrintRead(figure, ms, bareMs);
  return reply.size() == block.reply;
}

bool PrintWrite(const std::vector<Heard>& heard, double start, double noise, const std::string& cells) {
  if (heard.size() != 3 * std::size(Written)) return false;
  double late = 0;
  double pauses = 0;
  for (std::size_t i = 0; i < std::size(Written); ++i) {
    const auto* cell = &heard[3 * i];
    const int value = static_cast<std::uint8_t>(cells[static_cast<std::size_t>(Written[i])]);
    if (cell[0].byte != 'p' || cell[1].byte != Written[i] || cell[2].byte != value) return false;
    late = std::max(late, std::abs(cell->ms - start - TickOf(i) * TickMs));
    for (int n = 0; n < 2; ++n) pauses = std::max(pauses, std::abs(cell[n + 1].ms - cell[n].ms - PauseMs));
  }
  bench::PrintFigure("Write of 40 cells, largest deviation of a request from its moment", late,
                     bench::NoLimit, " ms",
                     "a bare timer of 500 ms in the same run: " + bench::Fixed(noise, 2) +
                         " ms; every byte as it should be");
  bench::PrintFigure("Write of 40 cells, largest deviation of a pause from 12 ms", pauses, bench::NoLimit,
                     " ms", "80 pauses");
  return true;
}

bool MeasureWrite(const Box& box, const platform::Form& screen, const fs::path& folder) {
  const auto cells =
      platform::ReadWhole(folder / "cells");  // as they were read, so that they are written back
  const TimerNoise noise;
  const double start = NowMs();
  screen.findChild<QAction*>("mnuWrite")->trigger();
  return RunUntil(box, "Write completed!") &&
         PrintWrite(HeardSince(folder / "log", start), start, noise.largest, cells);
}

bool Measure(const fs::path& folder, const char* logger) {
  const auto file = [&](const char* name) { return QString::fromStdString((folder / name).string()); };
  const rig::StandIn standIn(logger, folder, {"--log", file("log"), "--dump-eeprom", file("cells")});
  rig::AnsweredMachine machine(folder);
  rig::Program program;
  Box box;
  machine.onBox = [&](const std::string& text, platform::Buttons) {
    box = {NowMs(), text};
    QApplication::quit();
  };
  auto* screen = config::MakeConfiguration();
  program.Show(screen);
  QTimer::singleShot(LimitMs, qApp, &QApplication::quit);
  return MeasureRead(box, *screen, folder / "log") && MeasureWrite(box, *screen, folder) &&
         MeasureBlock("Tare block, over its bare time", link::TareBlock()) &&
         MeasureBlock("Calibration block, over its bare time", link::CalibrationBlock());
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const rig::Scratch scratch;
  const QApplication application(argc, argv);
  if (Measure(scratch.Path(), argv[1])) return 0;
  std::fprintf(stderr, "bench_write_pace: a sequence did not go as it should\n");
  return 1;
}
