#include "dict/mapped_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <utility>

namespace vesko {
namespace {

bool readAll(int fd, std::string& out) {
  char buffer[1 << 16];
  while (true) {
    const ssize_t n = ::read(fd, buffer, sizeof buffer);
    if (n == 0) return true;
    if (n < 0) return false;
    out.append(buffer, static_cast<std::size_t>(n));
  }
}

}  // namespace

std::optional<MappedFile> MappedFile::open(const std::filesystem::path& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return std::nullopt;
  MappedFile file;
  struct stat status;
  bool ok = ::fstat(fd, &status) == 0;
  if (ok && S_ISREG(status.st_mode) && status.st_size > 0) {
    int flags = MAP_PRIVATE;
#ifdef MAP_POPULATE
    flags |= MAP_POPULATE;  // one call maps every page instead of one fault per page
#endif
    void* address = ::mmap(nullptr, static_cast<std::size_t>(status.st_size), PROT_READ, flags, fd, 0);
    if (address != MAP_FAILED) {
      file.mapped_ = static_cast<const char*>(address);
      file.size_ = static_cast<std::size_t>(status.st_size);
    }
  }
  if (ok && !file.mapped_) ok = readAll(fd, file.copy_);
  ::close(fd);
  if (!ok) return std::nullopt;
  return file;
}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : mapped_(std::exchange(other.mapped_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      copy_(std::move(other.copy_)) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
  if (this != &other) {
    if (mapped_) ::munmap(const_cast<char*>(mapped_), size_);
    mapped_ = std::exchange(other.mapped_, nullptr);
    size_ = std::exchange(other.size_, 0);
    copy_ = std::move(other.copy_);
  }
  return *this;
}

MappedFile::~MappedFile() {
  if (mapped_) ::munmap(const_cast<char*>(mapped_), size_);
}

}  // namespace vesko
