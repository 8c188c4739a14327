#include "settings/resources.h"

#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

namespace vesko {
namespace {

std::vector<std::filesystem::path> candidates() {
  std::vector<std::filesystem::path> folders;
  if (const char* env = std::getenv("VESKO_RESOURCES"); env && *env) folders.emplace_back(env);
  std::error_code error;
  auto self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (!error) folders.push_back(self.parent_path().parent_path() / "share" / "vesko");
  folders.emplace_back(VESKO_SOURCE_RESOURCES);
  folders.emplace_back(VESKO_INSTALL_DATADIR);
  return folders;
}

std::string fileName(std::string_view name, std::string_view type) {
  return std::string(name) + "." + std::string(type);
}

}  // namespace

std::filesystem::path Resources::folder() {
  auto folders = candidates();
  std::error_code error;
  for (const auto& f : folders)
    if (std::filesystem::is_directory(f, error)) return f;
  return folders.front();
}

std::filesystem::path Resources::find(std::string_view name, std::string_view type) {
  std::error_code error;
  for (const auto& f : candidates()) {
    auto path = f / fileName(name, type);
    if (std::filesystem::is_regular_file(path, error)) return path;
  }
  return {};
}

std::filesystem::path Resources::expected(std::string_view name, std::string_view type) {
  if (auto found = find(name, type); !found.empty()) return found;
  return folder() / fileName(name, type);
}

}  // namespace vesko
