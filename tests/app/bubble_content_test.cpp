#include "app/bubble_content.h"

#include <gtest/gtest.h>

#include <string>

#include "support/store_services.h"

namespace vesko {
namespace {

using testing::StoreServices;

HoverResult chinese(std::string word, std::vector<Entry> entries, std::string sentence,
                    std::size_t start) {
  HoverResult::Chinese hit;
  hit.word = std::move(word);
  hit.start = start;
  hit.length = 1;
  hit.entries = std::move(entries);
  hit.sentence = std::move(sentence);
  return HoverResult{std::move(hit)};
}

HoverResult word(std::string text, Language language, std::vector<WordEntry> entries,
                 std::string sentence, std::size_t start) {
  HoverResult::Word hit;
  hit.word = std::move(text);
  hit.language = language;
  hit.start = start;
  hit.entries = std::move(entries);
  hit.sentence = std::move(sentence);
  return HoverResult{std::move(hit)};
}

std::string marked(const std::string& sentence, const std::optional<ByteRange>& range) {
  if (!range) return "(none)";
  return sentence.substr(0, range->begin) + "[" +
         sentence.substr(range->begin, range->end - range->begin) + "]" +
         sentence.substr(range->end);
}

TEST(BubbleContentTest, PinyinReadingColoursEachSyllableByItsTone) {
  const Reading reading = pinyinReading("xue2 xi2 ma5");
  EXPECT_EQ(reading.text, "xué xí ma");
  ASSERT_EQ(reading.syllables.size(), 3u);
  EXPECT_EQ(reading.syllables[0].text, "xué");
  EXPECT_EQ(reading.syllables[0].tone, 2);
  EXPECT_EQ(reading.syllables[0].color, Pinyin::toneColor(2));
  EXPECT_EQ(reading.syllables[2].text, "ma");
  EXPECT_FALSE(reading.syllables[2].color);  // the neutral tone takes the secondary colour
  EXPECT_TRUE(pinyinReading("").syllables.empty());
  EXPECT_TRUE(pinyinReading("  ").empty());
}

TEST(BubbleContentTest, ChineseWithTwoReadingsGroupsSensesPerReading) {
  StoreServices services;
  const HoverResult result = chinese("行",
                                     {{"行", "行", "xing2", {"to walk", "OK"}},
                                      {"行", "行", "hang2", {"row", "line"}},
                                      {"行", "行", "xing2", {"capable", "OK"}}},
                                     "我们不行。", 3);
  const BubbleContent content = bubbleContent(result, services.loc);
  EXPECT_EQ(content.headword, "行");
  EXPECT_EQ(content.language, "zh");
  ASSERT_EQ(content.senses.size(), 2u);
  EXPECT_EQ(content.senses[0].reading.text, "xíng");
  EXPECT_EQ(content.senses[0].defs, (std::vector<std::string>{"to walk", "OK", "capable"}));
  EXPECT_EQ(content.senses[1].reading.text, "háng");
  EXPECT_EQ(content.reading.text, "xíng");
  EXPECT_FALSE(content.moreSenses);
  EXPECT_EQ(marked(content.sentence, content.wordInSentence), "我们不[行]。");
  EXPECT_EQ(content.record.word, "行");
  EXPECT_EQ(content.record.lang, "zh");
  EXPECT_EQ(content.record.pinyin, "xíng");
  EXPECT_EQ(content.record.definition, "xíng: to walk; OK; capable | háng: row; line");
  EXPECT_EQ(content.record.context, "我们不行。");
}

TEST(BubbleContentTest, ChineseHeadwordFollowsTheScriptTheLearnerReads) {
  const std::vector<Entry> entries{{"學習", "学习", "xue2 xi2", {"to learn"}}};
  for (const auto& [ui, headword] :
       std::vector<std::pair<std::string, std::string>>{{"zh", "学习"}, {"zh-Hant", "學習"}}) {
    SCOPED_TRACE(ui);
    StoreServices services;
    services.settings.overrideForRun("uiLang", ui);
    const BubbleContent content =
        bubbleContent(chinese("学习", entries, "我们一起学习。", 4), services.loc);
    EXPECT_EQ(content.headword, headword);
    EXPECT_FALSE(content.traditional);  // read in simplified characters
    EXPECT_EQ(content.reading.text, "xué xí");
    // The kept record has both scripts whatever the learner reads.
    EXPECT_EQ(content.record.simp, "学习");
    EXPECT_EQ(content.record.trad, "學習");
    EXPECT_EQ(content.record.word, "学习");
  }
}

TEST(BubbleContentTest, ChineseReadInTraditionalCharacters) {
  StoreServices services;
  const BubbleContent content = bubbleContent(
      chinese("學習", {{"學習", "学习", "xue2 xi2", {"to learn"}}}, "我們一起學習。", 4),
      services.loc);
  EXPECT_TRUE(content.traditional);
  EXPECT_EQ(content.record.word, "學習");
}

TEST(BubbleContentTest, PlacementBesideThePointStaysOnItsScreen) {
  const ScreenRect screen{1280, 0, 1920, 1080};  // a second screen, right of the first
  struct Row {
    std::string name;
    ScreenPoint at;
    double width, height;
    ScreenRect expected;
  };
  for (const auto& row : std::vector<Row>{
           {"below right", {1500, 300}, 400, 200, {1512, 312, 400, 200}},
           {"flipped left at the right edge", {3100, 300}, 400, 200, {2688, 312, 400, 200}},
           {"flipped above at the bottom", {1500, 1000}, 400, 200, {1512, 788, 400, 200}},
           {"both in the corner", {3190, 1070}, 400, 200, {2778, 858, 400, 200}},
           {"taller than the room both ways", {1500, 500}, 400, 1000, {1512, 0, 400, 1000}},
           {"at the left edge of the screen", {1281, 10}, 400, 200, {1293, 22, 400, 200}},
       }) {
    SCOPED_TRACE(row.name);
    const ScreenRect placed = bubblePlacement(row.at, row.width, row.height, screen);
    EXPECT_EQ(placed, row.expected);
    EXPECT_GE(placed.x, screen.x);
    EXPECT_LE(placed.right(), screen.right());
    EXPECT_GE(placed.y, screen.y);
    EXPECT_LE(placed.bottom(), screen.bottom());
    // Beside the point, never over it, whenever there is room.
    if (row.height < 500) {
      EXPECT_FALSE(placed.contains(row.at));
    }
  }
}

TEST(BubbleContentTest, SentenceTargetsAvoidTheSentencesOwnLanguage) {
  struct Row {
    std::string text, answer, expected;
  };
  for (const auto& row : std::vector<Row>{{"zh", "fr", "fr"},
                                          {"fr", "fr", "en"},
                                          {"en", "en", "fr"},
                                          {"zh", "zh-Hant", "en"},
                                          {"ja", "zh-Hans", "zh-Hans"}}) {
    SCOPED_TRACE(row.text + " answered in " + row.answer);
    EXPECT_EQ(sentenceTargets(row.text, row.answer), std::vector<std::string>{row.expected});
  }
}

TEST(BubbleContentTest, GuessedNameBecomesANoteNotASense) {
  StoreServices services;
  const std::string name = services.loc.t("nom propre (translittération probable)");
  const BubbleContent content =
      bubbleContent(chinese("泽连斯基", {{"澤連斯基", "泽连斯基", "ze2 lian2 si1 ji1", {name}}},
                            "泽连斯基说。", 0),
                    services.loc);
  ASSERT_EQ(content.senses.size(), 1u);
  EXPECT_TRUE(content.senses[0].defs.empty());
  EXPECT_EQ(content.reading.text, "zé lián sī jī");
  EXPECT_EQ(content.notes, std::vector<std::string>{name});
  EXPECT_EQ(content.record.definition, name);
}

TEST(BubbleContentTest, FrenchElidedWordNotesTheElision) {
  StoreServices services;
  HoverResult result =
      word("école", Language::fr, {{"école", "", {"school"}}}, "Voici l'école.", 8);
  std::get<HoverResult::Word>(result.value).elided = "le";
  const BubbleContent content = bubbleContent(result, services.loc);
  EXPECT_EQ(content.headword, "école");
  EXPECT_EQ(content.language, "fr");
  ASSERT_EQ(content.notes.size(), 1u);
  EXPECT_NE(content.notes[0].find("“le”"), std::string::npos) << content.notes[0];
  EXPECT_EQ(marked(content.sentence, content.wordInSentence), "Voici l'[école].");
  ASSERT_EQ(content.senses.size(), 1u);
  EXPECT_TRUE(content.senses[0].headword.empty());
  EXPECT_TRUE(content.reading.empty());
  EXPECT_EQ(content.record.pinyin, "");
  EXPECT_EQ(content.record.definition, "school");
}

TEST(BubbleContentTest, ConjugatedFormShowsItsBaseForm) {
  StoreServices services;
  struct Row {
    std::string note;
    std::string expected;
  };
  for (const auto& row : std::vector<Row>{{"past tense of « go »", "past tense of « go »"},
                                          {"", "→ go  (dictionary form)"}}) {
    SCOPED_TRACE(row.expected);
    HoverResult result =
        word("Went", Language::en, {{"go", "", {"to move"}}}, "They went home.", 5);
    std::get<HoverResult::Word>(result.value).base = BaseForm{"go", row.note};
    const BubbleContent content = bubbleContent(result, services.loc);
    EXPECT_EQ(content.notes, std::vector<std::string>{row.expected});
    ASSERT_EQ(content.senses.size(), 1u);
    EXPECT_EQ(content.senses[0].headword, "go");  // the entry is the base form's
    // Found without regard to case, and the sentence's own spelling is what is marked.
    EXPECT_EQ(marked(content.sentence, content.wordInSentence), "They [went] home.");
    EXPECT_EQ(content.record.word, "Went");
  }
}

TEST(BubbleContentTest, JapaneseReadingIsItsKanaInOnePiece) {
  StoreServices services;
  const BubbleContent content = bubbleContent(
      word("食べる", Language::ja, {{"食べる", "たべる", {"to eat"}}}, "ご飯を食べる。", 3),
      services.loc);
  EXPECT_EQ(content.reading.text, "たべる");
  ASSERT_EQ(content.reading.syllables.size(), 1u);
  EXPECT_FALSE(content.reading.syllables[0].color);
  EXPECT_EQ(content.record.pinyin, "たべる");
}

TEST(BubbleContentTest, ThaiWithoutEntriesShowsTheWordAlone) {
  StoreServices services;
  const BubbleContent content =
      bubbleContent(word("ชอบ", Language::th, {}, "ฉันชอบกินข้าวผัดมาก", 3), services.loc);
  EXPECT_EQ(content.headword, "ชอบ");
  EXPECT_TRUE(content.senses.empty());
  EXPECT_TRUE(content.reading.empty());
  EXPECT_TRUE(content.notes.empty());
  EXPECT_EQ(marked(content.sentence, content.wordInSentence), "ฉัน[ชอบ]กินข้าวผัดมาก");
  EXPECT_EQ(content.record.definition, "");
  EXPECT_EQ(content.record.lang, "th");
}

TEST(BubbleContentTest, WordRangeInItsSentence) {
  struct Row {
    std::string sentence;
    std::string word;
    std::size_t latestStart;
    std::string expected;
  };
  for (const auto& row : std::vector<Row>{
           {"", "école", 0, "(none)"},            // no sentence
           {"Il pleut.", "école", 10, "(none)"},  // the word is not there
           {"Le chat et le chien.", "le", 20, "[Le] chat et le chien."},
           {"Le chat et le chien.", "chien", 3, "(none)"},  // could not start that late
           {"😀 学习很好", "学习", 3, "😀 [学习]很好"},       // 😀 counts two UTF-16 units
           {"😀 学习很好", "学习", 2, "(none)"},             // so a bound of 2 rules it out
           {"abc", "", 0, "(none)"},
           {"bad \xff utf-8", "bad", 0, "(none)"},
       }) {
    SCOPED_TRACE(row.sentence + " / " + row.word);
    EXPECT_EQ(marked(row.sentence, findWordInSentence(row.sentence, row.word, row.latestStart)),
              row.expected);
  }
}

TEST(BubbleContentTest, VeryManySensesAreCapped) {
  StoreServices services;
  std::vector<WordEntry> entries;
  for (int i = 0; i < 6; ++i) {
    WordEntry entry{"set", "", {}};
    for (int d = 0; d < 10; ++d) entry.defs.push_back("sense " + std::to_string(i * 10 + d));
    entries.push_back(std::move(entry));
  }
  const BubbleContent content =
      bubbleContent(word("set", Language::en, entries, "Set it down.", 0), services.loc);
  EXPECT_TRUE(content.moreSenses);
  ASSERT_EQ(content.senses.size(), kMaxSenseGroups);
  for (const auto& group : content.senses) EXPECT_EQ(group.defs.size(), kMaxDefsPerGroup);
  // The record keeps what was shown, not the sixty senses.
  EXPECT_EQ(content.record.definition.find("sense 9"), std::string::npos);
  EXPECT_NE(content.record.definition.find("sense 5"), std::string::npos);
}

}  // namespace
}  // namespace vesko
