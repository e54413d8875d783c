#include "rig/RecordedStandIn.h"

#include <sstream>

#include "files/DataFile.h"
#include "files/PageDecoder.h"
#include "support/DataFiles.h"

namespace bexlow::rig {

namespace {

QStringList RecordsIn(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  const auto file = [&](const char* name) { return QString::fromStdString((folder / name).string()); };
  return {"--dump-pages", file("pages.bin"),   "--dump-eeprom", file("eeprom.bin"),
          "--samples",    file("samples.txt"), "--log",         file("line.log")};
}

}  // namespace

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

}  // namespace bexlow::rig
