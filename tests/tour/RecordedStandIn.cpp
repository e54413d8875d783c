#include "tour/RecordedStandIn.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "support/DataFiles.h"

namespace bexlow::tour {

using rig::Require;
using test::FileText;
using test::LinesOf;

namespace {

constexpr std::size_t PageSize = 264;
constexpr std::size_t ModeCell = 42;  // 0 bins, 1 samples; the channels follow

std::string TwoDigits(int value) {
  return (value < 10 ? "0" : "") + std::to_string(value);
}

/// Degrees of one decimal at most, a half to the even tenth.
std::string Tenths(double degrees) {
  const auto tenths = static_cast<long>(std::nearbyint(degrees * 10));
  const long size = std::labs(tenths);
  if (size == 0) return "0";
  std::string text = size >= 10 ? std::to_string(size / 10) : "";
  if (size % 10 != 0) text += "." + std::to_string(size % 10);
  return (tenths < 0 ? "-" : "") + text;
}

/// A stored byte: 128ths of full scale, the negative half counted down from 255.
std::string AngleOfByte(int byte, int fullScale) {
  return Tenths((byte > 128 ? byte - 255 : byte) * fullScale / 128.0);
}

QStringList RecordsIn(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  const auto file = [&](const char* name) { return QString::fromStdString((folder / name).string()); };
  return {"--dump-pages", file("pages.bin"),   "--dump-eeprom", file("eeprom.bin"),
          "--samples",    file("samples.txt"), "--log",         file("line.log")};
}

}  // namespace

std::string AngleOfWord(int word, double fullScale) {
  return Tenths((word > 32767 ? word - 65535 : word) / 32767.0 * fullScale);
}

RecordedStandIn::RecordedStandIn(const std::filesystem::path& logger, const std::filesystem::path& folder,
                                 const QStringList& options)
    : StandIn(logger, folder, RecordsIn(folder / "stand-in") + options), records_(folder / "stand-in") {}

std::array<std::uint8_t, 256> RecordedStandIn::Eeprom() const {
  const std::string bytes = FileText(records_ / "eeprom.bin");
  Require(bytes.size() == 256, "the stand-in's settings are not there");
  std::array<std::uint8_t, 256> cells{};
  std::ranges::copy(bytes, cells.begin());
  return cells;
}

std::vector<std::uint8_t> RecordedStandIn::Pages() const {
  const std::string bytes = FileText(records_ / "pages.bin");
  Require(bytes.size() == 2048 * PageSize, "the stand-in's pages are not there");
  return {bytes.begin(), bytes.end()};
}

std::vector<std::vector<int>> RecordedStandIn::Samples() const {
  std::vector<std::vector<int>> samples;
  for (const auto& line : LinesOf(FileText(records_ / "samples.txt"))) {
    std::istringstream words(line);
    auto& sample = samples.emplace_back();
    for (int word = 0; words >> word;) sample.push_back(word);
  }
  return samples;
}

bool RecordedStandIn::MemoryIsBlank() const {
  return std::ranges::all_of(Pages(), [](std::uint8_t byte) { return byte == 0xFF; });
}

std::string RecordedStandIn::Record(int page) const {
  const auto pages = Pages();
  const bool bins = Eeprom()[ModeCell] == 0;
  std::string text = std::to_string(page);
  for (std::size_t i = 0; i < PageSize; i += 2) {
    const int x = pages[static_cast<std::size_t>(page) * PageSize + i];
    const int y = pages[static_cast<std::size_t>(page) * PageSize + i + 1];
    if (bins) {
      text += "," + std::to_string(256 * x + y);
      continue;
    }
    text += x == 127 && y == 127 ? ",BP,BP" : "," + AngleOfByte(x, 180) + "," + AngleOfByte(y, 90);
  }
  return text + "\r\n";
}

std::string RecordedStandIn::ExpectedDataFile() const {
  const auto cells = Eeprom();
  const auto word = [&](std::size_t address) {
    return std::to_string(cells[address] * 256 + cells[address + 1]);
  };
  const auto triple = [&](std::size_t first) {
    return "X=" + word(first) + " Y=" + word(first + 2) + " Z=" + word(first + 4) + "\r\n";
  };
  std::string text = "Quornell Bexlow Data File Version 3.2.3\r\nDownload Pages\r\nFirmware Version: 3.3\r\n";
  text += "Serial Number: " + word(100) + "\r\nLaunch Time: " + TwoDigits(cells[109]) + "/" +
          TwoDigits(cells[103]) + "/" + word(104) + " " + TwoDigits(cells[106]) + ":" +
          TwoDigits(cells[107]) + ":" + TwoDigits(cells[108]) + "\r\nFirmware Sampling Frequency: 7.5\r\n";
  text += "Channel Gains: " + triple(2) + "Channel Offsets: " + triple(8);
  text += "Tares: X=" + word(14) + " Y=" + word(16) +
          "\r\nBin/Linear Mode = " + std::to_string(cells[ModeCell]) +
          "\r\nLinear Channel = " + std::to_string(cells[ModeCell + 1]) + "\r\n" +
          (cells[ModeCell] == 0 ? "Page,Data-->\r\n" : "Page,X Data-->,Y Data-->\r\n");
  const auto pages = Pages();
  for (int page = 1; page < 2048; ++page) {
    const auto* bytes = &pages[static_cast<std::size_t>(page) * PageSize];
    if (std::all_of(bytes, bytes + 6, [](std::uint8_t byte) { return byte == 0xFF; })) break;
    text += Record(page);
  }
  return text;
}

}  // namespace bexlow::tour
