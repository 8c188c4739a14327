// `vesko look` on real sentences in every language, with the dictionaries the set-up scripts
// fetch. Skipped when they are absent, unless VESKO_REQUIRE_DATA is set (as CI does).

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "settings/resources.h"
#include "support/run_command.h"
#include "support/temp_dir.h"
#include "text/unicode.h"

namespace {

using nlohmann::json;

bool haveAllData() {
  const auto folder = vesko::Resources::folder();
  for (const char* part : {"cedict.txt", "ja", "fr", "en", "pl", "ru", "lang/lid.176.ftz"})
    if (!std::filesystem::exists(folder / part)) return false;
  return true;
}

// The UTF-16 index of `word` in `sentence`, as a screen reader would hand it over.
long indexOf(const std::string& sentence, const std::string& word) {
  const auto at = sentence.find(word);
  return static_cast<long>(vesko::text::fromUtf8(sentence.substr(0, at))->size());
}

json look(const std::string& sentence, long index) {
  vesko::testing::TempDir dir;
  auto text = dir.write("text", sentence);
  const std::string command = std::string(VESKO_CLI) + " look --json --index " +
                              std::to_string(index) + " - <" + text.string();
  return json::parse(vesko::testing::runCommand(command).out, nullptr, false);
}

TEST(LookFullTest, RealSentencesInEveryLanguage) {
  if (!haveAllData()) {
    if (std::getenv("VESKO_REQUIRE_DATA")) FAIL() << "the fetched dictionaries are missing";
    GTEST_SKIP() << "run scripts/bootstrap setup for the dictionaries";
  }
  struct Row {
    const char* sentence;
    const char* at;        // the word under the pointer
    const char* language;  // "zh" for a Chinese hit
    const char* word;      // as cut
    const char* base;      // dictionary form, "" for none
    const char* headword;  // of the first entry
  };
  const Row rows[] = {
      {"我们在大学学习中文。", "学习", "zh", "学习", "", "学习"},
      {"他是研究生命科学的。", "生命", "zh", "生命科学", "", "生命科学"},
      {"毎日ご飯を食べています。", "食べて", "ja", "食べています", "食べる", "食べる"},
      {"誰かが忘れた新聞を読んだ。", "読んだ", "ja", "読んだ", "読む", "読む"},
      {"誰かが忘れた新聞を読んだ。", "新聞", "ja", "新聞", "", "新聞"},
      {"Hier, nous sommes allés au marché.", "allés", "fr", "allés", "aller", "aller"},
      {"Il s'est levé tôt ce matin.", "levé", "fr", "levé", "lever", "lever"},
      {"Les enfants vont à l'école.", "école", "fr", "école", "", "école"},
      {"The children were playing in the garden.", "children", "en", "children", "child", "child"},
      {"She was running to the station.", "running", "en", "running", "run", "running"},
      {"Kiedy dotarł na dworzec, nocny pociąg już odjechał.", "pociąg", "pl", "pociąg", "",
       "pociąg"},
      {"Mamy psa i dwa koty w domu.", "psa", "pl", "psa", "pies", "pies"},
      {"Книги лежат на столе.", "столе", "ru", "столе", "стол", "стол"},
      {"Книги лежат на столе.", "лежат", "ru", "лежат", "лежать", "лежать"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.sentence) + " @ " + row.at);
    const json result = look(row.sentence, indexOf(row.sentence, row.at));
    ASSERT_TRUE(result.is_object());
    const bool chinese = std::string(row.language) == "zh";
    EXPECT_EQ(result["kind"], chinese ? "chinese" : "word");
    if (!chinese) {
      EXPECT_EQ(result["lang"], row.language);
    }
    EXPECT_EQ(result["word"], row.word);
    EXPECT_EQ(result["sentence"], row.sentence);
    if (!chinese) {
      EXPECT_EQ(result["base"].is_null() ? "" : result["base"], row.base);
    }
    ASSERT_FALSE(result["entries"].empty());
    EXPECT_EQ(result["entries"][0][chinese ? "simp" : "headword"], row.headword);
  }
  // Thai has no dictionary: the word is cut and comes without entries, ready for an explanation.
  const std::string thai = "ฉันชอบกินข้าว";
  const json eat = look(thai, indexOf(thai, "กิน"));
  EXPECT_EQ(eat["lang"], "th");
  EXPECT_EQ(eat["word"], "กิน");
  EXPECT_TRUE(eat["entries"].empty());
}

}  // namespace
