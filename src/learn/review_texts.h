#pragma once
// What the review shows about a kept word, in the interface language: its level, the line of
// intervals with its own rung marked, when it comes back, the five grades, and what waits for the
// coming days. Dates are written "yyyy-MM-dd HH:mm" in the clock's local time: one form that
// reads the same in every interface language. Pure functions; any thread `Loc` allows.

#include <string>

#include "learn/saved_word.h"
#include "settings/clock.h"
#include "settings/loc.h"

namespace vesko {

// "✅ Acquis", "Nouveau : pas encore relu" or "Niveau 3 sur 6".
std::string levelText(const SavedWord& word, const Loc& loc);
// "1 · 3 · [7] · 16 · 35 · 90 jours, puis une fois par an (acquis)".
std::string rhythmLine(const SavedWord& word, const Loc& loc);
// "À relire maintenant", or when the word comes back.
std::string nextReviewText(const SavedWord& word, StoreDate now, const Loc& loc,
                           const Clock& clock);
// The text of grade 1 to 5 ("3 — moyen : même rythme"); empty outside the scale.
std::string gradeText(int grade, const Loc& loc);
// A wait before the next review, short: "10 min", "3 j".
std::string intervalText(double seconds, const Loc& loc);
// "12 cartes attendent les jours suivants (…)".
std::string laterText(std::size_t later, const Loc& loc);
// "yyyy-MM-dd HH:mm" in the clock's local time.
std::string localDateText(StoreDate date, const Clock& clock);
// `format` with its "%d" and "%@" replaced in order by `values`, and "%%" by "%".
std::string fillPlaceholders(std::string_view format, std::initializer_list<std::string> values);
// The text with its first letter as a capital ("à relire" → "À relire").
std::string capitalizedFirst(std::string_view text);

}  // namespace vesko
