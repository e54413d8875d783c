#include "platform/machine/System.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QSettings>
#include <QStandardPaths>
#include <QSysInfo>

#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

namespace fs = std::filesystem;

namespace {

QSettings Store() { return {QSettings::IniFormat, QSettings::UserScope, "Quornell", "Bexlow"}; }

}  // namespace

std::string ProgramVersion() { return BEXLOW_VERSION; }

bool FolderExists(const fs::path& folder) {
  std::error_code ignored;
  return fs::is_directory(folder, ignored);
}

void CreateFolder(const fs::path& folder) {
  if (::mkdir(folder.c_str(), 0777) != 0)
    throw std::system_error(errno, std::generic_category(), folder.string());
}

fs::path DataFilesFolder() { return Machine::Get().ProgramFolder() / "Data Files"; }

fs::path LogsFolder() { return Machine::Get().ProgramFolder() / "Logs"; }

std::string GetSetting(const std::string& section, const std::string& key, const std::string& otherwise) {
  const auto path = QString::fromStdString(section + "/" + key);
  return Store().value(path, QString::fromStdString(otherwise)).toString().toStdString();
}

// A store that cannot be written does not matter while it holds the value already.
void SaveSetting(const std::string& section, const std::string& key, const std::string& value) {
  if (GetSetting(section, key, "not " + value) == value) return;
  auto store = Store();
  store.setValue(QString::fromStdString(section + "/" + key), QString::fromStdString(value));
  store.sync();
  if (store.status() != QSettings::NoError)
    Throw(std::errc::permission_denied,
          "The settings store " + store.fileName().toStdString() + " cannot be written");
}

std::string HostName() { return QSysInfo::machineHostName().toStdString(); }

std::string HostAddress() {
  std::string last;
  for (const bool isLoopback : {true, false}) {
    for (const auto& address : QNetworkInterface::allAddresses()) {
      if (address.protocol() == QHostAddress::IPv4Protocol && address.isLoopback() == isLoopback)
        last = address.toString().toStdString();
    }
  }
  return last;
}

RunningCopy::RunningCopy()
    : file_(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/bexlow.lock"),
      another_(file_.open(QIODevice::ReadWrite) && ::flock(file_.handle(), LOCK_EX | LOCK_NB) != 0 &&
               errno == EWOULDBLOCK) {}

}  // namespace bexlow::platform
