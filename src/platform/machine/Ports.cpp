#include "platform/machine/Ports.h"

#include <QSerialPortInfo>

namespace bexlow::platform {

namespace fs = std::filesystem;

namespace {

struct Range {
  int first, last;
  const char* prefix;
};
constexpr Range Ranges[] = {{1, 4, "/dev/ttyS"}, {5, 12, "/dev/ttyUSB"}, {13, 16, "/dev/ttyACM"}};

}  // namespace

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

PortInfo DescribeComm(int comm, const fs::path& programFolder) {
  const fs::path device = DeviceOfComm(comm, programFolder);
  if (device.empty()) return {};
  std::error_code ignored;
  if (!fs::exists(device, ignored)) return {device.string(), "no such device"};
  const QSerialPortInfo info(QString::fromStdString(device.filename().string()));
  QStringList words;
  for (const QString& word : {info.manufacturer(), info.description()}) {
    if (!word.isEmpty()) words << word;
  }
  return {device.string(), words.join(' ').toStdString()};
}

}  // namespace bexlow::platform
