#pragma once
// One review sitting, whatever draws it (a terminal, a window): the cards in the order they come,
// the current one and whether its answer is shown, what each grade would give, the grade applied
// and entered once in the day's tally, and what is left for the coming days. Holds copies of the
// cards, so the store may change under it. The clock, tally and grading are handed in and must
// outlive the deck. One thread (the store's).

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "learn/review_counts.h"
#include "learn/review_rhythm.h"
#include "learn/saved_word.h"
#include "settings/clock.h"

namespace vesko {

// How many cards not yet due a review ahead offers at most.
inline constexpr std::size_t kCardsAhead = 10;

// What a card shows this turn: the senses kept with their own sentences take turns, one per
// review; a word without senses shows the sentence it was kept with and its definition.
struct ShownSense {
  std::string sentence;
  std::string target;  // the form of the word to mark in the sentence
  std::string meaning;
};
ShownSense shownSense(const SavedWord& card);

// Reviewed words that are not due yet, the soonest due first, at most `count`: what a review
// ahead offers when nothing is due. Never-reviewed words wait for their first day, and words
// archived as useless are out of the review.
std::vector<SavedWord> cardsAhead(std::span<const SavedWord> words, StoreDate now,
                                  std::size_t count);

// The earliest due date after `now` among the words in the review: when the next card turns up
// (a missed one comes back 10 minutes after its grade). Nothing when no word waits.
std::optional<StoreDate> nextDueAfter(std::span<const SavedWord> words, StoreDate now);

class ReviewDeck {
 public:
  // Applies `grade` to the kept word `id` and saves it; the record as saved, or nothing when the
  // word is no longer kept or the grade was refused.
  using Grader = std::function<std::optional<SavedWord>(const std::string& id, int grade)>;

  ReviewDeck(const Clock& clock, ReviewCounts& counts, Grader grader);
  ReviewDeck(const ReviewDeck&) = delete;
  ReviewDeck& operator=(const ReviewDeck&) = delete;

  // Today's cards of `words`: the due ones in the review order, as many as today's tally leaves
  // of the daily allowance.
  void planToday(std::span<const SavedWord> words);
  // The cards of cardsAhead(words, now, kCardsAhead), each reviewed early.
  void planAhead(std::span<const SavedWord> words);
  // These cards in this order, with `later` due cards left for the coming days.
  void start(std::vector<SavedWord> cards, std::size_t later);

  // The card to show; nothing when none was planned or all are done.
  const SavedWord* current() const;
  // 1 for the first card, total() + 1 once all are done.
  std::size_t position() const { return next_ + 1; }
  std::size_t total() const { return cards_.size(); }
  // Due cards the allowance leaves for the coming days.
  std::size_t later() const { return later_; }
  // Cards graded since the deck was made, across plans.
  std::size_t graded() const { return graded_; }
  // Planned by planAhead.
  bool ahead() const { return ahead_; }

  bool answerShown() const { return answerShown_; }
  // Shows the current card's answer; nothing without a current card.
  void showAnswer();
  // The current card is not due yet: grades 3 to 5 keep its rung (the early note).
  bool currentIsEarly() const;
  // What grading the current card now would give; nothing without a card, or off the scale.
  std::optional<ScheduledReview> preview(int grade) const;

  // Grades the current card once its answer is shown, enters it in the day's tally and moves on.
  // The record as saved; nothing when refused (no answer shown, a grade off 1 to 5: the card
  // stays) or when the grading saved nothing (the word is no longer kept, or its step is off the
  // ladder: the deck moves on and counts nothing).
  //
  // Each card enters the tally once per deck: an old card (reviewed before this sitting) raises
  // the old count, a new one the new count. A missed card comes back 10 minutes later, in the next
  // plan, not in this round; graded again by the same deck it is not counted twice.
  std::optional<SavedWord> grade(int grade);

 private:
  void count(const SavedWord& before);

  const Clock& clock_;
  ReviewCounts& counts_;
  Grader grader_;
  std::vector<SavedWord> cards_;
  std::size_t next_ = 0;
  std::size_t later_ = 0;
  std::size_t graded_ = 0;
  bool answerShown_ = false;
  bool ahead_ = false;
  std::set<std::string> counted_;  // ids already in today's tally from this deck
};

}  // namespace vesko
