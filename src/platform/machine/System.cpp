#include "platform/machine/System.h"

#include <QHostAddress>
#include <QNetworkInterface>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "platform/machine/Machine.h"

namespace bexlow::platform {

namespace fs = std::filesystem;

namespace {

constexpr off_t LargestRead = off_t{1} << 30;

[[noreturn]] void Fail(const fs::path& path, int error, const char* words = "") {
  throw std::system_error(error, std::generic_category(), path.string() + words);
}

// Opened without waiting: a named pipe would wait for its other end. What is no regular file is refused.
class OpenFile {
 public:
  OpenFile(const fs::path& path, int flags)
      : path_(path), handle_(::open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666)) {
    if (handle_ < 0) Fail(path_, errno);
    struct stat state {};
    const bool known = ::fstat(handle_, &state) == 0;
    if (known && S_ISREG(state.st_mode)) {
      size_ = state.st_size;
      return;
    }
    const int error = !known ? errno : S_ISDIR(state.st_mode) ? EISDIR : EINVAL;
    ::close(handle_);
    Fail(path_, error, error == EINVAL ? " is no regular file" : "");
  }
  ~OpenFile() {
    if (handle_ >= 0) ::close(handle_);
  }
  Q_DISABLE_COPY(OpenFile)

  off_t SizeWhenOpened() const { return size_; }

  /// So many bytes from a place on, or as many as there are.
  std::string Read(off_t from, std::size_t most) {
    std::string text(most, '\0');
    std::size_t filled = 0;
    while (filled < most) {
      const ssize_t count =
          ::pread(handle_, text.data() + filled, most - filled, from + static_cast<off_t>(filled));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) Fail(path_, errno);
      if (count == 0) break;
      filled += static_cast<std::size_t>(count);
    }
    text.resize(filled);
    return text;
  }

  /// 0, or the error that stopped the writing.
  int Write(std::string_view text) {
    while (!text.empty()) {
      const ssize_t count = ::write(handle_, text.data(), text.size());
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return errno;
      text.remove_prefix(static_cast<std::size_t>(count));
    }
    return 0;
  }

  bool CutTo(off_t size) { return ::ftruncate(handle_, size) == 0; }

  /// 0, or an error: some file systems tell only here that there was no room.
  int Close() { return ::close(std::exchange(handle_, -1)) == 0 ? 0 : errno; }

 private:
  const fs::path& path_;
  int handle_;
  off_t size_ = 0;
};

QSettings Store() { return {QSettings::IniFormat, QSettings::UserScope, "Quornell", "Bexlow"}; }

}  // namespace

std::string ProgramVersion() { return BEXLOW_VERSION; }

fs::path DataFilesFolder() { return Machine::Get().ProgramFolder() / "Data Files"; }

fs::path LogsFolder() { return Machine::Get().ProgramFolder() / "Logs"; }

std::string ReadWhole(const fs::path& path) {
  OpenFile file(path, O_RDONLY);
  if (file.SizeWhenOpened() > LargestRead) Fail(path, EFBIG);
  return file.Read(0, static_cast<std::size_t>(file.SizeWhenOpened()));
}

FileEnds ReadEnds(const fs::path& path, std::size_t head, std::size_t tail) {
  OpenFile file(path, O_RDONLY);
  const off_t size = file.SizeWhenOpened();
  const off_t end = std::min(size, static_cast<off_t>(tail));
  return {file.Read(0, head), file.Read(size - end, static_cast<std::size_t>(end)),
          static_cast<std::uintmax_t>(size)};
}

std::string Replace(const fs::path& path, std::string_view bytes) {
  QSaveFile file(QString::fromStdString(path.string()));
  bool isWhole = file.open(QIODevice::WriteOnly);
  while (isWhole && !bytes.empty()) {  // on a full disk the write after a short one tells the reason
    const auto count = file.write(bytes.data(), std::ssize(bytes));
    isWhole = count > 0;
    bytes.remove_prefix(isWhole ? static_cast<std::size_t>(count) : 0);
  }
  return isWhole && file.commit() ? std::string() : file.errorString().toStdString();
}

void WriteWhole(const fs::path& path, std::string_view text) {
  OpenFile file(path, O_WRONLY | O_CREAT);
  if (!file.CutTo(0)) Fail(path, errno);
  if (const int error = file.Write(text); error != 0) Fail(path, error);
  if (const int error = file.Close(); error != 0) Fail(path, error);
}

void Append(const fs::path& path, std::string_view text) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_APPEND);
  const off_t before = file.SizeWhenOpened();
  int error = file.Write(text);
  bool whole = error == 0 || file.CutTo(before);
  if (const int atClose = file.Close(); atClose != 0 && error == 0) {
    error = atClose;
    whole = ::truncate(path.c_str(), before) == 0;
  }
  if (error != 0) Fail(path, error, whole ? "" : ", which now ends with a torn record");
}

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
