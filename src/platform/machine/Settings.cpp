#include "platform/machine/Settings.h"

#include <QSettings>

#include <system_error>

namespace bexlow::platform {

namespace {

QString Path(const std::string& section, const std::string& key) {
  return QString::fromStdString(section + "/" + key);
}

}  // namespace

std::string GetSetting(const std::string& section, const std::string& key, const std::string& standard) {
  QSettings store(QSettings::IniFormat, QSettings::UserScope, "Quornell", "Bexlow");
  return store.value(Path(section, key), QString::fromStdString(standard)).toString().toStdString();
}

// A store that cannot be written does not matter while it holds the value already.
void SaveSetting(const std::string& section, const std::string& key, const std::string& value) {
  if (GetSetting(section, key, "not " + value) == value) return;
  QSettings store(QSettings::IniFormat, QSettings::UserScope, "Quornell", "Bexlow");
  store.setValue(Path(section, key), QString::fromStdString(value));
  store.sync();
  if (store.status() != QSettings::NoError)
    throw std::system_error(std::make_error_code(std::errc::permission_denied),
                            "The settings store " + store.fileName().toStdString() + " cannot be written");
}

}  // namespace bexlow::platform
