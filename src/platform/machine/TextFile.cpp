#include "platform/machine/TextFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace bexlow::platform {

namespace {

constexpr off_t LargestRead = off_t{1} << 30;

[[noreturn]] void Fail(const std::filesystem::path& path, int error) {
  throw std::system_error(error, std::generic_category(), path.string());
}

class OpenFile {
 public:
  OpenFile(const std::filesystem::path& path, int flags)
      : path_(path), handle_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (handle_ < 0) Fail(path_, errno);
  }
  ~OpenFile() {
    if (handle_ >= 0) ::close(handle_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  struct stat State() const {
    struct stat state {};
    if (::fstat(handle_, &state) != 0) Fail(path_, errno);
    return state;
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

  std::size_t Read(char* to, std::size_t room) {
    while (true) {
      const ssize_t count = ::read(handle_, to, room);
      if (count >= 0) return static_cast<std::size_t>(count);
      if (errno != EINTR) Fail(path_, errno);
    }
  }

  bool CutTo(off_t size) { return ::ftruncate(handle_, size) == 0; }

  /// Some file systems tell only here that there was no room.
  void Close() {
    if (::close(std::exchange(handle_, -1)) != 0) Fail(path_, errno);
  }

 private:
  const std::filesystem::path& path_;
  int handle_;
};

}  // namespace

std::string ReadWhole(const std::filesystem::path& path) {
  OpenFile file(path, O_RDONLY);
  const auto state = file.State();
  if (S_ISDIR(state.st_mode)) Fail(path, EISDIR);
  if (!S_ISREG(state.st_mode)) Fail(path, EINVAL);
  if (state.st_size > LargestRead) Fail(path, EFBIG);
  std::string text(static_cast<std::size_t>(state.st_size), '\0');
  std::size_t filled = 0;
  while (filled < text.size()) {
    const std::size_t count = file.Read(text.data() + filled, text.size() - filled);
    if (count == 0) break;
    filled += count;
  }
  text.resize(filled);
  return text;
}

void WriteWhole(const std::filesystem::path& path, std::string_view text) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (const int error = file.Write(text); error != 0) Fail(path, error);
  file.Close();
}

void Append(const std::filesystem::path& path, std::string_view text) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_APPEND);
  const auto before = file.State().st_size;
  if (const int error = file.Write(text); error != 0) {
    file.CutTo(before);
    Fail(path, error);
  }
  file.Close();
}

}  // namespace bexlow::platform
