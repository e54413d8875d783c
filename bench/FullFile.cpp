#include "FullFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <random>

#include "files/DataFile.h"
#include "files/Pages.h"
#include "files/RunEntry.h"
#include "values/NumberText.h"

namespace bexlow::bench {

namespace {

constexpr int Pages = 2047;
constexpr int SomePushes = 9001;  // pairs from one push to the next
constexpr int OnlyPushes = 1;
constexpr std::uint8_t Push = 127;

/// An angle as pages hold it: 128ths of full scale, negative ones counted down from 255.
std::uint8_t AngleByte(double degrees, double fullScale) {
  const long steps = std::clamp(std::lround(degrees / fullScale * 128), -100L, 100L);
  return static_cast<std::uint8_t>(steps >= 0 ? steps : 255 + steps);
}

/// Slow sway with a tremble, different on each axis and at each place.
class Wearer {
 public:
  explicit Wearer(int pairsAPush) : pairsAPush_(pairsAPush) {}
  void Fill(std::array<std::uint8_t, files::PageBytes>& page) {
    for (std::size_t i = 0; i < page.size(); i += 2, ++time_) {
      const bool pressed = time_ % pairsAPush_ == pairsAPush_ - 1;
      page[i] = pressed ? Push : AngleByte(60 * std::sin(time_ / 300.0) + tremble_(random_), 180);
      page[i + 1] = pressed ? Push : AngleByte(25 * std::sin(time_ / 170.0) + tremble_(random_), 90);
    }
  }

 private:
  std::mt19937 random_{1};
  std::normal_distribution<double> tremble_{0, 6};
  int pairsAPush_;
  int time_ = 0;
};

std::string FileOf(Wearer wearer) {
  const files::DownloadHeader header{
      "3.3", 417, "03/09/2004 14:05:07", "7.5", "X=323 Y=408 Z=322", "X=323 Y=324 Z=322", "X=0 Y=0"};
  std::string text = files::DataFileHeader(files::DataFileKind::DownloadPages, "3.2.3", header, 1, 3);
  std::array<std::uint8_t, files::PageBytes> bytes{};
  for (int page = 1; page <= Pages; ++page) {
    wearer.Fill(bytes);
    text += files::PageRecord(page, files::DecodePage(bytes, 1, 3));
  }
  return text;
}

}  // namespace

std::string FullDataFile() { return FileOf(Wearer(SomePushes)); }

std::string StuckButtonFile() { return FileOf(Wearer(OnlyPushes)); }

std::string HourRecording() {
  constexpr int SamplesASecond = 370, Samples = 3600 * SamplesASecond;
  std::string text = files::DataFileHeader(files::DataFileKind::Angles, "3.2.3", {}, 0, 0);
  values::LiveSample sample;
  for (int i = 0; i < Samples; ++i) {
    sample.AngleX = std::round(1700 * std::sin(i / 3000.0) + i % 7) / 10;
    sample.AngleY = std::round(800 * std::sin(i / 1700.0) + i % 5) / 10;
    text += files::AnglesRecord(sample, values::NumberText(std::floor(i * 100.0 / SamplesASecond) / 100));
  }
  return text;
}

void MakeRuns(const std::filesystem::path& folder, int count) {
  std::filesystem::create_directories(folder);
  const auto text = FullDataFile();
  for (int i = 0; i < count; ++i) {
    std::ofstream file(folder / ("run" + std::to_string(i) + ".qbx"), std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(files::HeadBytes));
    file.seekp(static_cast<std::streamoff>(text.size() - files::TailBytes));
    file.write(text.data() + text.size() - files::TailBytes, static_cast<std::streamsize>(files::TailBytes));
  }
}

}  // namespace bexlow::bench
