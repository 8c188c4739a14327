#pragma once
// How the learner's data files are written and how an unreadable one is kept: a file is replaced
// whole through a temporary file in the same folder (written, flushed to disk, renamed over the
// old one), so that a crash leaves either the old or the new file; a file that exists but cannot
// be decoded is moved aside under a dated "broken-" name and never overwritten.
// Stateless; any thread. Two writers of one file must be serialised by the caller.

#include <expected>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "settings/clock.h"

namespace vesko {

// Creates the folder when missing.
std::expected<void, std::error_code> writeFileAtomically(const std::filesystem::path& file,
                                                         std::string_view content);

// mots.json → mots.broken-2025-03-09-1432.json in the same folder ("-2", "-3"… when that name is
// taken within the same minute). Returns the new path.
std::expected<std::filesystem::path, std::error_code> setAside(const std::filesystem::path& file,
                                                               const Clock& clock);

}  // namespace vesko

namespace vesko {

// A file as seen by stat(): two equal stamps mean nobody replaced or rewrote it in between (an
// atomic replacement always changes the inode). `exists` false for a missing file.
struct FileStamp {
  bool exists = false;
  unsigned long long device = 0, inode = 0, size = 0;
  long long modifiedNs = 0;
  bool operator==(const FileStamp&) const = default;
};
FileStamp fileStamp(const std::filesystem::path& file);

// Holds an exclusive advisory lock (flock) on `path` for its lifetime, creating the file when
// missing. The lock file is never deleted: removing it would let two processes lock two different
// files of one name. Blocks until the lock is free; held() is false when the file cannot be
// opened. One owner; not shared between threads.
class FileLock {
 public:
  explicit FileLock(const std::filesystem::path& path);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  bool held() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

}  // namespace vesko
