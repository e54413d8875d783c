#include "live/IP.h"

#include <sstream>

#include "platform/machine/HostName.h"
#include "platform/machine/Machine.h"
#include "shared/ErrorHandler.h"

namespace bexlow::live {

std::optional<std::array<std::string, 4>> GetIP(const platform::Form& screen) {
  std::optional<std::array<std::string, 4>> numbers;
  shared::Guarded(screen, "GetIP", [&] {
    const auto addresses = platform::HostAddresses();
    if (addresses.empty()) return platform::MsgBox("Winsock.dll is not responding.");
    std::istringstream parts(addresses.back());
    numbers.emplace();
    for (auto& number : *numbers) std::getline(parts, number, '.');
  });
  return numbers;
}

}  // namespace bexlow::live
