#include "platform/machine/HostName.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QSysInfo>

namespace bexlow::platform {

std::string HostName() {
  return QSysInfo::machineHostName().toStdString();
}

std::vector<std::string> HostAddresses() {
  std::vector<std::string> addresses;
  std::string loopback;
  for (const auto& address : QNetworkInterface::allAddresses()) {
    if (address.protocol() != QHostAddress::IPv4Protocol) continue;
    const std::string text = address.toString().toStdString();
    if (address.isLoopback()) {
      loopback = text;
    } else {
      addresses.push_back(text);
    }
  }
  if (addresses.empty() && !loopback.empty()) addresses.push_back(loopback);
  return addresses;
}

}  // namespace bexlow::platform
