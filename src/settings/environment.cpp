#include "settings/environment.h"

#include <algorithm>
#include <cstdlib>

namespace vesko {

Environment processEnvironment() {
  return [](std::string_view name) -> std::optional<std::string> {
    const char* value = std::getenv(std::string(name).c_str());
    if (!value || !*value) return std::nullopt;
    return std::string(value);
  };
}

std::string languageTag(std::string_view localeName) {
  auto end = localeName.find_first_of(".@");
  std::string tag(localeName.substr(0, end));
  if (tag.empty() || tag == "C" || tag == "POSIX") return {};
  std::replace(tag.begin(), tag.end(), '_', '-');
  return tag;
}

std::vector<std::string> preferredLanguages(const Environment& environment) {
  std::vector<std::string> tags;
  auto add = [&](std::string_view localeName) {
    auto tag = languageTag(localeName);
    if (!tag.empty() && std::find(tags.begin(), tags.end(), tag) == tags.end())
      tags.push_back(std::move(tag));
  };
  if (auto list = environment("LANGUAGE")) {
    std::string_view rest = *list;
    while (!rest.empty()) {
      auto colon = rest.find(':');
      add(rest.substr(0, colon));
      if (colon == std::string_view::npos) break;
      rest.remove_prefix(colon + 1);
    }
  }
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    if (auto value = environment(name)) {
      add(*value);
      break;
    }
  }
  return tags;
}

}  // namespace vesko
