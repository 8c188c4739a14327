#include "learn/saved_word_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "learn/uuid.h"

namespace vesko {
namespace {

using nlohmann::json;

SavedWord everyField() {
  SavedWord word;
  word.id = "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B";
  word.word = "学习";
  word.lang = "zh";
  word.pinyin = "xué xí";
  word.simp = "学习";
  word.trad = "學習";
  word.definition = "to learn; to study";
  word.translations = {{"en", "to study"}, {"fr", "étudier"}};
  word.context = "我们一起学习。";
  word.date = 763'225'925.125;
  word.hits = 3;
  word.kind = "word";
  word.lastSeen = 763'300'000.5;
  word.source = "新闻";
  word.place = "p. 3";
  word.app = "Firefox";
  word.reviewStep = 4;
  word.reviewDue = 764'000'000.0;
  word.seen = 7;
  word.theme = "école";
  word.confidence = 5;
  word.sentenceMeaning = "We study together.";
  word.sentenceAuto = "We learn together.";
  word.senses = std::vector<Sense>{
      {"to study", "他在学习。", "学习", 763'225'926.0, "He studies.", std::nullopt}};
  word.senseTurn = 2;
  word.archived = "known";
  word.fullContext = "……我们一起学习。然后……";
  word.reviews = 9;
  word.triaged = true;
  word.meaningOK = 1;
  return word;
}

SavedWord requiredOnly() {
  SavedWord word;
  word.id = "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B";
  word.word = "été";
  word.lang = "fr";
  word.date = 0;
  return word;
}

TEST(SavedWordJsonTest, RoundTripKeepsEveryField) {
  const std::vector<SavedWord> words{everyField(), requiredOnly()};
  auto decoded = decodeWords(encodeWords(words));
  ASSERT_TRUE(decoded) << decoded.error();
  EXPECT_EQ(*decoded, words);
}

TEST(SavedWordJsonTest, FileIsPrettySortedAndLeavesAbsentOptionalsOut) {
  const std::string text = encodeWords({requiredOnly()});
  EXPECT_EQ(text, R"([
  {
    "context": "",
    "date": 0.0,
    "definition": "",
    "id": "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B",
    "lang": "fr",
    "pinyin": "",
    "simp": "",
    "trad": "",
    "translations": {},
    "word": "été"
  }
]
)");
  // Every field, awkward texts included, laid out as nlohmann-json lays out the same tree.
  SavedWord awkward = everyField();
  awkward.context =
      "tab\there, \"quoted\", back\\slash, bell\x07, bad \xC3( byte, \xF0\x9F\x98\x80";
  awkward.translations["z\"q"] = "line\nbreak";
  for (double date : {1e-7, -0.0, 0.0001, 123456789012345.0, 1234567890123456.0, 1.5e20, -2.5,
                      5e-324, 1.7976931348623157e308, 0.1, 100.0})
    awkward.senses->push_back({"", "", "", date, std::nullopt, "auto"});
  const std::string all = encodeWords({awkward, requiredOnly()});
  const json tree = json::parse(all);
  EXPECT_EQ(all, tree.dump(2) + "\n");
  EXPECT_EQ(encodeWord(awkward, false), tree[0].dump());
  EXPECT_EQ(
      tree[0]["context"],
      "tab\there, \"quoted\", back\\slash, bell\x07, bad \xEF\xBF\xBD( byte, \xF0\x9F\x98\x80");
  EXPECT_EQ(encodeWords({}), "[]\n");

  json full = json::parse(encodeWords({everyField()}))[0];
  EXPECT_EQ(full.size(), 30u);
  EXPECT_TRUE(full["date"].is_number_float());
  EXPECT_TRUE(full["hits"].is_number_integer());
  EXPECT_EQ(full["senses"][0].size(), 5u);  // sentenceAuto absent
}

TEST(SavedWordJsonTest, FileOfAnotherWriterWithTheSameLayoutLoads) {
  // Keys in another order, a lower-case id, whole-number dates and counts written as reals,
  // null optionals and a key this program does not know.
  const char* text = R"([{"word":"Hello","lang":"en","id":"0f8a3c2b-1d4e-4f60-9a7b-8c9d0e1f2a3b",
    "pinyin":"","simp":"","trad":"","definition":"greeting","translations":{"fr":"bonjour"},
    "context":"Hello there.","date":700000000,"hits":2.0,"kind":null,"colour":"blue",
    "senses":[{"meaning":"hi","sentence":"Hello there.","target":"Hello","date":700000001}]}])";
  auto decoded = decodeWords(text);
  ASSERT_TRUE(decoded) << decoded.error();
  ASSERT_EQ(decoded->size(), 1u);
  const SavedWord& word = decoded->front();
  EXPECT_EQ(word.id, "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B");
  EXPECT_EQ(word.hits, 2);
  EXPECT_FALSE(word.kind);
  EXPECT_EQ(word.date, 700'000'000.0);
  EXPECT_EQ(word.translations.at("fr"), "bonjour");
  ASSERT_TRUE(word.senses);
  EXPECT_EQ(word.senses->front().target, "Hello");
}

TEST(SavedWordJsonTest, BrokenFilesAreRefusedWithTheirReason) {
  const std::string valid = encodeWord(everyField(), false);
  auto with = [&](const char* key, json value) {
    json object = json::parse(valid);
    object[key] = std::move(value);
    return "[" + object.dump() + "]";
  };
  auto without = [&](const char* key) {
    json object = json::parse(valid);
    object.erase(key);
    return "[" + object.dump() + "]";
  };
  struct Row {
    std::string text;
    const char* reason;  // a part of the message
  };
  const Row rows[] = {
      {"{}", "liste attendue"},
      {"[" + valid, "JSON illisible"},
      {"[" + valid + "," + valid.substr(0, valid.size() / 2), "JSON illisible"},
      {"[1]", "objet attendu"},
      {without("lang"), "« lang » absente"},
      {without("translations"), "« translations » absente"},
      {without("date"), "« date » absente"},
      {with("word", 3), "« word » : texte attendu"},
      {with("id", "6F2C1D8E-93A4-4B7E-8D21"), "UUID"},
      {with("hits", 2.5), "« hits » : entier attendu"},
      {with("hits", 1e300), "« hits »"},
      {with("hits", 18446744073709551615ull), "« hits » : entier trop grand"},
      {with("triaged", "yes"), "« triaged » : booléen"},
      {with("translations", json{{"en", 1}}), "« translations »"},
      {with("senses", json::array({json{{"meaning", "m"}}})), "« sentence » absente"},
      {with("senses", "m"), "« senses » : liste"},
      {with("lastSeen", "yesterday"), "« lastSeen » : nombre"},
      {"[" + valid + ",{\"id\":null}]", "entrée 1"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text.substr(0, 120));
    auto decoded = decodeWords(row.text);
    ASSERT_FALSE(decoded);
    EXPECT_NE(decoded.error().find(row.reason), std::string::npos) << decoded.error();
  }
  EXPECT_TRUE(decodeWords("[]"));
}

TEST(SavedWordJsonTest, DatesCountFromTheFirstOf2001) {
  using namespace std::chrono;
  const TimePoint start = sys_days{year{2001} / 1 / 1};
  EXPECT_EQ(storeDate(start), 0.0);
  EXPECT_EQ(storeDate(start + 1500ms), 1.5);
  EXPECT_EQ(storeDate(sys_days{year{1970} / 1 / 1}), -978'307'200.0);
  const TimePoint later = start + 763'225'925'123'456us;
  EXPECT_NEAR(duration<double>(timeOfStoreDate(storeDate(later)) - later).count(), 0, 1e-6);
}

TEST(UuidTest, NewIdsAreCanonicalVersionFourAndDistinct) {
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    std::string id = newUuid();
    ASSERT_EQ(canonicalUuid(id), id);
    EXPECT_EQ(id[14], '4');
    EXPECT_NE(std::string("89AB").find(id[19]), std::string::npos) << id;
    EXPECT_TRUE(seen.insert(id).second);
  }
}

TEST(UuidTest, CanonicalTextOfWellFormedIdsOnly) {
  struct Row {
    const char* text;
    const char* canonical;  // nullptr: refused
  };
  const Row rows[] = {
      {"0f8a3c2b-1d4e-4f60-9a7b-8c9d0e1f2a3b", "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B"},
      {"0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B", "0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B"},
      {"0F8A3C2B1D4E4F609A7B8C9D0E1F2A3B", nullptr},
      {"0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3G", nullptr},
      {"0F8A3C2B-1D4E-4F60-9A7B-8C9D0E1F2A3B ", nullptr},
      {"", nullptr},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    auto canonical = canonicalUuid(row.text);
    if (row.canonical)
      EXPECT_EQ(canonical, row.canonical);
    else
      EXPECT_FALSE(canonical);
  }
}

}  // namespace
}  // namespace vesko
