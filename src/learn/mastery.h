#pragma once
// How far a kept word has come, in six classes drawn as six colours, from never reviewed to
// acquired. Three working rungs share the green on purpose: only the yearly rung turns blue.
// Constant data and pure functions; any thread.

#include <array>
#include <string_view>

#include "learn/saved_word.h"

namespace vesko {

// `newWord` is the product's "new" (a keyword here).
enum class Mastery { newWord, fragile, learning, coming, solid, known };

struct MasteryLook {
  Mastery mastery;
  std::string_view name;    // for scripts: "new", "fragile", …
  std::string_view colour;  // as drawn beside the word
};

// clang-format off
inline constexpr std::array<MasteryLook, 6> kMasteryLooks{{
  {Mastery::newWord,  "new",      "⚪"},
  {Mastery::fragile,  "fragile",  "🔴"},
  {Mastery::learning, "learning", "🟠"},
  {Mastery::coming,   "coming",   "🟡"},
  {Mastery::solid,    "solid",    "🟢"},
  {Mastery::known,    "known",    "🔵"},
}};
// clang-format on

Mastery masteryOf(const SavedWord& word);
std::string_view masteryName(Mastery mastery);
std::string_view masteryColour(Mastery mastery);

}  // namespace vesko
