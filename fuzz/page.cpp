// Pages of the logger: two bytes for mode and channels, then a page. A decoded page must come back through
// every reader of data files.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "Target.h"
#include "download/DataFile.h"
#include "download/PageDecoder.h"
#include "graph/BinPages.h"
#include "graph/Series.h"
#include "live/NumberText.h"
#include "review/ButtonPushes.h"

namespace bexlow::fuzz {

namespace {

using PageArray = std::array<std::uint8_t, download::PageBytes>;

void RequireBins(const std::string& file, const PageArray& page) {
  const auto pair = graph::FindPair(file, 1);
  Require(pair.result == graph::PairResult::Found && pair.XPoints == pair.YPoints, "both pages are found");
  for (std::size_t i = 0; i < graph::BinCount; ++i) {
    Require(pair.XPoints[i] == 256.0 * page[2 * i] + page[2 * i + 1], "a count comes back");
  }
}

void RequireAngles(const std::string& file, double channels) {
  const auto points = graph::ReadSingle(file);
  Require(points && points->size() == 2 * graph::FieldsInRecord, "every sample comes back");
  for (std::size_t i = 0; i < points->size(); ++i) {
    const int fullScale = channels == 2 || (channels == 3 && i % 2 == 1) ? 90 : 180;
    Require(std::abs((*points)[i]) <= fullScale, "no sample is above full scale");
  }
}

void RequirePushes(const std::string& file, const PageArray& page) {
  std::size_t pushes = 0;
  for (std::size_t i = 0; i < page.size(); i += 2) pushes += page[i] == 127 && page[i + 1] == 127 ? 2 : 0;
  Require(review::CheckReviewFile(file) == review::ReviewCheck::Ok, "the file is taken for review");
  review::ReviewSeries review;
  Require(review::ReadReview(file, review) && review.ButtonPushes.size() == std::max<std::size_t>(pushes, 1),
          "every push comes back");
}

}  // namespace

void Try(std::string_view bytes) {
  if (bytes.size() < 2) return;
  const double mode = bytes[0] & 3, channels = bytes[1] & 7;
  PageArray page;
  page.fill(0xFF);  // as flash memory is where it was not written
  std::ranges::copy(bytes.substr(2, page.size()), page.begin());
  Require(download::IsBlankPage(page) == (std::ranges::count(page.begin(), page.begin() + 6, 0xFF) == 6),
          "six bytes tell a blank page");
  const std::string fields = download::DecodePage(page, mode, channels);
  const bool linear = mode == 1 && channels >= 1 && channels <= 3;
  if (mode != 0 && !linear) return Require(fields.empty(), "no layout, no fields");
  const std::string file =
      download::DataFileHeader(download::DataFileKind::DownloadPages, "1", {}, mode, channels) +
      download::PageRecord(1, fields) + download::PageRecord(2, fields);
  const auto check = graph::CheckFile(file);
  Require(check.kind == (linear ? graph::FileKind::Linear : graph::FileKind::Bin), "Graph takes the file");
  if (!linear) return RequireBins(file, page);
  RequireAngles(file, channels);
  if (channels == 3) RequirePushes(file, page);
}

}  // namespace bexlow::fuzz
