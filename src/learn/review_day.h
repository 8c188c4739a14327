#pragma once
// The day's review: which kept words are due, the order they come in, and how many of them the
// daily allowance (40 old cards, 10 new ones) lets through today. Pure functions over the store's
// list: the pointers returned point into it and hold until the list next changes. Any thread, on
// a list that no one changes meanwhile.

#include <chrono>
#include <cstddef>
#include <span>
#include <vector>

#include "learn/saved_word.h"
#include "settings/clock.h"

namespace vesko {

inline constexpr long long kOldCardsPerDay = 40;
inline constexpr long long kNewCardsPerDay = 10;

// Cards graded so far today: old ones (reviewed before) and new ones.
struct DailyCounts {
  long long oldCards = 0;
  long long newCards = 0;
  friend bool operator==(const DailyCounts&, const DailyCounts&) = default;
};

struct ReviewDay {
  std::vector<const SavedWord*> today;  // offered today, in the order they are shown
  std::size_t later = 0;                // due, but left for the coming days
};

// The store's dates (seconds since 2001-01-01 UTC) and the clock's.
StoreDate storeDateOf(TimePoint t);
TimePoint timePointOf(StoreDate date);

// Every word due at `now`, in the list's order: its due date (a new word: the day after it was
// kept) is at or before now. Words archived as useless are out of the review; words archived as
// known stay and come back after their long interval.
std::vector<const SavedWord*> dueWords(std::span<const SavedWord> words, StoreDate now);

// Whether `a` is shown before `b`: triaged words first (the triage's "À apprendre"), then the
// words kept most often, then the longest waiting (`reviewDue`, else `date`).
bool comesFirst(const SavedWord& a, const SavedWord& b);
void orderForReview(std::vector<const SavedWord*>& cards);

// Today's share of the due cards, taken in the review order: old cards (with a `reviewStep`) up
// to what is left of the 40, new ones up to what is left of the 10.
ReviewDay splitDay(std::vector<const SavedWord*> due, DailyCounts done);
// dueWords, orderForReview and splitDay in one.
ReviewDay planDay(std::span<const SavedWord> words, StoreDate now, DailyCounts done);

}  // namespace vesko
