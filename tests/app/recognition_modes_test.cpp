#include "app/recognition_modes.h"

#include <gtest/gtest.h>

#include <set>

namespace vesko {
namespace {

TEST(RecognitionModesTest, TableHasUniqueKeysAndLanguageData) {
  std::set<std::string_view> keys;
  for (const RecognitionMode& mode : kRecognitionModes) {
    SCOPED_TRACE(mode.key);
    EXPECT_TRUE(keys.insert(mode.key).second);
    EXPECT_FALSE(mode.languages.empty());
    EXPECT_EQ(mode.languages.find(' '), std::string_view::npos);
    ASSERT_TRUE(recognitionMode(mode.key));
    EXPECT_EQ(recognitionMode(mode.key)->languages, mode.languages);
  }
  EXPECT_EQ(recognitionMode("latin")->languages, "fra+eng+pol");
  EXPECT_EQ(recognitionMode("th")->languages, "tha+eng");
  EXPECT_FALSE(recognitionMode("Latin"));
}

TEST(RecognitionModesTest, StudiedLanguagesChooseTheModes) {
  struct Row {
    const char* name;
    Snapshot snapshot;
    std::vector<std::string> modes;
  };
  auto studying = [](auto set) {
    Snapshot s;
    set(s);
    return s;
  };
  const Row rows[] = {
      {"nothing studied", Snapshot{}, {}},
      {"French", studying([](Snapshot& s) { s.fr = true; }), {"latin"}},
      {"Polish", studying([](Snapshot& s) { s.pl = true; }), {"latin"}},
      {"English alone", studying([](Snapshot& s) { s.en = true; }), {"en"}},
      {"English and French", studying([](Snapshot& s) { s.en = s.fr = true; }), {"latin"}},
      {"Chinese", studying([](Snapshot& s) { s.zh = true; }), {"zh-Hans"}},
      {"Chinese and Japanese, Chinese preferred",
       studying([](Snapshot& s) { s.zh = s.ja = true; }),
       {"zh-Hans", "ja"}},
      {"Chinese and Japanese, Japanese preferred",
       studying([](Snapshot& s) { s.zh = s.ja = true, s.prefHan = "ja"; }),
       {"ja", "zh-Hans"}},
      {"everything",
       studying([](Snapshot& s) { s.zh = s.ja = s.th = s.ru = s.fr = s.en = s.pl = true; }),
       {"zh-Hans", "ja", "th", "ru", "latin"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const auto modes = recognitionModes(row.snapshot);
    EXPECT_EQ(modes, row.modes);
    for (const std::string& mode : modes) EXPECT_TRUE(recognitionMode(mode)) << mode;
  }
}

}  // namespace
}  // namespace vesko
