#include "learn/review_day.h"

#include <algorithm>

#include "learn/review_rhythm.h"

namespace vesko {
namespace {

// 2001-01-01 00:00:00 UTC in Unix time.
constexpr std::chrono::sys_seconds kStoreEpoch{
    std::chrono::sys_days{std::chrono::year{2001} / 1 / 1}};

}  // namespace

StoreDate storeDateOf(TimePoint t) {
  return std::chrono::duration<double>(t - kStoreEpoch).count();
}

TimePoint timePointOf(StoreDate date) {
  return kStoreEpoch +
         std::chrono::duration_cast<TimePoint::duration>(std::chrono::duration<double>(date));
}

std::vector<const SavedWord*> dueWords(std::span<const SavedWord> words, StoreDate now) {
  std::vector<const SavedWord*> due;
  for (const auto& word : words) {
    if (word.archived == "useless") continue;
    if (ReviewRhythm::dueDate(word) <= now) due.push_back(&word);
  }
  return due;
}

bool comesFirst(const SavedWord& a, const SavedWord& b) {
  const bool aTriaged = a.triaged.value_or(false), bTriaged = b.triaged.value_or(false);
  if (aTriaged != bTriaged) return aTriaged;
  const long long aHits = a.hits.value_or(1), bHits = b.hits.value_or(1);
  if (aHits != bHits) return aHits > bHits;
  return a.reviewDue.value_or(a.date) < b.reviewDue.value_or(b.date);
}

void orderForReview(std::vector<const SavedWord*>& cards) {
  // Stable, so that ties keep the list's order (newest kept first) from one run to the next.
  std::stable_sort(cards.begin(), cards.end(),
                   [](const SavedWord* a, const SavedWord* b) { return comesFirst(*a, *b); });
}

ReviewDay splitDay(std::vector<const SavedWord*> due, DailyCounts done) {
  long long oldLeft = std::max(kOldCardsPerDay - done.oldCards, 0LL);
  long long newLeft = std::max(kNewCardsPerDay - done.newCards, 0LL);
  ReviewDay day;
  for (const SavedWord* card : due) {
    long long& left = card->reviewStep ? oldLeft : newLeft;
    if (left > 0) {
      --left;
      day.today.push_back(card);
    } else {
      ++day.later;
    }
  }
  return day;
}

ReviewDay planDay(std::span<const SavedWord> words, StoreDate now, DailyCounts done) {
  auto due = dueWords(words, now);
  orderForReview(due);
  return splitDay(std::move(due), done);
}

}  // namespace vesko
