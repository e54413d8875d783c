// The logger's data memory: 2048 pages of 264 bytes, 0xFF where erased.
#pragma once
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace bexlow::simulator {

inline constexpr std::size_t PageCount = 2048;
inline constexpr std::size_t PageSize = 264;
inline constexpr std::uint8_t ErasedByte = 0xFF;

class DataMemory {
 public:
  DataMemory() : bytes_(PageCount * PageSize, ErasedByte) {}

  /// Pages first to first + count - 1 as one run of bytes; pages outside the memory are a std::out_of_range.
  std::span<std::uint8_t> Pages(std::size_t first, std::size_t count);
  std::span<const std::uint8_t> Page(std::size_t number) const;
  std::span<const std::uint8_t> All() const { return bytes_; }
  void Erase(std::size_t first, std::size_t count);

 private:
  std::vector<std::uint8_t> bytes_;
};

}  // namespace bexlow::simulator
