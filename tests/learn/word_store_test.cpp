#include "learn/word_store.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "learn/saved_word_json.h"
#include "learn/uuid.h"
#include "settings/data_safety.h"
#include "support/store_services.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
using testing::StoreServices;

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<SavedWord> onDisk(const StoreServices& s) {
  auto decoded = decodeWords(readText(s.file()));
  EXPECT_TRUE(decoded.has_value()) << (decoded ? "" : decoded.error());
  return decoded ? *decoded : std::vector<SavedWord>{};
}

SavedWord record(std::string word, std::string lang, std::optional<long long> hits = {}) {
  SavedWord saved;
  saved.id = newUuid();
  saved.word = std::move(word);
  saved.lang = std::move(lang);
  saved.date = 700'000'000;
  saved.hits = hits;
  return saved;
}

void writeWords(const StoreServices& s, const std::vector<SavedWord>& words) {
  s.writeFile(encodeWords(words));
}

// A record as an older writer left it: no hits, seen or reviews.
constexpr const char* kBareRecord = R"([{
  "id": "6F2C1D8E-93A4-4B7E-8D21-0C5F7A9B3E14", "word": "学习", "lang": "zh",
  "pinyin": "xué xí", "simp": "学习", "trad": "學習", "definition": "to learn",
  "translations": {}, "context": "我们一起学习。", "date": 763000000.5
}])";

TEST(WordStoreTest, MissingFileGivesAnEmptyListSilently) {
  StoreServices s;
  WordStore store(s.file(), s.clock, s.log, s.loc);
  EXPECT_TRUE(store.words().empty());
  EXPECT_FALSE(store.pendingNotice());
  EXPECT_FALSE(std::filesystem::exists(s.file()));
  s.log.flush();
  EXPECT_EQ(s.log.recent(TimePoint{}), "");
}

TEST(WordStoreTest, RecordWithoutCountersLoadsAndCounts) {
  StoreServices s;
  s.writeFile(kBareRecord);
  WordStore store(s.file(), s.clock, s.log, s.loc);
  ASSERT_EQ(store.words().size(), 1u);
  EXPECT_EQ(store.keepAgain("学习", "zh"), 2);
  EXPECT_EQ(store.markSeen("学习", "zh"), 2);
  auto word = store.lookup("学习", "zh");
  ASSERT_TRUE(word);
  EXPECT_EQ(word->seen, 1);
  EXPECT_EQ(word->reviews, std::nullopt);
  EXPECT_EQ(word->lastSeen, storeDate(s.clock.now()));
  EXPECT_EQ(onDisk(s).front().hits, 2);
}

TEST(WordStoreTest, KeepingMatchesCaseInsensitivelyWithinOneLanguage) {
  StoreServices s;
  writeWords(s, {record("Paris", "fr"), record("hello", "en"), record("ÉTÉ", "fr", 3)});
  WordStore store(s.file(), s.clock, s.log, s.loc);
  struct Row {
    const char* word;
    const char* lang;
    bool added;
    long long hits;  // after the keep
  };
  // clang-format off
  const Row rows[] = {
    {"Hello", "en", false, 2},  // the kept "hello", raised and moved to the top
    {"hello", "fr", true, 1},   // same spelling, other language: a record of its own
    {"été", "fr", false, 4},    // ICU lower-cases É
    {"été", "en", true, 1},
    {"Paris", "fr", false, 2},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.word) + " " + row.lang);
    SavedWord fresh;
    fresh.word = row.word;
    fresh.lang = row.lang;
    fresh.definition = "new definition";
    KeepResult kept = store.keep(fresh);
    EXPECT_EQ(kept.added, row.added);
    EXPECT_EQ(kept.word.hits.value_or(1), row.hits);
    EXPECT_EQ(store.words().front(), kept.word);
    if (row.added) {
      EXPECT_EQ(kept.word.id, canonicalUuid(kept.word.id));
      EXPECT_EQ(kept.word.id[14], '4');
      EXPECT_EQ(kept.word.date, storeDate(s.clock.now()));
      EXPECT_FALSE(kept.word.hits);
      EXPECT_EQ(kept.word.definition, "new definition");
    } else {
      EXPECT_NE(kept.word.definition, "new definition");  // a keep again changes counters only
    }
    EXPECT_EQ(onDisk(s), store.words());
  }
  EXPECT_EQ(store.words().size(), 5u);
  EXPECT_FALSE(store.keepAgain("nowhere", "fr"));
}

TEST(WordStoreTest, RemovingOnceLowersTheCountBeforeDeleting) {
  StoreServices s;
  writeWords(s, {record("absent", "en"), record("one", "en", 1), record("four", "en", 4)});
  WordStore store(s.file(), s.clock, s.log, s.loc);
  struct Row {
    const char* word;
    std::optional<long long> left;
    bool stillKept;
  };
  const Row rows[] = {
      {"absent", 0, false}, {"ONE", 0, false}, {"four", 3, true}, {"never kept", {}, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(store.removeOnce(row.word, "en"), row.left);
    EXPECT_EQ(store.lookup(row.word, "en").has_value(), row.stillKept);
    EXPECT_EQ(onDisk(s), store.words());
  }
  // Nothing kept, nothing written.
  auto before = fileStamp(s.file());
  EXPECT_FALSE(store.removeOnce("four", "fr"));
  EXPECT_EQ(fileStamp(s.file()), before);
}

TEST(WordStoreTest, UndecodableFilesAreSetAsideAndNeverOverwritten) {
  // clang-format off
  const char* files[] = {
    "{}",
    R"([{"id": "6F2C1D8E-93A4-4B7E-8D21-0C5F7A9B3E14", "word": "学习", "la)",
    R"([{"id": "6F2C1D8E-93A4-4B7E-8D21-0C5F7A9B3E14", "word": "x", "pinyin": "", "simp": "",
        "trad": "", "definition": "", "translations": {}, "context": "", "date": 1}])",  // no lang
    R"([{"id": "not-a-uuid", "word": "x", "lang": "en", "pinyin": "", "simp": "", "trad": "",
        "definition": "", "translations": {}, "context": "", "date": 1}])",
    R"([{"id": "6F2C1D8E-93A4-4B7E-8D21-0C5F7A9B3E14", "word": "x", "lang": "en", "pinyin": "",
        "simp": "", "trad": "", "definition": "", "translations": {}, "context": "", "date": 1,
        "hits": "2"}])",
    "",
  };
  // clang-format on
  for (const char* content : files) {
    SCOPED_TRACE(content);
    StoreServices s;
    s.writeFile(content);
    const auto copy = s.folder() / "mots.broken-2025-03-09-1432.json";
    {
      WordStore store(s.file(), s.clock, s.log, s.loc);
      EXPECT_TRUE(store.words().empty());
      EXPECT_FALSE(std::filesystem::exists(s.file()));
      EXPECT_EQ(readText(copy), content);
      EXPECT_EQ(store.pendingNotice(),
                "⚠️ A data file could not be read; a copy was kept: "
                "mots.broken-2025-03-09-1432.json");
      EXPECT_FALSE(store.pendingNotice());  // shown once
      s.log.flush();
      EXPECT_NE(s.log.recent(TimePoint{})
                    .find("fichier illisible mis de côté : mots.broken-2025-03-09-1432.json"),
                std::string::npos);
      SavedWord fresh;
      fresh.word = "新";
      fresh.lang = "zh";
      store.keep(fresh);
    }
    EXPECT_EQ(readText(copy), content);
    ASSERT_EQ(onDisk(s).size(), 1u);
    EXPECT_EQ(onDisk(s).front().word, "新");
  }
}

TEST(WordStoreTest, SightingsTwoSecondsApartMakeOneWriteFiveSecondsAfterTheSecond) {
  StoreServices s;
  writeWords(s, {record("学习", "zh")});
  WordStore store(s.file(), s.clock, s.log, s.loc);
  const auto written = fileStamp(s.file());
  EXPECT_FALSE(store.saveDue());

  EXPECT_EQ(store.markSeen("学习", "zh"), 1);
  s.clock.advance(2s);
  EXPECT_EQ(store.markSeen("学习", "zh"), 1);
  const TimePoint second = s.clock.now();
  EXPECT_EQ(store.saveDue(), second + 5s);

  s.clock.advance(4900ms);
  EXPECT_FALSE(store.flushIfDue());
  EXPECT_EQ(fileStamp(s.file()), written);
  EXPECT_FALSE(onDisk(s).front().seen);

  s.clock.advance(100ms);
  EXPECT_TRUE(store.flushIfDue());
  EXPECT_NE(fileStamp(s.file()), written);
  EXPECT_EQ(onDisk(s).front().seen, 2);
  EXPECT_EQ(onDisk(s).front().lastSeen, storeDate(second));

  const auto flushed = fileStamp(s.file());
  s.clock.advance(10s);
  EXPECT_FALSE(store.flushIfDue());
  EXPECT_EQ(fileStamp(s.file()), flushed);
  EXPECT_FALSE(store.markSeen("not kept", "zh"));
  EXPECT_FALSE(store.saveDue());
}

TEST(WordStoreTest, PendingSightingIsWrittenWhenTheStoreCloses) {
  StoreServices s;
  writeWords(s, {record("学习", "zh")});
  {
    WordStore store(s.file(), s.clock, s.log, s.loc);
    store.markSeen("学习", "zh");
  }
  EXPECT_EQ(onDisk(s).front().seen, 1);
}

TEST(WordStoreTest, FillingTheReadingNeedsAnExactWordAndNoReadingYet) {
  struct Row {
    const char* word;
    const char* storedReading;
    const char* given;
    const char* expected;
  };
  // clang-format off
  const Row rows[] = {
    {"学习", "", "xué xí", "xué xí"},
    {"Bonjour", "", "bɔ̃.ʒuʁ", ""},        // stored as "bonjour": differs by case
    {"学习", "xuéxí", "xué xí", "xuéxí"},  // already has one
    {"学习", "", "", ""},                   // nothing to fill
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    StoreServices s;
    SavedWord saved = record(std::string(row.word) == "Bonjour" ? "bonjour" : row.word, "zh");
    saved.pinyin = row.storedReading;
    writeWords(s, {saved});
    WordStore store(s.file(), s.clock, s.log, s.loc);
    const auto before = fileStamp(s.file());
    store.fillReading(row.word, "zh", row.given);
    EXPECT_EQ(store.words().front().pinyin, row.expected);
    EXPECT_EQ(onDisk(s).front().pinyin, row.expected);
    EXPECT_EQ(fileStamp(s.file()) != before, std::string(row.expected) != row.storedReading);
  }
}

TEST(WordStoreTest, ChangeAppliesToOneRecordAndSavesAtOnce) {
  StoreServices s;
  writeWords(s, {record("a", "en"), record("b", "en")});
  WordStore store(s.file(), s.clock, s.log, s.loc);
  const std::string id = store.words()[1].id;
  EXPECT_TRUE(store.change(id, [](SavedWord& word) {
    word.reviewStep = 2;
    word.confidence = 4;
    word.id = "changed";  // ignored: the identity stays
  }));
  EXPECT_EQ(store.words()[1].id, id);
  EXPECT_EQ(onDisk(s)[1].reviewStep, 2);
  EXPECT_EQ(onDisk(s)[1].confidence, 4);
  EXPECT_FALSE(onDisk(s)[0].reviewStep);
  EXPECT_FALSE(store.change("6F2C1D8E-93A4-4B7E-8D21-0C5F7A9B3E14", [](SavedWord&) {}));
  EXPECT_EQ(store.byId(id)->confidence, 4);
}

// Two stores on one file stand for the desktop app and a `vesko keep` beside it.
TEST(WordStoreTest, TwoStoresOnOneFileLoseNothingOfEachOther) {
  StoreServices s;
  WordStore app(s.file(), s.clock, s.log, s.loc);
  WordStore command(s.file(), s.clock, s.log, s.loc);
  SavedWord first;
  first.word = "first";
  first.lang = "en";
  app.keep(first);
  app.markSeen("first", "en");  // not written yet

  SavedWord second;
  second.word = "second";
  second.lang = "en";
  command.keep(second);  // reads the app's keep before adding its own
  EXPECT_EQ(command.words().size(), 2u);

  EXPECT_EQ(app.removeOnce("second", "en"), 0);  // reads the command's keep first
  SavedWord third;
  third.word = "third";
  third.lang = "en";
  command.keep(third);
  app.flush();

  auto words = onDisk(s);
  ASSERT_EQ(words.size(), 2u);
  EXPECT_EQ(words[0].word, "third");
  EXPECT_EQ(words[1].word, "first");
  EXPECT_EQ(words[1].seen, 1);  // the app's sighting survived the command's writes
  EXPECT_TRUE(command.reloadIfChanged());
  EXPECT_EQ(command.words(), words);
  EXPECT_FALSE(command.reloadIfChanged());
}

TEST(WordStoreTest, StoreSavedAndLoadedAgainIsEqual) {
  StoreServices s;
  std::vector<SavedWord> words;
  {
    WordStore store(s.file(), s.clock, s.log, s.loc);
    for (const char* spelling : {"学习", "été", "Łódź", "сегодня", "ภาษา"}) {
      SavedWord fresh;
      fresh.word = spelling;
      fresh.lang = "xx";
      fresh.context = std::string("« ") + spelling + " », \"quoted\"\n";
      fresh.translations = {{"en", "one"}, {"fr", "un"}};
      fresh.senses = std::vector<Sense>{{"m", "s", spelling, 1.25, "sm", std::nullopt}};
      fresh.triaged = false;
      store.keep(fresh);
      s.clock.advance(1234567us);
    }
    store.markSeen("ÉTÉ", "xx");
    words = store.words();
  }
  WordStore again(s.file(), s.clock, s.log, s.loc);
  EXPECT_EQ(again.words(), words);
}

}  // namespace
}  // namespace vesko
