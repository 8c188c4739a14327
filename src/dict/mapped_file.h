#pragma once
// A whole file's bytes, read-only, mapped rather than copied when the system allows it: the main
// dictionary is ten megabytes that are only ever read, and copying them cost a sixth of the load.
// The dictionary files are replaced by renaming a new file over them, never rewritten in place,
// so the mapping cannot shrink under the reader. Owned by one object; its bytes may be read from
// any thread.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace vesko {

class MappedFile {
 public:
  // Nothing when the file cannot be opened or read.
  static std::optional<MappedFile> open(const std::filesystem::path& path);

  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&& other) noexcept;
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;
  ~MappedFile();

  std::string_view bytes() const { return mapped_ ? std::string_view(mapped_, size_) : copy_; }

 private:
  MappedFile() = default;
  const char* mapped_ = nullptr;
  std::size_t size_ = 0;
  std::string copy_;  // when mapping is not possible (empty files, pipes)
};

}  // namespace vesko
