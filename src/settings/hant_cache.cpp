#include "settings/hant_cache.h"

#include "text/unicode.h"

namespace vesko {

std::string HantCache::convert(std::string_view text) {
  {
    std::lock_guard lock(mutex_);
    if (auto it = cache_.find(text); it != cache_.end()) return it->second;
  }
  if (!dictionary_.loaded()) return std::string(text);
  auto utf16 = text::fromUtf8(text);
  // Table texts are valid UTF-8; anything else is shown as it came.
  if (!utf16) return std::string(text);
  std::string converted = text::toUtf8(dictionary_.convert(*utf16, /*toTraditional=*/true));
  std::lock_guard lock(mutex_);
  return cache_.try_emplace(std::string(text), std::move(converted)).first->second;
}

std::size_t HantCache::size() const {
  std::lock_guard lock(mutex_);
  return cache_.size();
}

}  // namespace vesko
