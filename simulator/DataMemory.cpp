#include "DataMemory.h"

#include <algorithm>
#include <stdexcept>

namespace bexlow::simulator {

std::span<std::uint8_t> DataMemory::Pages(std::size_t first, std::size_t count) {
  if (first > PageCount || count > PageCount - first) throw std::out_of_range("no such page");
  return std::span(bytes_).subspan(first * PageSize, count * PageSize);
}

std::span<const std::uint8_t> DataMemory::Page(std::size_t number) const {
  if (number >= PageCount) throw std::out_of_range("no such page");
  return std::span(bytes_).subspan(number * PageSize, PageSize);
}

void DataMemory::Erase(std::size_t first, std::size_t count) {
  std::ranges::fill(Pages(first, count), ErasedByte);
}

}  // namespace bexlow::simulator
