// The review ladder, the day's cards and the texts, on the worked rows and edge cases of the
// review rhythm; the day's tally against a fake clock and a real settings file.

#include "learn/review_rhythm.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dict/cedict.h"
#include "learn/mastery.h"
#include "learn/review_counts.h"
#include "learn/review_day.h"
#include "learn/review_texts.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/settings.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

constexpr double kDay = 86'400;
const StoreDate kNow = storeDateOf(testing::FakeClock::kStart);

SavedWord word(std::string id) {
  SavedWord w;
  w.id = std::move(id);
  w.word = "学习";
  w.lang = "zh";
  w.date = kNow - 10 * kDay;
  return w;
}

SavedWord atStep(std::string id, long long step, StoreDate due) {
  SavedWord w = word(std::move(id));
  w.reviewStep = step;
  w.reviewDue = due;
  return w;
}

TEST(ReviewRhythmTest, ScheduleRows) {
  struct Row {
    long long step;
    bool early;
    int grade;
    int newStep;
    double interval;
  };
  // clang-format off
  const Row rows[] = {
    {0, false, 4, 1, 3 * kDay},
    {2, false, 5, 4, 35 * kDay},
    {5, false, 4, 6, 365 * kDay},
    {4, false, 5, 5, 90 * kDay},   // the yearly rung only from step 5
    {5, false, 5, 6, 365 * kDay},
    {3, false, 5, 5, 90 * kDay},
    {3, false, 1, 2, 600},
    {0, false, 1, 0, 600},         // never below the first rung
    {0, false, 2, 0, kDay},
    {6, false, 4, 6, 365 * kDay},
    {6, false, 5, 6, 365 * kDay},
    {6, false, 2, 5, kDay},
    {2, false, 3, 2, 7 * kDay},
    {3, true,  3, 3, 7 * kDay},    // early: one rung shorter
    {3, true,  4, 3, 16 * kDay},   // early: the current rhythm
    {3, true,  5, 3, 35 * kDay},   // early: one rung longer, same colour
    {3, true,  1, 2, 600},         // early failures still move down
    {3, true,  2, 2, kDay},
    {0, true,  3, 0, kDay},
    {6, true,  5, 6, 365 * kDay},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(::testing::PrintToString(std::vector<long long>{row.step, row.early, row.grade}));
    auto scheduled = ReviewRhythm::schedule(row.step, row.early, row.grade);
    ASSERT_TRUE(scheduled);
    EXPECT_EQ(scheduled->step, row.newStep);
    EXPECT_DOUBLE_EQ(scheduled->interval, row.interval);
  }
}

TEST(ReviewRhythmTest, ScheduleRefusesWhatIsOffTheLadderOrTheScale) {
  struct Row {
    long long step;
    int grade;
    ScheduleError error;
  };
  const Row rows[] = {{-1, 3, ScheduleError::stepOutsideLadder},
                      {7, 3, ScheduleError::stepOutsideLadder},
                      {3, 0, ScheduleError::gradeOutsideScale},
                      {3, 6, ScheduleError::gradeOutsideScale}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.step) + " graded " + std::to_string(row.grade));
    auto scheduled = ReviewRhythm::schedule(row.step, false, row.grade);
    ASSERT_FALSE(scheduled);
    EXPECT_EQ(scheduled.error(), row.error);
  }
}

TEST(ReviewRhythmTest, GradingARecord) {
  struct Row {
    const char* name;
    SavedWord before;
    int grade;
    long long step;
    double interval;
    std::optional<std::string> archived;
  };
  SavedWord known = atStep("known", 4, kNow - kDay);
  known.archived = "known";
  known.reviews = 7;
  known.senseTurn = 2;
  SavedWord knownHeld = known;
  const Row rows[] = {
      {"kept word, first review", word("new"), 4, 1, 3 * kDay, std::nullopt},
      {"acquired word failed: back in the rotation", known, 2, 3, kDay, std::nullopt},
      {"acquired word remembered keeps its status", knownHeld, 3, 4, 35 * kDay, "known"},
      {"not yet due keeps its rung", atStep("early", 2, kNow + kDay), 4, 2, 7 * kDay, std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    SavedWord after = row.before;
    auto scheduled = ReviewRhythm::applyGrade(after, row.grade, kNow);
    ASSERT_TRUE(scheduled);
    EXPECT_EQ(after.reviewStep, row.step);
    EXPECT_DOUBLE_EQ(*after.reviewDue, kNow + row.interval);
    EXPECT_EQ(after.lastSeen, kNow);
    EXPECT_EQ(after.confidence, row.grade);
    EXPECT_EQ(after.reviews, row.before.reviews.value_or(0) + 1);
    EXPECT_EQ(after.senseTurn, row.before.senseTurn.value_or(0) + 1);
    EXPECT_EQ(after.archived, row.archived);
    EXPECT_EQ(after.word, row.before.word);
  }
}

TEST(ReviewRhythmTest, ADamagedStepLeavesTheRecordAsItWas) {
  SavedWord damaged = atStep("damaged", 9, kNow - kDay);
  const SavedWord before = damaged;
  EXPECT_FALSE(ReviewRhythm::applyGrade(damaged, 4, kNow));
  EXPECT_EQ(damaged, before);
}

TEST(ReviewRhythmTest, MasteryAndAcquired) {
  struct Row {
    std::optional<long long> step;
    std::optional<std::string> archived;
    Mastery mastery;
    const char* colour;
    bool acquired;
  };
  // clang-format off
  const Row rows[] = {
    {std::nullopt, std::nullopt, Mastery::newWord,  "⚪", false},
    {0,            std::nullopt, Mastery::fragile,  "🔴", false},
    {1,            std::nullopt, Mastery::learning, "🟠", false},
    {2,            std::nullopt, Mastery::coming,   "🟡", false},
    {3,            std::nullopt, Mastery::solid,    "🟢", false},
    {5,            std::nullopt, Mastery::solid,    "🟢", false},
    {6,            std::nullopt, Mastery::known,    "🔵", true},
    {std::nullopt, "known",      Mastery::known,    "🔵", true},
    {1,            "known",      Mastery::known,    "🔵", true},
    {2,            "useless",    Mastery::coming,   "🟡", false},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.step.value_or(-1)) + " " + row.archived.value_or("-"));
    SavedWord w = word("w");
    w.reviewStep = row.step;
    w.archived = row.archived;
    EXPECT_EQ(masteryOf(w), row.mastery);
    EXPECT_EQ(masteryColour(masteryOf(w)), row.colour);
    EXPECT_EQ(ReviewRhythm::isAcquired(w), row.acquired);
  }
}

TEST(ReviewDayTest, WhatIsDue) {
  struct Row {
    const char* name;
    SavedWord w;
    StoreDate at;
    bool due;
  };
  SavedWord keptNow = word("kept");
  keptNow.date = kNow;
  SavedWord useless = atStep("useless", 2, kNow - kDay);
  useless.archived = "useless";
  SavedWord known = atStep("known", 6, kNow - kDay);
  known.archived = "known";
  const Row rows[] = {
      {"kept now, just before a day", keptNow, kNow + kDay - 1, false},
      {"kept now, a day later", keptNow, kNow + kDay, true},
      {"due date reached", atStep("past", 3, kNow), kNow, true},
      {"due tomorrow", atStep("future", 3, kNow + kDay), kNow, false},
      {"useless is out of the review", useless, kNow, false},
      {"known stays in the rotation", known, kNow, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const std::vector<SavedWord> list{row.w};
    EXPECT_EQ(dueWords(list, row.at).size(), row.due ? 1u : 0u);
  }
}

TEST(ReviewDayTest, DailyAllowance) {
  std::vector<SavedWord> words;
  for (int i = 0; i < 45; ++i) words.push_back(atStep("old" + std::to_string(i), 2, kNow - kDay));
  for (int i = 0; i < 12; ++i) words.push_back(word("new" + std::to_string(i)));
  struct Row {
    DailyCounts done;
    std::size_t oldOffered, newOffered, later;
  };
  const Row rows[] = {
      {{0, 0}, 40, 10, 7},
      {{38, 0}, 2, 10, 45},
      {{38, 4}, 2, 6, 49},
      {{60, 11}, 0, 0, 57},  // past the allowance: nothing offered, nothing negative
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.done.oldCards) + " old, " + std::to_string(row.done.newCards) +
                 " new graded today");
    ReviewDay day = planDay(words, kNow, row.done);
    std::size_t old = 0;
    for (const SavedWord* card : day.today) old += card->reviewStep ? 1 : 0;
    EXPECT_EQ(old, row.oldOffered);
    EXPECT_EQ(day.today.size() - old, row.newOffered);
    EXPECT_EQ(day.later, row.later);
  }
}

TEST(ReviewDayTest, OrderOfTheDaysCards) {
  std::vector<SavedWord> words;
  auto add = [&](std::string id, std::optional<bool> triaged, std::optional<long long> hits,
                 std::optional<StoreDate> due, StoreDate kept) {
    SavedWord w = word(std::move(id));
    w.triaged = triaged;
    w.hits = hits;
    w.date = kept;
    if (due) {
      w.reviewStep = 1;
      w.reviewDue = due;
    }
    words.push_back(w);
  };
  add("plain-late", std::nullopt, std::nullopt, kNow - 1 * kDay, kNow - 9 * kDay);
  add("kept-thrice", std::nullopt, 3, kNow - 1 * kDay, kNow - 9 * kDay);
  add("plain-early", false, 1, kNow - 2 * kDay, kNow - 9 * kDay);
  add("triaged-new", true, std::nullopt, std::nullopt, kNow - 3 * kDay);
  add("new-kept-long-ago", std::nullopt, std::nullopt, std::nullopt, kNow - 5 * kDay);
  add("kept-twice", std::nullopt, 2, kNow - 1 * kDay, kNow - 9 * kDay);
  ReviewDay day = planDay(words, kNow, {});
  std::vector<std::string> order;
  for (const SavedWord* card : day.today) order.push_back(card->id);
  // A new word waits since it was kept: 5 days ago comes before a card due 2 days ago.
  const std::vector<std::string> expected{"triaged-new",       "kept-thrice", "kept-twice",
                                          "new-kept-long-ago", "plain-early", "plain-late"};
  EXPECT_EQ(order, expected);
}

struct TextsFixture {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {}};
  explicit TextsFixture(std::string ui) { settings.overrideForRun("uiLang", std::move(ui)); }
};

TEST(ReviewTextsTest, LevelRhythmAndNextReview) {
  SavedWord fresh = word("new");
  fresh.date = kNow;
  SavedWord known = atStep("known", 1, kNow + 100 * kDay);
  known.archived = "known";
  struct Row {
    const char* ui;
    SavedWord w;
    std::string level, rhythm, next;
  };
  const std::string plain = "1 · 3 · 7 · 16 · 35 · 90 jours, puis une fois par an (acquis)";
  const Row rows[] = {
      {"fr", atStep("s2", 2, kNow + 3 * kDay), "Niveau 3 sur 6",
       "1 · 3 · [7] · 16 · 35 · 90 jours, puis une fois par an (acquis)",
       "Prochaine révision : 2025-03-12 14:32"},
      {"fr", atStep("s0", 0, kNow - 60), "Niveau 1 sur 6",
       "[1] · 3 · 7 · 16 · 35 · 90 jours, puis une fois par an (acquis)", "À relire maintenant"},
      {"fr", fresh, "Nouveau : pas encore relu", plain, "Prochaine révision : 2025-03-10 14:32"},
      {"fr", atStep("s6", 6, kNow + 365 * kDay), "✅ Acquis", plain,
       "Une fois par an pour vérifier · prochaine : 2026-03-09 14:32"},
      {"fr", known, "✅ Acquis", plain,
       "Une fois par an pour vérifier · prochaine : 2025-06-17 14:32"},
      {"en", atStep("s4", 4, kNow - 60), "Level 5 of 6",
       "1 · 3 · 7 · 16 · [35] · 90 days, then once a year (learned)", "Review now"},
      {"en", known, "✅ Learned", "1 · 3 · 7 · 16 · 35 · 90 days, then once a year (learned)",
       "Once a year as a check · next: 2025-06-17 14:32"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.ui) + " " + row.w.id);
    TextsFixture f(row.ui);
    EXPECT_EQ(levelText(row.w, f.loc), row.level);
    EXPECT_EQ(rhythmLine(row.w, f.loc), row.rhythm);
    EXPECT_EQ(nextReviewText(row.w, kNow, f.loc, f.clock), row.next);
  }
}

TEST(ReviewTextsTest, GradesWaitsAndWhatIsLeft) {
  TextsFixture f("fr");
  EXPECT_EQ(gradeText(1, f.loc), "1 — raté : revient dans 10 minutes, une couleur en moins");
  EXPECT_EQ(gradeText(3, f.loc), "3 — moyen : même rythme");
  EXPECT_EQ(gradeText(5, f.loc), "5 — très à l'aise : deux étapes d'un coup");
  EXPECT_EQ(gradeText(6, f.loc), "");
  EXPECT_EQ(intervalText(600, f.loc), "10 min");
  EXPECT_EQ(intervalText(35 * kDay, f.loc), "35 j");
  EXPECT_EQ(
      laterText(7, f.loc),
      "7 cartes attendent les jours suivants (40 anciennes + 10 nouvelles par jour au plus).");
  TextsFixture english("en");
  EXPECT_EQ(gradeText(4, english.loc), "4 — comfortable: next step");
  EXPECT_EQ(laterText(7, english.loc),
            "7 cards are waiting for the coming days (at most 40 old + 10 new a day).");
  TextsFixture russian("ru");
  // The first letter is raised whatever the alphabet.
  EXPECT_EQ(nextReviewText(atStep("due", 1, kNow), kNow, russian.loc, russian.clock),
            capitalizedFirst(russian.loc.t("à relire maintenant")));
  EXPECT_EQ(capitalizedFirst("повторить"), "Повторить");
}

TEST(ReviewCountsTest, CountsBelongToTheirLocalDay) {
  testing::TempDir dir;
  // Nine hours east of UTC: the fake start, 14:32 UTC, is 23:32 local on 2025-03-09.
  testing::FakeClock clock(std::chrono::hours(9));
  Settings settings(dir.path() / "settings.json", clock);
  ReviewCounts counts(settings, clock);
  EXPECT_EQ(counts.today(), (DailyCounts{0, 0}));
  ASSERT_TRUE(counts.raise(CardAge::oldCard));
  ASSERT_TRUE(counts.raise(CardAge::oldCard));
  ASSERT_TRUE(counts.raise(CardAge::newCard));
  EXPECT_EQ(counts.today(), (DailyCounts{2, 1}));
  EXPECT_EQ(settings.text("review.oldDay"), "2025-03-09");

  clock.advance(std::chrono::hours(1));  // local midnight passed, still 03-09 in UTC
  EXPECT_EQ(counts.today(), (DailyCounts{0, 0}));
  ASSERT_TRUE(counts.raise(CardAge::oldCard));
  EXPECT_EQ(counts.today(), (DailyCounts{1, 0}));
  EXPECT_EQ(settings.text("review.oldDay"), "2025-03-10");
  EXPECT_EQ(settings.text("review.newDay"), "2025-03-09");

  // Another process reading the file sees the same tally.
  Settings other(dir.path() / "settings.json", clock);
  EXPECT_EQ(ReviewCounts(other, clock).today(), (DailyCounts{1, 0}));
}

TEST(ReviewCountsTest, ADamagedCountReadsAsNothingDone) {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  ASSERT_TRUE(settings.set("review.oldDay", std::string("2025-03-09")));
  ASSERT_TRUE(settings.set("review.oldCount", -5LL));
  ReviewCounts counts(settings, clock);
  EXPECT_EQ(counts.today().oldCards, 0);
  ASSERT_TRUE(counts.raise(CardAge::oldCard));
  EXPECT_EQ(counts.today().oldCards, 1);
}

}  // namespace
}  // namespace vesko
