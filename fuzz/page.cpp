// Two bytes for mode and channels, then a page, which must come back decoded through every reader.
#include "Target.h"
#include "files/Series.h"

namespace bexlow::fuzz {

using PageArray = std::array<std::uint8_t, files::PageBytes>;

void RequireBins(const std::string& file, const PageArray& page) {
  const auto pair = files::FindPair(file, 1);
  Require(pair.result == files::PairResult::Found && pair.XPoints == pair.YPoints, "both pages are found");
  for (std::size_t i = 0; i < files::BinCount; ++i)
    Require(pair.XPoints[i] == 256.0 * page[2 * i] + page[2 * i + 1], "a count comes back");
}

void RequireRun(const std::string& file, const PageArray& page, double channels) {
  files::Run single;
  const auto& points = single.XLinear;
  const bool isRead = files::ReadRun(file, 1, single);
  Require(isRead && points.size() == 2 * files::FieldsInRecord, "every sample comes back");
  std::size_t pushes = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const int fullScale = channels == 2 || (channels == 3 && i % 2 == 1) ? 90 : 180;
    Require(std::abs(points[i]) <= fullScale, "no sample is above full scale");
    const auto pair = i / 2 * 2 % page.size();
    pushes += i % 2 == 0 && page[pair] == 127 && page[pair + 1] == 127;
  }
  if (channels != 3) return;
  files::Run series;
  Require(files::HoldsPushes(file) == (pushes > 0), "a file with pushes is taken for review");
  Require(files::ReadRun(file, 3, series) && series.pushes.size() == pushes, "every push comes back");
}

void Try(std::string_view bytes) {
  if (bytes.size() < 2) return;
  const double mode = bytes[0] & 3, channels = bytes[1] & 7;
  PageArray page;
  page.fill(0xFF);  // as flash memory is where it was not written
  std::ranges::copy(bytes.substr(2, page.size()), page.begin());
  const std::string fields = files::DecodePage(page, mode, channels);
  const bool linear = mode == 1 && channels >= 1 && channels <= 3;
  if (mode != 0 && !linear) return Require(fields.empty(), "no layout, no fields");
  const std::string file =
      files::DataFileHeader(files::DataFileKind::DownloadPages, "1", {}, mode, channels) +
      files::PageRecord(1, fields) + files::PageRecord(2, fields);
  const auto check = files::CheckFile(file);
  Require(check.kind == (linear ? files::FileKind::Linear : files::FileKind::Bin), "Graph takes the file");
  linear ? RequireRun(file, page, channels) : RequireBins(file, page);
}

}  // namespace bexlow::fuzz
