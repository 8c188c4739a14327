#pragma once
// The providers' public prices, one row per model family, tried in order for the provider: the
// first row whose words the lower-cased model name contains wins. A row matches when the name
// contains `word` (empty: any name) and, when `anyOf` has words, at least one of them.
// The newest Sonnet and Opus names are priced below their predecessors on purpose: the older
// generations are the ones that still carry the higher price.
// Constant data; any thread.

#include <array>
#include <string_view>

#include "ai/price.h"
#include "ai/provider.h"

namespace vesko {

struct PriceRow {
  AIProvider provider;
  std::string_view word;
  std::array<std::string_view, 3> anyOf;
  Price price;
};

// clang-format off
inline constexpr PriceRow kPriceRows[] = {
  {AIProvider::deepseek, "pro",    {},                            {1.32, 3.96}},
  {AIProvider::deepseek, "",       {},                            {0.3, 1.2}},
  {AIProvider::openai,   "nano",   {},                            {0.1, 0.4}},
  {AIProvider::openai,   "mini",   {},                            {0.4, 1.6}},
  {AIProvider::openai,   "",       {},                            {2.0, 8.0}},
  {AIProvider::claude,   "haiku",  {"3-5"},                       {0.8, 4.0}},
  {AIProvider::claude,   "haiku",  {},                            {1.0, 5.0}},
  {AIProvider::claude,   "sonnet", {"sonnet-4", "4-5", "4-6"},    {3.0, 15.0}},
  {AIProvider::claude,   "sonnet", {},                            {2.0, 10.0}},
  {AIProvider::claude,   "opus",   {"5-5"},                       {4.0, 20.0}},
  {AIProvider::claude,   "opus",   {},                            {5.0, 25.0}},
  {AIProvider::claude,   "fable",  {},                            {10.0, 50.0}},
  {AIProvider::claude,   "mythos", {},                            {10.0, 50.0}},
  {AIProvider::claude,   "",       {},                            {1.0, 5.0}},
};
// clang-format on

}  // namespace vesko
