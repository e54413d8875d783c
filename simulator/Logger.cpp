#include "Logger.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <utility>

namespace bexlow::simulator {
namespace {

using namespace std::chrono_literals;

constexpr Time RequestTimeout = 1s;  // a host pauses 12 ms within a request, on a busy machine up to this
constexpr Time LaunchQuiet = 500ms;  // a line this quiet counts as unplugged where a closing can't be seen
constexpr std::uint16_t FirmwareWord = 3300;  // thousandths: version 3.3

std::vector<std::uint8_t> WordBytes(std::span<const std::uint16_t> words) {
  std::vector<std::uint8_t> bytes;
  for (const std::uint16_t word : words) {
    bytes.push_back(static_cast<std::uint8_t>(word >> 8));
    bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
  }
  return bytes;
}

std::string Decimals(std::span<const std::uint16_t> words) {
  std::string text;
  for (const std::uint16_t word : words) {
    if (!text.empty()) text += ' ';
    text += std::to_string(word);
  }
  return text;
}

Reply Bytes(std::vector<std::uint8_t> bytes) {
  Reply reply;
  reply.bytes = std::move(bytes);
  return reply;
}

Reply Sample(std::span<const std::uint16_t> words) {
  Reply reply = Bytes(WordBytes(words));
  reply.sample = Decimals(words);
  return reply;
}

}  // namespace

std::size_t EraseStreamSize(Time eraseTime) {
  const auto looks = static_cast<std::size_t>(eraseTime / 250ms) + 4;
  return 3 * PageCount + 2 * looks;
}

Time EraseTime(Time wanted, Time byteTime) {
  const Time least = std::max(wanted, byteTime * static_cast<Time::rep>(3 * PageCount));
  return std::max(least, byteTime * static_cast<Time::rep>(EraseStreamSize(least)));
}

const Logger::Command Logger::Commands[] = {
    {'f', 0, &Logger::Ping},
    {'r', 1, &Logger::ReadEeprom},
    {'p', 2, &Logger::WriteEeprom},
    {'a', 0, &Logger::SampleAccelerometers},
    {'A', 0, &Logger::SampleAngles},
    {'d', 2, &Logger::DownloadPage},
    {'e', 0, &Logger::EraseData},
    {'X', 0, &Logger::LaunchLogging},
    {'l', 0, &Logger::ReadFirmwareVersion},
    {'m', 0, &Logger::ReadSamplingFrequency},
};

const Logger::Command* Logger::Find(std::uint8_t letter) {
  const auto* const found = std::ranges::find_if(
      Commands, [letter](const Command& row) { return row.letter == static_cast<char>(letter); });
  return found == std::end(Commands) ? nullptr : found;
}

Logger::Logger(const LoggerSetup& setup, Time start)
    : setup_(setup),
      start_(start),
      cells_(FactoryEeprom(setup.stored.linear, setup.stored.channels)),
      lastByte_(start) {
  setup_.eraseTime = EraseTime(setup.eraseTime, setup.byteTime);
  StoreRun(memory_, setup_.stored);
  WritePageZero();
}

std::optional<Reply> Logger::Take(std::uint8_t byte, Time now) {
  Advance(now);
  if (launched_ && !eraseStart_ && now - lastByte_ >= LaunchQuiet) LogLaunchedRun();
  if (now - lastByte_ > RequestTimeout) pending_.clear();
  lastByte_ = now;

  pending_.push_back(byte);
  const Command* const command = Find(pending_.front());
  if (command && pending_.size() <= command->operands) return std::nullopt;
  const auto request = std::exchange(pending_, {});
  if (!command) return std::nullopt;
  auto reply = (this->*command->answer)(Operands(request).subspan(1), now);
  if (reply) reply->command = command->letter;
  return reply;
}

void Logger::Advance(Time now) {
  if (!eraseStart_) return;
  const Time done = std::clamp(now - *eraseStart_, Time{0}, setup_.eraseTime);
  const auto pages = setup_.eraseTime.count() == 0
                         ? PageCount
                         : static_cast<std::size_t>(static_cast<double>(done.count()) * PageCount /
                                                    static_cast<double>(setup_.eraseTime.count()));
  if (pages > erasedPages_) memory_.Erase(erasedPages_, pages - erasedPages_);
  erasedPages_ = std::max(erasedPages_, pages);
  if (done < setup_.eraseTime) return;

  lastByte_ = std::max(lastByte_, *eraseStart_ + setup_.eraseTime);
  eraseStart_.reset();
  memoryChanged_ = true;
  if (launched_ && !lineOpen_) LogLaunchedRun();
}

void Logger::SetLineOpen(bool open, Time now) {
  Advance(now);
  lineOpen_ = open;
  if (!open && launched_ && !eraseStart_) LogLaunchedRun();
}

std::optional<Time> Logger::NextEvent() const {
  if (!eraseStart_) return std::nullopt;
  return *eraseStart_ + setup_.eraseTime;
}

std::optional<Reply> Logger::Ping(Operands, Time) { return Bytes({'f'}); }

std::optional<Reply> Logger::ReadEeprom(Operands operands, Time) { return Bytes({cells_[operands[0]]}); }

std::optional<Reply> Logger::WriteEeprom(Operands operands, Time) {
  cells_[operands[0]] = operands[1];
  eepromChanged_ = true;
  return std::nullopt;
}

std::optional<Reply> Logger::SampleAccelerometers(Operands, Time now) {
  return Sample(AccelerometerWords(LivePose(setup_.motion, now - start_)));
}

std::optional<Reply> Logger::SampleAngles(Operands, Time now) {
  return Sample(AngleWords(LivePose(setup_.motion, now - start_), cells_));
}

std::optional<Reply> Logger::DownloadPage(Operands operands, Time) {
  const std::size_t number = operands[0] * std::size_t{256} + operands[1];
  if (number >= PageCount) return std::nullopt;
  const auto page = memory_.Page(number);
  return Bytes({page.begin(), page.end()});
}

std::optional<Reply> Logger::EraseData(Operands, Time now) {
  eraseStart_ = now;
  erasedPages_ = 0;
  launched_ = false;
  Reply stream;
  stream.stream = true;
  // Readers ignore the values of the bytes, which just count up.
  stream.bytes.resize(EraseStreamSize(setup_.eraseTime));
  for (std::size_t n = 0; n < stream.bytes.size(); ++n) stream.bytes[n] = static_cast<std::uint8_t>(n & 0xFF);
  stream.spacing = setup_.eraseTime / static_cast<Time::rep>(stream.bytes.size());
  return stream;
}

std::optional<Reply> Logger::LaunchLogging(Operands, Time) {
  launched_ = true;
  return std::nullopt;
}

std::optional<Reply> Logger::ReadFirmwareVersion(Operands, Time) {
  return Bytes(WordBytes(std::array{FirmwareWord}));
}

std::optional<Reply> Logger::ReadSamplingFrequency(Operands, Time) {
  const std::uint16_t tenthsOfHertz = cells_[UpdateRateCell] == 75 ? 75 : 150;
  return Bytes(WordBytes(std::array{tenthsOfHertz}));
}

// Page 0 holds no samples; the stand-in keeps the serial number and the launch time there.
void Logger::WritePageZero() { std::copy_n(cells_.begin() + 100, 10, memory_.Pages(0, 1).begin()); }

void Logger::LogLaunchedRun() {
  launched_ = false;
  RunPlan run = setup_.stored;
  run.linear = cells_[ModeCell] != 0;
  run.channels = cells_[ChannelsCell];
  run.pages = setup_.runPages;
  run.seed += ++launches_;  // other samples in each run
  StoreRun(memory_, run);
  WritePageZero();
  memoryChanged_ = true;
}

}  // namespace bexlow::simulator
