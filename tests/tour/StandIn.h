// The stand-in logger as a process, and what the files must hold that were downloaded from it: worked out
// here from its memory, by formulas of the tour's own.
#pragma once

#include <QProcess>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace bexlow::tour {

class StandIn {
 public:
  /// Starts it and waits until its device is there.
  /// @param more  options that come last, and so hold against the tour's own
  StandIn(const std::filesystem::path& program, const std::filesystem::path& link,
          std::filesystem::path folder, const QStringList& more = {});
  ~StandIn();

  std::array<std::uint8_t, 256> Eeprom() const;
  std::vector<std::uint8_t> Pages() const;        ///< 2048 pages of 264 bytes
  std::vector<std::vector<int>> Samples() const;  ///< the words of each live sample sent
  bool MemoryIsBlank() const;

  /// The data file of a download of what it holds now.
  std::string ExpectedDataFile() const;
  /// The points of its button pushes, in samples.
  std::vector<int> ExpectedPushes() const;

 private:
  std::string Record(int page) const;

  std::filesystem::path folder_;
  QProcess process_;
};

/// A file as bytes; empty if it cannot be read.
std::string FileText(const std::filesystem::path& path);
std::vector<std::string> LinesOf(const std::string& text);
/// Degrees of a sampled word as files and datagrams hold them, one decimal at most: .7 and -.7.
std::string AngleOfWord(int word, double fullScale);

}  // namespace bexlow::tour
