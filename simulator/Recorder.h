// Files that record what the stand-in holds, receives and sends.
#pragma once
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

#include "Options.h"
#include "Reply.h"
#include "Time.h"

namespace bexlow::simulator {

class Recorder {
 public:
  /// @throws std::system_error where a file can't be opened
  explicit Recorder(const Options& options);

  void Received(std::span<const std::uint8_t> bytes, Time now);
  void Sent(const Reply& reply, Time now);
  void Note(const char* text, Time now);

  /// Replaces each dump in one step; a dump without a path is not wanted.
  /// @throws std::system_error with the system's words
  void DumpPages(const Logger& logger) const;
  void DumpEeprom(const Logger& logger) const;

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  using File = std::unique_ptr<std::FILE, Closer>;
  static File Append(const std::string& path);
  static void Check(const File& file);

  File log_;
  File samples_;
  std::string dumpPages_;
  std::string dumpEeprom_;
};

}  // namespace bexlow::simulator
