#include "link/LaunchProgress.h"

#include <algorithm>

#include "link/Protocol.h"
#include "values/Conversions.h"

namespace bexlow::link {

namespace {
constexpr std::size_t LeastBytesOfErase = 4;  // in one tick
constexpr double BytesLostInTick = 2;
constexpr double BytesInPage = 3;
}  // namespace

bool LaunchProgress::Count(std::size_t count) {
  if (count < LeastBytesOfErase) return false;
  ErasedByteCount += static_cast<double>(count) - BytesLostInTick;
  ErasedPageCount = std::min(values::RoundHalfEven(ErasedByteCount / BytesInPage), double{LastPage});
  return true;
}

std::array<EepromCell, 7> LaunchCells(int day, int month, int year, int hour, int minute, int second) {
  return {{{103, day},
           {104, HighByte(year)},
           {105, LowByte(year)},
           {106, hour},
           {107, minute},
           {108, second},
           {109, month}}};
}

}  // namespace bexlow::link
