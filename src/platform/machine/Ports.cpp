#include "platform/machine/Ports.h"

#include <cerrno>
#include <fstream>

namespace bexlow::platform {

namespace fs = std::filesystem;

namespace {

struct Range {
  int first, last;
  const char* prefix;
};
constexpr Range Ranges[] = {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}};

}  // namespace

std::string WhyNoOpening(int error) {
  switch (error) {
    case ENOENT:
    case ENXIO:
    case ENODEV:
    case ENOTTY:
    case EIO:
      return NoSuchDevice;
    case EBUSY:
    case EWOULDBLOCK:
      return "it is in use";
    case EACCES:
    case EPERM:
      return "no permission: add your user to the group dialout, then log in again";
    default:
      return "it cannot be opened";
  }
}

fs::path DeviceOfComm(int comm, const fs::path& programFolder) {
  if (comm < 1 || comm > LastComm) return {};
  const fs::path link = programFolder / "Ports" / ("COM" + std::to_string(comm));
  std::error_code ignored;
  if (fs::is_symlink(link, ignored)) {
    const fs::path device = fs::weakly_canonical(link, ignored);
    return ignored ? link : device;
  }
  for (const auto& range : Ranges) {
    if (comm >= range.first && comm <= range.last) return range.prefix + std::to_string(comm - range.first);
  }
  return {};
}

// The maker and the product stand in the folder of the USB device, some folders above that of its line.
std::string AdapterWords(const fs::path& systemDevice) {
  const auto lineOf = [](const fs::path& file) {
    std::string line;
    std::getline(std::ifstream(file), line);
    return line;
  };
  std::error_code ignored;
  for (fs::path folder = fs::canonical(systemDevice, ignored); folder.has_relative_path();
       folder = folder.parent_path()) {
    const auto product = lineOf(folder / "product");
    if (product.empty()) continue;
    const auto maker = lineOf(folder / "manufacturer");
    return maker.empty() ? product : std::string(maker).append(" ").append(product);
  }
  return {};
}

}  // namespace bexlow::platform
