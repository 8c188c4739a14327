// The dictd reader: index lines with dictd's base64 numbers, entries read from a gzip file made
// here with zlib, malformed index lines skipped.

#include "dict/dictd_dictionary.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "support/temp_dir.h"

namespace vesko {
namespace {

// dictd's base64 for a number, most significant digit first: 0 → "A", 64 → "BA".
std::string base64(uint64_t n) {
  static constexpr char kDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  do {
    out.insert(out.begin(), kDigits[n % 64]);
    n /= 64;
  } while (n != 0);
  return out;
}

TEST(DictdDictionaryTest, IndexLines) {
  struct Row {
    const char* line;
    bool valid;
    uint64_t offset;
    uint64_t length;
  };
  const Row rows[] = {
      {"aller\tBA\tc", true, 64, 28},
      {"à\t8m\ts", true, 60 * 64 + 38, 44},
      {"chat\tA\tB\r", true, 0, 1},
      {"chat noir\t+/\t/", true, 62 * 64 + 63, 63},
      {"chat\tA", false, 0, 0},          // two fields
      {"\tA\tB", false, 0, 0},           // no headword
      {"chat\t\tB", false, 0, 0},        // empty offset
      {"chat\tA!\tB", false, 0, 0},      // not a base64 digit
      {"chat\tA=\tB", false, 0, 0},
      {"chat\tAAAAAAAAAAA\tB", false, 0, 0},  // more digits than 64 bits hold
      {"", false, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    const auto parsed = parseDictdIndexLine(row.line);
    ASSERT_EQ(parsed.has_value(), row.valid);
    if (!parsed) continue;
    EXPECT_EQ(parsed->offset, row.offset);
    EXPECT_EQ(parsed->length, row.length);
  }
}

TEST(DictdDictionaryTest, EntryText) {
  const auto aller = parseDictdEntry("aller", "aller /ale/ <v>\n1. fare\n2. go, ride, travel\n\n");
  ASSERT_TRUE(aller);
  EXPECT_EQ(aller->reading, "ale");
  EXPECT_EQ(aller->defs, (std::vector<std::string>{"fare", "go, ride, travel"}));

  const auto plain = parseDictdEntry("chat", "chat\n  cat  \n10 cats\n");
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->reading, "");
  EXPECT_EQ(plain->defs, (std::vector<std::string>{"cat", "10 cats"}));

  EXPECT_FALSE(parseDictdEntry("vide", "vide /vid/ <adj>\n\n"));
  EXPECT_FALSE(parseDictdEntry("vide", ""));
}

class DictdFileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string entries[] = {
        "chat /ʃa/ <n, masc>\ncat\n",
        "aller /ale/ <v>\n1. fare\n2. go, ride, travel\n",
        "Paris /paʁi/ <prop>\nParis\n",
        "été /ete/ <n, masc>\nsummer\n",
        "été /ete/ <v>\nbeen\n",
    };
    std::string text = "00-database-info\nA fixture.\n";
    std::string index = "00databaseinfo\tA\t" + base64(text.size()) + "\n";
    const char* headwords[] = {"chat", "aller", "Paris", "été", "été"};
    for (std::size_t i = 0; i < std::size(entries); ++i) {
      index += std::string(headwords[i]) + "\t" + base64(text.size()) + "\t" +
               base64(entries[i].size()) + "\n";
      text += entries[i];
    }
    // Malformed lines, each skipped: no tabs, a bad digit, past the end, invalid UTF-8.
    index += "broken line\n";
    index += "chien\tA*\tB\n";
    index += "loup\t" + base64(text.size()) + "\tB\n";
    index += "\xC3\x28\tA\tB\n";
    index_ = dir_.write("dict.index", index);
    dictDz_ = dir_.path() / "dict.dict.dz";
    gzFile out = gzopen(dictDz_.c_str(), "wb");
    ASSERT_NE(out, nullptr);
    ASSERT_EQ(gzwrite(out, text.data(), static_cast<unsigned>(text.size())),
              static_cast<int>(text.size()));
    gzclose(out);
  }

  vesko::testing::TempDir dir_;
  std::filesystem::path index_;
  std::filesystem::path dictDz_;
};

TEST_F(DictdFileTest, Lookups) {
  DictdDictionary dict(index_, dictDz_);
  ASSERT_FALSE(dict.loadError());
  EXPECT_EQ(dict.headwordCount(), 5u);

  const auto aller = dict.lookup("aller");
  ASSERT_EQ(aller.size(), 1u);
  EXPECT_EQ(aller[0].defs, (std::vector<std::string>{"fare", "go, ride, travel"}));

  const auto paris = dict.lookup("paris");  // found lowercased, shown as written
  ASSERT_EQ(paris.size(), 1u);
  EXPECT_EQ(paris[0].headword, "Paris");

  const auto ete = dict.lookup("été");  // two entries, in the file's order
  ASSERT_EQ(ete.size(), 2u);
  EXPECT_EQ(ete[0].defs[0], "summer");
  EXPECT_EQ(ete[1].defs[0], "been");

  const char* missing[] = {"Paris", "chien", "loup", "broken line", "00databaseinfo", "", "cha"};
  for (const char* word : missing) {
    SCOPED_TRACE(word);
    EXPECT_TRUE(dict.lookup(word).empty());
    EXPECT_FALSE(dict.contains(word));
  }
  EXPECT_TRUE(dict.contains("chat"));
}

TEST_F(DictdFileTest, UnreadableFilesAreAnError) {
  DictdDictionary noText(index_, dir_.path() / "none.dict.dz");
  EXPECT_TRUE(noText.loadError());
  EXPECT_TRUE(noText.lookup("chat").empty());
  DictdDictionary noIndex(dir_.path() / "none.index", dictDz_);
  EXPECT_TRUE(noIndex.loadError());
  EXPECT_FALSE(noIndex.contains("chat"));
}

}  // namespace
}  // namespace vesko
