// Replies of the logger, of any length, in every place that takes one.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "Target.h"
#include "config/ParameterMap.h"
#include "download/DataFile.h"
#include "link/LaunchProgress.h"
#include "link/Protocol.h"
#include "live/Conversions.h"

namespace bexlow::fuzz {

namespace {

using Reply = std::span<const std::uint8_t>;

void TryLive(Reply reply) {
  const auto words = link::AngleWords(reply);
  Require(words.has_value() == (reply.size() == 4), "four bytes are two words");
  if (words) {
    Require(std::abs(live::SampleWordToAngle(words->x, 180)) <= 180, "X is within full scale");
    Require(std::abs(live::SampleWordToAngle(words->y, 90)) <= 90, "Y is within full scale");
  }
  std::optional<link::AxisReadings> axes;
  if (!Takes([&] { axes = link::AccelerometerReadings(reply); })) return;
  Require(axes.has_value() == (reply.size() == 6), "six bytes are three readings");
  if (axes) Require(std::max({axes->x, axes->y, axes->z}) <= 32767, "a reading has 15 bits");
}

void TryHeader(Reply reply) {
  struct Row {
    bool (*fill)(Reply, download::DownloadHeader&);
    std::size_t size;
  };
  for (const auto& [fill, size] :
       {Row{download::FillFirmware, 4}, Row{download::FillHeader1, 10}, Row{download::FillHeader2, 16}}) {
    download::DownloadHeader header;
    Require(fill(reply, header) == (reply.size() == size), "a block has its own length");
    const auto text = download::DataFileHeader(download::DataFileKind::DownloadPages, "1", header, 1, 3);
    Require(LinesOf(text) == 12 && text.size() < 600, "a header has 12 lines, none of them long");
  }
}

std::uint8_t CellAt(const config::ReadArray& cells, int address) {
  int k = config::FirstIndex;
  while (config::AddressOfIndex(k) != address) ++k;
  return cells[k];
}

/// What the cells hold must go back into the same cells.
void TryCells(Reply reply) {
  config::ReadArray cells;
  std::copy_n(reply.begin(), std::min(reply.size(), cells.bytes.size()), cells.bytes.begin());
  config::OnBoardParameters parameters;
  config::BreakOut(cells, parameters);
  for (const auto& tick : config::WriteCells()) {
    const auto& row = config::Parameters[tick.row];
    if (!tick.address || row.field == nullptr) continue;
    const double value = parameters.*row.field;
    Require(std::isfinite(value), "every value is finite");
    Require(config::Encode(row.form, value)[tick.byte] == CellAt(cells, *tick.address),
            "a value goes back into its cells");
  }
  for (const auto& [row, text] : config::IdentityTexts(cells)) {
    Require(row != nullptr && !text.empty() && text.size() <= 5, "an identity is a word or a byte");
  }
}

void TryProgress(Reply reply) {
  link::LaunchProgress progress;
  for (const std::size_t byte : reply) {
    const double before = progress.ErasedPageCount;
    const bool erasing = progress.Take(byte * byte);
    Require(erasing == (byte >= 2), "fewer than four bytes are the end");
    Require(progress.ErasedPageCount >= before && progress.ErasedPageCount <= 2047, "pages rise to 2047");
  }
}

}  // namespace

void Try(std::string_view bytes) {
  const Reply reply(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  TryLive(reply);
  TryHeader(reply);
  TryCells(reply);
  TryProgress(reply);
}

}  // namespace bexlow::fuzz
