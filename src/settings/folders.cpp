#include "settings/folders.h"

#include <pwd.h>
#include <unistd.h>

#include <string>

namespace vesko {
namespace {

std::filesystem::path home(const Environment& environment) {
  if (auto value = environment("HOME")) return *value;
  // A service started without HOME still has a password entry.
  if (const passwd* entry = getpwuid(getuid()); entry && entry->pw_dir) return entry->pw_dir;
  return "/";
}

// XDG base directories must be absolute: a relative one would depend on the working directory.
std::filesystem::path base(const Environment& environment, const char* variable,
                           const std::filesystem::path& fallback) {
  if (auto value = environment(variable); value && value->front() == '/') return *value;
  return fallback;
}

}  // namespace

Folders Folders::fromEnvironment(const Environment& environment) {
  if (auto root = environment("VESKO_HOME")) {
    std::filesystem::path folder = *root;
    return {folder / "data", folder / "state", folder / "config"};
  }
  auto user = home(environment);
  return {base(environment, "XDG_DATA_HOME", user / ".local/share") / "Vesko",
          base(environment, "XDG_STATE_HOME", user / ".local/state") / "Vesko",
          base(environment, "XDG_CONFIG_HOME", user / ".config") / "Vesko"};
}

}  // namespace vesko
