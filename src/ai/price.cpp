#include "ai/price.h"

#include <algorithm>
#include <string>

#include "ai/price_table.h"

namespace vesko {
namespace {

std::string lowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return lower;
}

bool matches(const PriceRow& row, std::string_view name) {
  if (!name.contains(row.word)) return false;
  bool anyGiven = false;
  for (auto word : row.anyOf) {
    if (word.empty()) continue;
    anyGiven = true;
    if (name.contains(word)) return true;
  }
  return !anyGiven;
}

}  // namespace

Price price(AIProvider provider, std::string_view model) {
  const std::string name = lowerAscii(model);
  for (const auto& row : kPriceRows)
    if (row.provider == provider && matches(row, name)) return row.price;
  return {};
}

}  // namespace vesko
