#include "BareLine.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "Figure.h"

namespace bexlow::bench {

namespace {

constexpr double PagePauseMs = 12;
constexpr std::size_t PageBytes = 264;

double NowMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

}  // namespace

BareLine::BareLine(const char* logger, const std::filesystem::path& folder, bool paced)
    : standIn_(logger, folder, {"--pace", paced ? "on" : "off"}),
      line_(::open((folder / "Ports/COM1").c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {
  rig::Require(line_ >= 0, "no line to the stand-in logger");
  termios raw{};
  ::tcgetattr(line_, &raw);
  ::cfmakeraw(&raw);
  ::tcsetattr(line_, TCSANOW, &raw);
}

BareLine::~BareLine() { ::close(line_); }

void BareLine::Exchange(std::initializer_list<std::uint8_t> request, std::size_t reply,
                        double pauseMs) const {
  auto due = std::chrono::steady_clock::now();
  for (const auto& byte : request) {
    if (&byte != request.begin()) due += std::chrono::microseconds(static_cast<long>(pauseMs * 1000));
    std::this_thread::sleep_until(due);
    rig::Require(::write(line_, &byte, 1) == 1, "the line takes no byte");
  }
  while (reply > 0) {
    pollfd ready{line_, POLLIN, 0};
    std::array<char, PageBytes> bytes{};
    rig::Require(::poll(&ready, 1, 1000) > 0, "the stand-in logger is silent");
    const auto count = ::read(line_, bytes.data(), std::min(reply, bytes.size()));
    if (count > 0) reply -= static_cast<std::size_t>(count);
  }
}

double BareExchanges(const BareLine& line, char request, std::size_t reply, double seconds) {
  const double start = NowMs();
  double exchanges = 0;
  for (; NowMs() - start < seconds * 1000; ++exchanges)
    line.Exchange({static_cast<std::uint8_t>(request)}, reply);
  return exchanges / seconds;
}

double BarePageMs(const BareLine& line, int pages) {
  std::vector<double> times;
  for (int page = 0; page < pages; ++page) {
    const double start = NowMs();
    line.Exchange({'d', 0, static_cast<std::uint8_t>(page)}, PageBytes, PagePauseMs);
    times.push_back(NowMs() - start);
  }
  return Median(times);
}

}  // namespace bexlow::bench
