// Which device stands behind a Comm number.
#pragma once

#include <filesystem>
#include <string>

namespace bexlow::platform {

inline constexpr int LastComm = 16;

/// The device of Comm 1 to 16: the link Ports/COM<n> in the program's folder if there is one, else 1 to 4 are
/// /dev/ttyS0-3, 5 to 12 /dev/ttyUSB0-7, 13 to 16 /dev/ttyACM0-3. Empty for other numbers.
std::filesystem::path DeviceOfComm(int comm, const std::filesystem::path& programFolder);

inline constexpr auto NoSuchDevice = "no such device";
/// Why a port does not open, in words, by the system's error number; with the remedy where there is one.
std::string WhyNoOpening(int error);

/// Maker and product of the adapter to which a device of the system (a folder below /sys) belongs; empty
/// where the system knows neither.
std::string AdapterWords(const std::filesystem::path& systemDevice);

}  // namespace bexlow::platform
