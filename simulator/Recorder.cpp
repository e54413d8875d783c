#include "Recorder.h"

#include <cerrno>
#include <system_error>

namespace bexlow::simulator {
namespace {

long long Microseconds(Time now) {
  return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}

[[noreturn]] void Fail(const std::string& path) {
  throw std::system_error(errno, std::generic_category(), path);
}

void Replace(const std::string& path, std::span<const std::uint8_t> bytes) {
  if (path.empty()) return;
  const std::string fresh = path + ".new";
  std::FILE* const file = std::fopen(fresh.c_str(), "wb");
  if (!file) Fail(fresh);
  const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  if (std::fclose(file) != 0 || !written) Fail(fresh);
  if (std::rename(fresh.c_str(), path.c_str()) != 0) Fail(path);
}

}  // namespace

Recorder::Recorder(const Options& options)
    : log_(Append(options.log)),
      samples_(Append(options.samples)),
      dumpPages_(options.dumpPages),
      dumpEeprom_(options.dumpEeprom) {}

Recorder::File Recorder::Append(const std::string& path) {
  if (path.empty()) return nullptr;
  File file(std::fopen(path.c_str(), "ab"));
  if (!file) Fail(path);
  std::setvbuf(file.get(), nullptr, _IOLBF, 1 << 12);  // a whole line at a time, seen at once
  return file;
}

// Lines are written as they end, so a full disk shows at once.
void Recorder::Check(const File& file) {
  if (file && std::ferror(file.get())) Fail("log or samples");
}

void Recorder::Received(std::span<const std::uint8_t> bytes, Time now) {
  if (!log_) return;
  std::fprintf(log_.get(), "%lld <", Microseconds(now));
  for (const unsigned byte : bytes) std::fprintf(log_.get(), " %02X", byte);
  std::fputc('\n', log_.get());
  Check(log_);
}

void Recorder::Sent(const Reply& reply, Time now) {
  if (samples_ && !reply.sample.empty()) std::fprintf(samples_.get(), "%s\n", reply.sample.c_str());
  if (log_) std::fprintf(log_.get(), "%lld > %zu bytes\n", Microseconds(now), reply.bytes.size());
  Check(samples_);
  Check(log_);
}

void Recorder::Note(const char* text, Time now) {
  if (log_) std::fprintf(log_.get(), "%lld %s\n", Microseconds(now), text);
  Check(log_);
}

void Recorder::DumpPages(const Logger& logger) const { Replace(dumpPages_, logger.Memory().All()); }

void Recorder::DumpEeprom(const Logger& logger) const { Replace(dumpEeprom_, logger.Cells()); }

}  // namespace bexlow::simulator
