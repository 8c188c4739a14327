// A review sitting driven through string streams, as a pipe would drive it: what is shown, what
// is graded and what enters the day's tally.

#include "learn/review_session.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "dict/cedict.h"
#include "learn/review_day.h"
#include "learn/review_rhythm.h"
#include "settings/hant_cache.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

constexpr double kDay = 86'400;

struct Sitting {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  CEDict dictionary;
  HantCache hant{dictionary};
  LocTables tables;
  Loc loc{settings, tables, hant, {}};
  ReviewCounts counts{settings, clock};
  std::map<std::string, SavedWord> kept;  // stands in for the store
  std::vector<std::pair<std::string, int>> grades;
  std::ostringstream out;

  Sitting() { settings.overrideForRun("uiLang", std::string("fr")); }

  StoreDate now() const { return storeDateOf(clock.now()); }

  SavedWord keep(std::string id, std::string text, std::string context,
                 std::optional<long long> step) {
    SavedWord w;
    w.id = std::move(id);
    w.word = std::move(text);
    w.lang = "zh";
    w.pinyin = "xué xí";
    w.definition = "to learn";
    w.context = std::move(context);
    w.date = now() - 3 * kDay;
    if (step) {
      w.reviewStep = step;
      w.reviewDue = now() - kDay;
    }
    kept[w.id] = w;
    return w;
  }

  ReviewSession::Outcome run(const std::string& input, const std::vector<SavedWord>& today,
                             std::size_t later, ReviewSession::Options options = {}) {
    std::istringstream in(input);
    ReviewSession session(
        in, out, loc, clock, counts,
        [this](const std::string& id, int grade) -> std::optional<SavedWord> {
          grades.emplace_back(id, grade);
          auto it = kept.find(id);
          if (it == kept.end()) return std::nullopt;
          if (!ReviewRhythm::applyGrade(it->second, grade, now())) return std::nullopt;
          return it->second;
        },
        options);
    return session.run(today, later);
  }
};

TEST(ReviewSessionTest, GradesEachCardAndCountsIt) {
  Sitting s;
  const std::vector<SavedWord> today{
      s.keep("A", "学习", "我们一起学习中文。", 2),
      s.keep("B", "中文", "我们一起学习中文。", std::nullopt),
  };
  // Enter shows the answer; a stray key before the grade is ignored.
  auto outcome = s.run("\n4\n\nx\n1\n", today, 7);
  EXPECT_FALSE(outcome.quit);
  EXPECT_EQ(outcome.graded, 2u);
  const std::vector<std::pair<std::string, int>> graded{{"A", 4}, {"B", 1}};
  EXPECT_EQ(s.grades, graded);
  EXPECT_EQ(s.kept["A"].reviewStep, 3);
  EXPECT_EQ(s.kept["B"].reviewStep, 0);
  EXPECT_EQ(s.counts.today(), (DailyCounts{1, 1}));

  const std::string shown = s.out.str();
  for (const char* expected :
       {"1 / 2", "2 / 2", "我们一起[学习]中文。", "我们一起学习[中文]。", "xué xí", "to learn",
        "1 · 3 · [7] · 16 · 35 · 90 jours", "4 — à l'aise : étape suivante  → 16 j",
        "1 — raté : revient dans 10 minutes, une couleur en moins  → 10 min",
        "2 — pas très à l'aise : revient demain, une couleur en moins  → 1 j",
        "Prochaine révision : 2025-03-25 14:32", "Révision finie : 2 cartes notées.",
        "7 cartes attendent les jours suivants"}) {
    SCOPED_TRACE(expected);
    EXPECT_NE(shown.find(expected), std::string::npos) << shown;
  }
  EXPECT_EQ(shown.find("\x1b["), std::string::npos) << "no escapes without colour";
}

TEST(ReviewSessionTest, QuitAndEndOfInputLeaveTheRestUntouched) {
  struct Row {
    const char* name;
    std::string input;
    std::size_t graded;
  };
  const Row rows[] = {
      {"q instead of the answer", "\n3\nq\n", 1},
      {"q instead of a grade", "\n3\n\nq\n", 1},
      {"input ends", "\n3\n", 1},
      {"Ctrl-C from a terminal without signals", "\n3\n\x03", 1},
      {"nothing at all", "", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Sitting s;
    const std::vector<SavedWord> today{s.keep("A", "学习", "学习", 1),
                                       s.keep("B", "中文", "中文", 1)};
    auto outcome = s.run(row.input, today, 0);
    EXPECT_TRUE(outcome.quit);
    EXPECT_EQ(outcome.graded, row.graded);
    EXPECT_EQ(s.counts.today().oldCards, static_cast<long long>(row.graded));
    EXPECT_EQ(s.kept["B"].reviewStep, 1);
    EXPECT_EQ(s.out.str().find("cartes attendent"), std::string::npos);
  }
}

TEST(ReviewSessionTest, AnOldCardCountsOncePerSitting) {
  Sitting s;
  const SavedWord card = s.keep("A", "学习", "学习", 2);
  s.run("\n1\n\n3\n", {card, card}, 0);
  EXPECT_EQ(s.grades.size(), 2u);
  EXPECT_EQ(s.counts.today(), (DailyCounts{1, 0}));
}

TEST(ReviewSessionTest, AWordRemovedMeanwhileIsNotCounted) {
  Sitting s;
  const SavedWord card = s.keep("A", "学习", "学习", std::nullopt);
  s.kept.clear();
  auto outcome = s.run("\n4\n", {card}, 0);
  EXPECT_EQ(outcome.graded, 0u);
  EXPECT_EQ(s.counts.today(), (DailyCounts{0, 0}));
}

TEST(ReviewSessionTest, SingleKeysAndColour) {
  Sitting s;
  const std::vector<SavedWord> today{s.keep("A", "学习", "我们学习。", 0)};
  // In a terminal any key shows the answer and the grade needs no Enter.
  auto outcome = s.run(" 5", today, 0, {.singleKeys = true, .colour = true});
  EXPECT_EQ(outcome.graded, 1u);
  EXPECT_EQ(s.kept["A"].reviewStep, 2);
  EXPECT_NE(s.out.str().find("我们\x1b[1;7m学习\x1b[0m。"), std::string::npos) << s.out.str();
}

TEST(ReviewSessionTest, KeptSensesTakeTurns) {
  Sitting s;
  SavedWord card = s.keep("A", "打", "打", 1);
  card.senses = std::vector<Sense>{{"to hit", "他打我。", "打", 0, {}, {}},
                                   {"to make a call", "我给你打电话。", "打", 0, {}, {}}};
  card.senseTurn = 3;
  s.kept["A"] = card;
  s.run("\n3\n", {card}, 0);
  EXPECT_NE(s.out.str().find("我给你[打]电话。"), std::string::npos) << s.out.str();
  EXPECT_NE(s.out.str().find("to make a call"), std::string::npos);
  EXPECT_EQ(s.out.str().find("他打我"), std::string::npos);
}

TEST(ReviewSessionTest, NothingDue) {
  Sitting s;
  s.run("", {}, 12);
  EXPECT_NE(s.out.str().find("Rien à relire aujourd'hui."), std::string::npos);
  EXPECT_NE(s.out.str().find("12 cartes attendent"), std::string::npos);
}

}  // namespace
}  // namespace vesko
