// A review sitting over a real store in a temp folder: the day's order and allowance, what the
// grades would give against what they give, the tally, early cards and a review ahead.

#include "learn/review_deck.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "learn/review_day.h"
#include "learn/review_grading.h"
#include "learn/saved_word_json.h"
#include "learn/uuid.h"
#include "learn/word_store.h"
#include "support/store_services.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
constexpr double kDay = 86'400;

struct Sitting {
  testing::StoreServices s;
  ReviewCounts counts{s.settings, s.clock};
  std::unique_ptr<WordStore> store;
  std::unique_ptr<ReviewDeck> deck;

  StoreDate now() const { return storeDateOf(s.clock.now()); }

  // The word `name`, kept `daysAgo` days ago; with a step, due `dueIn` days from now (negative:
  // past). Tests name cards by their word.
  SavedWord word(std::string name, std::optional<long long> step, double dueIn = -1,
                 double daysAgo = 30) const {
    SavedWord w;
    w.id = newUuid();
    w.word = std::move(name);
    w.lang = "zh";
    w.context = "一个" + w.word + "。";
    w.date = now() - daysAgo * kDay;
    if (step) {
      w.reviewStep = step;
      w.reviewDue = now() + dueIn * kDay;
    }
    return w;
  }

  void open(const std::vector<SavedWord>& words) {
    s.writeFile(encodeWords(words));
    store = std::make_unique<WordStore>(s.file(), s.clock, s.log, s.loc);
    deck = std::make_unique<ReviewDeck>(
        s.clock, counts, [this](const std::string& id, int grade) -> std::optional<SavedWord> {
          auto graded = gradeKeptWord(*store, id, grade, now());
          if (!graded || !*graded) return std::nullopt;
          return (*graded)->word;
        });
  }

  std::vector<std::string> order() const {
    std::vector<std::string> ids;
    for (std::size_t i = 0; i < deck->total(); ++i) {
      ids.push_back(deck->current()->word);
      deck->showAnswer();
      (void)deck->grade(3);
    }
    return ids;
  }

  SavedWord stored(const std::string& name) const { return *store->lookup(name, "zh"); }
};

TEST(ReviewDeckTest, TodaysCardsComeTriagedFirstThenMostKeptThenLongestWaiting) {
  Sitting t;
  SavedWord triaged = t.word("T", std::nullopt);
  triaged.triaged = true;
  SavedWord keptThrice = t.word("H", 2, -1);
  keptThrice.hits = 3;
  const SavedWord waitingLong = t.word("L", 2, -9);
  const SavedWord waitingShort = t.word("S", 2, -2);
  const SavedWord notDue = t.word("N", 2, +2);
  SavedWord useless = t.word("U", 2, -20);
  useless.archived = "useless";
  const SavedWord keptToday = t.word("K", std::nullopt, 0, 0.5);  // due only tomorrow
  t.open({waitingShort, notDue, useless, keptToday, waitingLong, keptThrice, triaged});

  t.deck->planToday(t.store->words());
  EXPECT_EQ(t.deck->total(), 4u);
  EXPECT_EQ(t.deck->position(), 1u);
  EXPECT_FALSE(t.deck->ahead());
  EXPECT_EQ(t.order(), (std::vector<std::string>{"T", "H", "L", "S"}));
  EXPECT_EQ(t.deck->current(), nullptr);
  EXPECT_EQ(t.deck->position(), 5u);
  EXPECT_EQ(t.deck->graded(), 4u);
}

TEST(ReviewDeckTest, TheDailyAllowanceCountsWhatWasGradedToday) {
  struct Row {
    const char* name;
    long long oldDone, newDone;
    std::size_t oldOffered, newOffered;
  };
  const Row rows[] = {
      {"nothing graded yet", 0, 0, 40, 10},
      {"38 old cards graded", 38, 0, 2, 10},
      {"allowance spent", 40, 10, 0, 0},
      {"more than the allowance", 45, 3, 0, 7},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    Sitting t;
    std::vector<SavedWord> words;
    for (int i = 0; i < 45; ++i) words.push_back(t.word("O" + std::to_string(i), 1, -1));
    for (int i = 0; i < 12; ++i) words.push_back(t.word("N" + std::to_string(i), std::nullopt));
    t.open(words);
    for (long long i = 0; i < row.oldDone; ++i) ASSERT_TRUE(t.counts.raise(CardAge::oldCard));
    for (long long i = 0; i < row.newDone; ++i) ASSERT_TRUE(t.counts.raise(CardAge::newCard));

    t.deck->planToday(t.store->words());
    std::size_t oldCards = 0, newCards = 0;
    for (const std::string& id : t.order()) ++(id[0] == 'O' ? oldCards : newCards);
    EXPECT_EQ(oldCards, row.oldOffered);
    EXPECT_EQ(newCards, row.newOffered);
    EXPECT_EQ(t.deck->later(), 57 - row.oldOffered - row.newOffered);
  }
}

TEST(ReviewDeckTest, PreviewGivesWhatTheGradeGives) {
  struct Row {
    const char* name;
    std::optional<long long> step;
    double dueIn;
  };
  const Row rows[] = {
      {"new card", std::nullopt, 0}, {"step 0, due", 0, -1}, {"step 2, due", 2, -3},
      {"step 4, due", 4, -1},        {"step 5, due", 5, -1}, {"step 6, due", 6, -1},
      {"step 3, early", 3, +4},
  };
  for (const Row& row : rows) {
    for (int grade = 1; grade <= 5; ++grade) {
      SCOPED_TRACE(std::string(row.name) + ", grade " + std::to_string(grade));
      Sitting t;
      t.open({t.word("A", row.step, row.dueIn)});
      t.deck->planAhead(t.store->words());
      if (!t.deck->current()) t.deck->planToday(t.store->words());
      ASSERT_NE(t.deck->current(), nullptr);
      const auto preview = t.deck->preview(grade);
      ASSERT_TRUE(preview);
      t.deck->showAnswer();
      const auto saved = t.deck->grade(grade);
      ASSERT_TRUE(saved);
      EXPECT_EQ(saved->reviewStep, preview->step);
      EXPECT_DOUBLE_EQ(*saved->reviewDue, t.now() + preview->interval);
      EXPECT_EQ(t.stored("A"), *saved) << "saved at once";
    }
  }
  Sitting t;
  t.open({t.word("A", 2)});
  t.deck->planToday(t.store->words());
  EXPECT_FALSE(t.deck->preview(0));
  EXPECT_FALSE(t.deck->preview(6));
}

TEST(ReviewDeckTest, AGradeWaitsForTheAnswerAndTheScale) {
  Sitting t;
  t.open({t.word("A", 2)});
  t.deck->planToday(t.store->words());
  EXPECT_FALSE(t.deck->grade(4)) << "answer not shown yet";
  t.deck->showAnswer();
  EXPECT_TRUE(t.deck->answerShown());
  EXPECT_FALSE(t.deck->grade(0));
  EXPECT_FALSE(t.deck->grade(6));
  ASSERT_NE(t.deck->current(), nullptr);
  EXPECT_EQ(t.stored("A").reviews, std::nullopt) << "nothing graded";
  EXPECT_TRUE(t.deck->grade(4));
  EXPECT_FALSE(t.deck->answerShown());
  EXPECT_EQ(t.stored("A").reviewStep, 3);
}

TEST(ReviewDeckTest, ACardEntersTheTallyOncePerDeck) {
  Sitting t;
  const SavedWord old = t.word("O", 2), fresh = t.word("N", std::nullopt);
  t.open({old, fresh});
  // A list that holds each card twice: the second showing is counted no more.
  t.deck->start({old, fresh, old, fresh}, 0);
  for (int grade : {1, 1, 3, 4}) {
    t.deck->showAnswer();
    ASSERT_TRUE(t.deck->grade(grade));
  }
  EXPECT_EQ(t.counts.today(), (DailyCounts{1, 1}));
  EXPECT_EQ(t.deck->graded(), 4u);
}

TEST(ReviewDeckTest, AMissedCardComesBackInTheNextPlanAndCountsOnce) {
  Sitting t;
  t.open({t.word("A", 2)});
  t.deck->planToday(t.store->words());
  t.deck->showAnswer();
  ASSERT_TRUE(t.deck->grade(1));
  EXPECT_EQ(t.deck->current(), nullptr) << "not again in this round";

  t.deck->planToday(t.store->words());
  EXPECT_EQ(t.deck->total(), 0u) << "due only in 10 minutes";
  t.s.clock.advance(10min);
  t.deck->planToday(t.store->words());
  ASSERT_EQ(t.deck->total(), 1u);
  EXPECT_FALSE(t.deck->currentIsEarly());
  t.deck->showAnswer();
  ASSERT_TRUE(t.deck->grade(4));
  EXPECT_EQ(t.stored("A").reviewStep, 2);
  EXPECT_EQ(t.counts.today(), (DailyCounts{1, 0}));
  EXPECT_EQ(t.deck->graded(), 2u);
}

TEST(ReviewDeckTest, AWordRemovedMeanwhileIsPassedOverUncounted) {
  Sitting t;
  t.open({t.word("A", 2, -2), t.word("B", 2, -1)});
  t.deck->planToday(t.store->words());
  ASSERT_EQ(t.deck->current()->word, "A");
  ASSERT_TRUE(t.store->removeOnce(t.deck->current()->word, "zh"));
  t.deck->showAnswer();
  EXPECT_FALSE(t.deck->grade(4));
  ASSERT_NE(t.deck->current(), nullptr);
  EXPECT_EQ(t.deck->current()->word, "B");
  EXPECT_EQ(t.counts.today(), (DailyCounts{0, 0}));
  EXPECT_EQ(t.deck->graded(), 0u);
}

TEST(ReviewDeckTest, EarlyCardsAndTheReviewAhead) {
  Sitting t;
  SavedWord useless = t.word("U", 2, +1);
  useless.archived = "useless";
  t.open({t.word("D", 3, -1), t.word("F", 3, +5), t.word("S", 1, +2), useless,
          t.word("N", std::nullopt, 0, 0.5)});

  t.deck->planToday(t.store->words());
  ASSERT_EQ(t.deck->total(), 1u);
  EXPECT_FALSE(t.deck->currentIsEarly()) << "due yesterday";

  t.deck->planAhead(t.store->words());
  EXPECT_TRUE(t.deck->ahead());
  EXPECT_EQ(t.deck->later(), 0u);
  ASSERT_EQ(t.deck->total(), 2u) << "only reviewed words not yet due";
  EXPECT_EQ(t.deck->current()->word, "S") << "the soonest due first";
  EXPECT_TRUE(t.deck->currentIsEarly());
  t.deck->showAnswer();
  ASSERT_TRUE(t.deck->grade(5));
  EXPECT_EQ(t.stored("S").reviewStep, 1) << "an early review keeps the rung";
  EXPECT_EQ(t.deck->current()->word, "F");

  EXPECT_EQ(cardsAhead(t.store->words(), t.now(), 1).size(), 1u);
  EXPECT_TRUE(cardsAhead(t.store->words(), t.now(), 0).empty());
}

TEST(ReviewDeckTest, TheNextDueDateIsTheSoonestStillToCome) {
  Sitting t;
  SavedWord useless = t.word("U", 2, +0.5);
  useless.archived = "useless";
  const std::vector<SavedWord> words{t.word("D", 2, -1), t.word("F", 2, +3), useless,
                                     t.word("K", std::nullopt, 0, 0.25)};
  // K, kept six hours ago, is due in eighteen.
  ASSERT_TRUE(nextDueAfter(words, t.now()));
  EXPECT_DOUBLE_EQ(*nextDueAfter(words, t.now()), t.now() + 0.75 * kDay);
  EXPECT_FALSE(nextDueAfter(std::vector<SavedWord>{t.word("D", 2, -1)}, t.now()));

  t.open({t.word("A", 2)});
  t.deck->planToday(t.store->words());
  t.deck->showAnswer();
  ASSERT_TRUE(t.deck->grade(1));
  EXPECT_DOUBLE_EQ(*nextDueAfter(t.store->words(), t.now()), t.now() + kMissedSeconds);
}

TEST(ReviewDeckTest, KeptSensesTakeTurns) {
  Sitting t;
  SavedWord card = t.word("A", 1);
  card.definition = "to hit";
  EXPECT_EQ(shownSense(card).sentence, card.context);
  EXPECT_EQ(shownSense(card).meaning, "to hit");
  card.senses = std::vector<Sense>{{"to hit", "他打我。", "", 0, {}, {}},
                                   {"to make a call", "我给你打电话。", "打", 0, {}, {}}};
  card.senseTurn = 3;
  EXPECT_EQ(shownSense(card).sentence, "我给你打电话。");
  EXPECT_EQ(shownSense(card).target, "打");
  card.senseTurn = 4;
  EXPECT_EQ(shownSense(card).target, card.word) << "a sense without its form marks the word";
}

}  // namespace
}  // namespace vesko
