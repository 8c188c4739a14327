#include "learn/review_deck.h"

#include <algorithm>

#include "learn/review_day.h"

namespace vesko {

ShownSense shownSense(const SavedWord& card) {
  if (card.senses && !card.senses->empty()) {
    const auto& senses = *card.senses;
    const auto turn = static_cast<std::size_t>(std::max(card.senseTurn.value_or(0), 0LL));
    const Sense& sense = senses[turn % senses.size()];
    return {sense.sentence, sense.target.empty() ? card.word : sense.target, sense.meaning};
  }
  return {card.context, card.word, card.definition};
}

std::vector<SavedWord> cardsAhead(std::span<const SavedWord> words, StoreDate now,
                                  std::size_t count) {
  std::vector<const SavedWord*> waiting;
  for (const auto& word : words) {
    if (word.archived == "useless" || !word.reviewStep || !word.reviewDue) continue;
    if (*word.reviewDue > now) waiting.push_back(&word);
  }
  std::stable_sort(waiting.begin(), waiting.end(), [](const SavedWord* a, const SavedWord* b) {
    return *a->reviewDue < *b->reviewDue;
  });
  std::vector<SavedWord> cards;
  for (const SavedWord* word : waiting) {
    if (cards.size() == count) break;
    cards.push_back(*word);
  }
  return cards;
}

std::optional<StoreDate> nextDueAfter(std::span<const SavedWord> words, StoreDate now) {
  std::optional<StoreDate> next;
  for (const auto& word : words) {
    if (word.archived == "useless") continue;
    const StoreDate due = ReviewRhythm::dueDate(word);
    if (due > now && (!next || due < *next)) next = due;
  }
  return next;
}

ReviewDeck::ReviewDeck(const Clock& clock, ReviewCounts& counts, Grader grader)
    : clock_(clock), counts_(counts), grader_(std::move(grader)) {}

void ReviewDeck::planToday(std::span<const SavedWord> words) {
  const ReviewDay day = planDay(words, storeDateOf(clock_.now()), counts_.today());
  // Copies: grading rewrites the store's list under the pointers.
  std::vector<SavedWord> cards;
  cards.reserve(day.today.size());
  for (const SavedWord* card : day.today) cards.push_back(*card);
  start(std::move(cards), day.later);
}

void ReviewDeck::planAhead(std::span<const SavedWord> words) {
  start(cardsAhead(words, storeDateOf(clock_.now()), kCardsAhead), 0);
  ahead_ = true;
}

void ReviewDeck::start(std::vector<SavedWord> cards, std::size_t later) {
  cards_ = std::move(cards);
  later_ = later;
  next_ = 0;
  answerShown_ = false;
  ahead_ = false;
}

const SavedWord* ReviewDeck::current() const {
  return next_ < cards_.size() ? &cards_[next_] : nullptr;
}

void ReviewDeck::showAnswer() {
  if (current()) answerShown_ = true;
}

bool ReviewDeck::currentIsEarly() const {
  const SavedWord* card = current();
  return card && ReviewRhythm::isEarly(*card, storeDateOf(clock_.now()));
}

std::optional<ScheduledReview> ReviewDeck::preview(int grade) const {
  const SavedWord* card = current();
  if (!card) return std::nullopt;
  auto scheduled = ReviewRhythm::preview(*card, grade, storeDateOf(clock_.now()));
  if (!scheduled) return std::nullopt;
  return *scheduled;
}

void ReviewDeck::count(const SavedWord& before) {
  if (!counted_.insert(before.id).second) return;
  // A tally that cannot be written only loosens today's allowance; the grade itself is saved.
  (void)counts_.raise(before.reviewStep ? CardAge::oldCard : CardAge::newCard);
}

std::optional<SavedWord> ReviewDeck::grade(int grade) {
  const SavedWord* card = current();
  if (!card || !answerShown_ || grade < 1 || grade > 5) return std::nullopt;
  const SavedWord before = *card;
  auto saved = grader_(before.id, grade);
  ++next_;
  answerShown_ = false;
  if (!saved) return std::nullopt;
  count(before);
  ++graded_;
  // The same word further on (a list that holds it twice) is shown as it now stands.
  for (std::size_t i = next_; i < cards_.size(); ++i)
    if (cards_[i].id == saved->id) cards_[i] = *saved;
  return saved;
}

}  // namespace vesko
