#include "ai/ai_label.h"

#include <algorithm>

#include "settings/loc.h"

namespace vesko {
namespace {

// aiLabelRow indexes the table by the enumeration: the rows must follow its order.
constexpr bool rowsFollowTheEnumeration() {
  for (std::size_t i = 0; i < kAILabels.size(); ++i)
    if (static_cast<std::size_t>(kAILabels[i].label) != i) return false;
  return true;
}
static_assert(rowsFollowTheEnumeration());

bool sameIgnoringAsciiCase(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, [](char x, char y) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return lower(x) == lower(y);
  });
}

}  // namespace

AITitles::AITitles(const Loc& loc, std::string_view answerLanguage) {
  for (std::size_t i = 0; i < kAILabels.size(); ++i)
    titles_[i] = loc.t(kAILabels[i].french, answerLanguage);
}

std::optional<AILabel> AITitles::labelTitled(std::string_view title) const {
  for (std::size_t i = 0; i < kAILabels.size(); ++i)
    if (sameIgnoringAsciiCase(titles_[i], title)) return kAILabels[i].label;
  return std::nullopt;
}

}  // namespace vesko
