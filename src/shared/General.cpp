#include "shared/General.h"

#include <cmath>

#include "platform/machine/Folders.h"
#include "platform/machine/Machine.h"
#include "shared/ErrorHandler.h"

namespace bexlow::shared {

// Measured on the fine counter: on the millisecond counter alone a wait could be short by most of a
// millisecond, and the logger needs the whole pause between two bytes.
void WaitMilliseconds(int milliseconds) {
  WaitMicroseconds(std::int64_t{1000} * milliseconds);
}

void WaitMicroseconds(std::int64_t microseconds) {
  if (microseconds <= 0) return;
  auto& machine = platform::Machine::Get();
  const double microsecondsACount = 1e6 / static_cast<double>(machine.QueryPerformanceFrequency());
  const auto start = machine.QueryPerformanceCounter();
  while (true) {
    const double passed = static_cast<double>(machine.QueryPerformanceCounter() - start) * microsecondsACount;
    const double left = static_cast<double>(microseconds) - passed;
    if (left <= 0) return;
    machine.Idle(std::chrono::microseconds(static_cast<std::int64_t>(std::ceil(left))));
  }
}

void TestForFileFolders() {
  GuardedIn("General", "TestForFileFolders", [] {
    for (const auto& folder : {platform::DataFilesFolder(), platform::LogsFolder()}) {
      if (!platform::FolderExists(folder)) platform::CreateFolder(folder);
    }
  });
}

}  // namespace bexlow::shared
