#pragma once
// A fresh folder under the system's temporary directory, removed with everything in it when the
// object goes. One per test; not shared between threads.

#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

namespace vesko::testing {

class TempDir {
 public:
  TempDir() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("vesko-test-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
  }
  ~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }

  std::filesystem::path write(const std::string& name, std::string_view content) const {
    auto file = path_ / name;
    std::ofstream out(file, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    return file;
  }

 private:
  std::filesystem::path path_;
};

inline std::filesystem::path testData(std::string_view name) {
  return std::filesystem::path(VESKO_TEST_DATA) / name;
}

}  // namespace vesko::testing
