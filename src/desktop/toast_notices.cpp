#include "desktop/toast_notices.h"

namespace vesko::desktop {
namespace {
constexpr std::chrono::milliseconds kShownFor{3000};
}  // namespace

void ToastNotices::languageSkipped(Language language, bool readWithKey) {
  const auto index = static_cast<std::size_t>(language);
  if (index >= lastShown_.size()) return;
  const double now = clock_.seconds();
  auto& last = lastShown_[index];
  if (last && now - *last < kRepeatAfter) return;
  last = now;
  toasts_.show(skippedLanguageText(loc_, language, readWithKey), kShownFor);
}

}  // namespace vesko::desktop
