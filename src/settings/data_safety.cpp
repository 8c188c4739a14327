#include "settings/data_safety.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <utility>

namespace vesko {
namespace {

std::error_code lastError() {
  return {errno, std::generic_category()};
}

class Descriptor {
 public:
  explicit Descriptor(int fd) : fd_(fd) {}
  ~Descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int get() const { return fd_; }
  int release() { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

std::error_code writeAll(int fd, std::string_view content) {
  while (!content.empty()) {
    ssize_t written = ::write(fd, content.data(), content.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return lastError();
    }
    content.remove_prefix(static_cast<std::size_t>(written));
  }
  return {};
}

}  // namespace

std::expected<void, std::error_code> writeFileAtomically(const std::filesystem::path& file,
                                                         std::string_view content) {
  std::error_code error;
  auto folder = file.parent_path();
  if (folder.empty()) folder = ".";
  std::filesystem::create_directories(folder, error);
  if (error) return std::unexpected(error);

  std::string temp = (folder / ("." + file.filename().string() + ".XXXXXX")).string();
  Descriptor fd(::mkostemp(temp.data(), O_CLOEXEC));
  if (fd.get() < 0) return std::unexpected(lastError());
  auto fail = [&](std::error_code cause) -> std::expected<void, std::error_code> {
    ::unlink(temp.c_str());
    return std::unexpected(cause);
  };
  // mkstemp creates the file private to its owner; a data file gets the usual permissions.
  if (::fchmod(fd.get(), 0644) != 0) return fail(lastError());
  if (auto cause = writeAll(fd.get(), content)) return fail(cause);
  if (::fsync(fd.get()) != 0) return fail(lastError());
  if (::close(fd.release()) != 0) return fail(lastError());
  if (::rename(temp.c_str(), file.c_str()) != 0) return fail(lastError());
  // The rename itself is durable only once the folder is flushed; a failure here loses nothing
  // already visible, so it is not reported.
  Descriptor dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (dir.get() >= 0) ::fsync(dir.get());
  return {};
}

std::expected<std::filesystem::path, std::error_code> setAside(const std::filesystem::path& file,
                                                               const Clock& clock) {
  auto stem = file.stem().string();
  auto extension = file.extension().string();
  auto stamp = minuteStamp(clock, clock.now());
  for (int attempt = 1;; ++attempt) {
    auto name =
        stem + ".broken-" + stamp + (attempt > 1 ? "-" + std::to_string(attempt) : "") + extension;
    auto target = file.parent_path() / name;
    // link() refuses an existing name, so an earlier copy is never replaced.
    if (::link(file.c_str(), target.c_str()) == 0) {
      ::unlink(file.c_str());
      return target;
    }
    if ((errno == EPERM || errno == ENOTSUP) && !std::filesystem::exists(target)) {
      // A file system without hard links: a rename to a name just seen free is the next best.
      if (::rename(file.c_str(), target.c_str()) == 0) return target;
    }
    if (errno != EEXIST || attempt >= 100) return std::unexpected(lastError());
  }
}

FileStamp fileStamp(const std::filesystem::path& file) {
  struct stat info {};
  if (::stat(file.c_str(), &info) != 0) return {};
  return {true, static_cast<unsigned long long>(info.st_dev),
          static_cast<unsigned long long>(info.st_ino),
          static_cast<unsigned long long>(info.st_size),
          info.st_mtim.tv_sec * 1'000'000'000LL + info.st_mtim.tv_nsec};
}

FileLock::FileLock(const std::filesystem::path& path) {
  std::error_code ignored;
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path(), ignored);
  fd_ = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd_ < 0) return;
  while (::flock(fd_, LOCK_EX) != 0) {
    if (errno != EINTR) {
      ::close(fd_);
      fd_ = -1;
      return;
    }
  }
}

FileLock::~FileLock() {
  if (fd_ >= 0) ::close(fd_);  // closing releases the lock
}

}  // namespace vesko
