#include "app/ocr_cache.h"

namespace vesko {

std::optional<std::vector<OCRLine>> OCRCache::find(std::string_view mode, ScreenPoint point,
                                                   TimePoint now) const {
  std::lock_guard guard(lock_);
  const auto found = items_.find(mode);
  if (found == items_.end()) return std::nullopt;
  const Item& item = found->second;
  if (now - item.captured >= kLifetime || now < item.captured) return std::nullopt;
  const ScreenRect inner = item.captureRect.grownBy(-kInsetX, -kInsetY);
  if (!inner.contains(point) || !item.scope.contains(point)) return std::nullopt;
  return item.lines;
}

void OCRCache::store(std::string_view mode, Item item) {
  std::lock_guard guard(lock_);
  items_.insert_or_assign(std::string(mode), std::move(item));
}

}  // namespace vesko
