#include "dict/dictd.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <utility>

#include "dict/dictd_format.h"
#include "dict/reversed_mueller.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::TempDir;
using testing::testData;

std::vector<std::string> strings(const std::vector<std::string_view>& views) {
  return {views.begin(), views.end()};
}

std::string dictdNumber(uint64_t n) {
  static constexpr char kDigits[] =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  do {
    out.insert(out.begin(), kDigits[n % 64]);
    n /= 64;
  } while (n > 0);
  return out;
}

// Writes NAME.index and NAME.dict.dz (gzip, as dictzip is) for the entries, in the given order.
std::pair<std::filesystem::path, std::filesystem::path> writeDictd(
    const TempDir& dir, const std::string& name,
    const std::vector<std::pair<std::string, std::string>>& entries, bool compress = true) {
  std::string text, index;
  for (const auto& [headword, body] : entries) {
    index += headword + "\t" + dictdNumber(text.size()) + "\t" + dictdNumber(body.size()) + "\n";
    text += body;
  }
  auto indexPath = dir.write(name + ".index", index);
  auto dictPath = dir.path() / (name + (compress ? ".dict.dz" : ".dict"));
  if (compress) {
    gzFile out = gzopen(dictPath.c_str(), "wb9");
    gzwrite(out, text.data(), static_cast<unsigned>(text.size()));
    gzclose(out);
  } else {
    dir.write(dictPath.filename().string(), text);
  }
  return {indexPath, dictPath};
}

TEST(DictdFormatTest, Numbers) {
  struct Row {
    const char* digits;
    std::optional<uint64_t> value;
  };
  const Row rows[] = {
      {"A", 0},          {"B", 1},          {"Z", 25},       {"a", 26},
      {"9", 61},         {"+", 62},         {"/", 63},       {"BA", 64},
      {"CdG6", 2 * 262144 + 29 * 4096 + 6 * 64 + 58},        {"//////////", (uint64_t{1} << 60) - 1},
      {"", std::nullopt}, {"///////////", std::nullopt},    {"A=", std::nullopt},
      {"-1", std::nullopt}, {"A B", std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.digits);
    EXPECT_EQ(decodeDictdNumber(row.digits), row.value);
  }
}

TEST(DictdFormatTest, IndexLines) {
  struct Row {
    const char* line;
    bool accepted;
    const char* headword;
    uint64_t offset, length;
  };
  const Row rows[] = {
      {"kot\tCdG6\tBs", true, "kot", 2 * 262144 + 29 * 4096 + 6 * 64 + 58, 64 + 44},
      {"a cappella\tB\tb\r", true, "a cappella", 1, 27},
      {"dom\tA\tB\tDom", true, "dom", 0, 1},  // a fourth field (the original headword) is ignored
      {"\tBvz\tN", false, "", 0, 0},
      {"kot\tCdG6", false, "", 0, 0},
      {"kot", false, "", 0, 0},
      {"kot\t\tBs", false, "", 0, 0},
      {"kot\tCd G6\tBs", false, "", 0, 0},
      {"kot\tCdG6\t", false, "", 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.line);
    auto parsed = parseDictdIndexLine(row.line);
    ASSERT_EQ(parsed.has_value(), row.accepted);
    if (!parsed) continue;
    EXPECT_EQ(parsed->headword, row.headword);
    EXPECT_EQ(parsed->offset, row.offset);
    EXPECT_EQ(parsed->length, row.length);
  }
  EXPECT_TRUE(isDictdMetadata("00databaseinfo"));
  EXPECT_TRUE(isDictdMetadata("00-database-url"));
  EXPECT_FALSE(isDictdMetadata("00"));
  EXPECT_FALSE(isDictdMetadata("database"));
}

TEST(DictdFormatTest, FreedictBodies) {
  struct Row {
    const char* body;
    const char* headword;
    const char* pronunciation;
    std::vector<std::string> senses;
  };
  const Row rows[] = {
      {"kot /kɔt/ <n>\n1. dust bunny\n(potocznie, potoczny) kłąb kurzu\n2. cat\n"
       "(zoologia, zoologiczny) Felis silvestris domesticus;\n",
       "kot", "kɔt", {"dust bunny", "cat"}},
      // Nested senses leave their number at the end of the line above and on lines of their own.
      {"dom /dɔ̃m/ /ˈdɔmɨ/ <n>\n1. house, home 2.\n(architektura) budynek\n 3.\n(heraldyka) ród\n"
       "2. home, house 2.\npomieszczenie\n",
       "dom", "dɔ̃m", {"house, home", "home, house"}},
      // No numbers: the translation is the line after the headword.
      {"go /ɡɔ/ <n>\ngo, goe\n(sport, sportowy) rodzaj gry planszowej;\n", "go", "ɡɔ", {"go, goe"}},
      {"abba <n>\n  father  \n", "abba", "", {"father"}},
      {"12. not a headword line\n", "12. not a headword line", "", {}},
      {"kot /kɔt/ <n>\n", "kot", "kɔt", {}},
      {"kot /kɔt <n>\n1.\n2.   \n", "kot", "", {}},
      {"", "", "", {}},
      {"\n\n\n", "", "", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    const FreedictBody body = parseFreedictBody(row.body);
    EXPECT_EQ(body.headword, row.headword);
    EXPECT_EQ(body.pronunciation, row.pronunciation);
    EXPECT_EQ(strings(body.senses), row.senses);
  }
}

TEST(DictdFormatTest, MuellerTranslations) {
  struct Row {
    const char* body;
    std::vector<std::string> russian;
  };
  const Row rows[] = {
      {"cat\n   _I  [kæt]\n      1. _n.\n         1) кот; кошка; tom cat кот; pussy cat кошка\n"
       "         2) _зоол. животное семейства кошачьих\n"
       "         3) кошка (плеть)\n",
       {"кот", "кошка"}},
      // Wrapped lines belong to the sense above; labels and remarks go.
      {"book\n   [bʊk]\n   1. _n.\n      1) книга, литературное произведение\n"
       "      4) либретто; текст (оперы и т.п.); сценарий\n      10)_карт. (первые) шесть\n"
       "      взяток одной из сторон (в висте)\n   2. _v.\n      1) заносить в книгу, зарегистрировать\n",
       {"книга", "литературное произведение", "либретто", "текст", "сценарий",
        "зарегистрировать"}},
      // The translation on the part-of-speech line itself.
      {"dom\n   _n. кафедральный собор\n", {"кафедральный собор"}},
      // Lettered senses after an English phrase translate the phrase, not the headword.
      {"go\n   1. _v.\n      1) идти, ходить; go about\n         а) расхаживать;\n"
       "         б) циркулировать;\n      2) ехать\n",
       {"идти", "ходить", "ехать"}},
      // Lettered senses of the headword itself are kept.
      {"run\n   1) глагол-связка:\n      а) бежать;\n      б) мчаться\n", {"бежать", "мчаться"}},
      {"a\n   1) 1-я буква англ. алфавита\n   2) _муз. ля\n", {"ля"}},
      {"x\n   1) Felis catus\n", {}},
      {"x\n   1) (только пояснение)\n", {}},
      {"x\n   1) очень длинное русское объяснение слова\n", {}},
      {"x\n   1) -кот; кот-\n", {}},
      {"x\n   1) кот (unclosed; кошка\n", {"кот"}},
      {"x", {}},
      {"", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    EXPECT_EQ(muellerTranslations(row.body), row.russian);
  }
}

TEST(DictdDictionaryTest, LooksUpFreedictEntries) {
  TempDir dir;
  auto [index, dict] = writeDictd(
      dir, "pol-eng",
      {{"00databaseinfo", "About this database\n"},
       {"Dom", "Dom /dɔm/ <n>\n1. house\nbudynek\n"},
       {"kot", "kot /kɔt/ <n>\n1. cat\n2. freshman\n"},
       {"kot", "kot /kɔt/ <n>\n1. tomcat\n"},
       {"pusty", "pusty <adj>\n"},
       {"źdźbło", "źdźbło /ʑd͡ʑbwɔ/ <n>\nblade\n"}});
  auto loaded = DictdDictionary::load(index, dict);
  ASSERT_TRUE(loaded.has_value()) << loaded.error();
  const DictdDictionary& d = **loaded;
  struct Row {
    const char* word;
    std::vector<WordEntry> expected;
  };
  const Row rows[] = {
      {"kot", {{"kot", "kɔt", {"cat", "freshman"}}, {"kot", "kɔt", {"tomcat"}}}},
      {"dom", {{"Dom", "dɔm", {"house"}}}},  // headwords are lowercased for the key
      {"źdźbło", {{"źdźbło", "ʑd͡ʑbwɔ", {"blade"}}}},
      {"Dom", {}},
      {"ko", {}},
      {"kota", {}},
      {"00databaseinfo", {}},
      {"pusty", {}},  // an entry without a translation gives nothing
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(d.lookup(row.word), row.expected);
  }
  EXPECT_TRUE(d.contains("dom"));
  EXPECT_FALSE(d.contains("00databaseinfo"));
  EXPECT_EQ(d.entryCount(), 5u);
}

// Short texts live inside std::string itself; views into them must survive the file being moved.
TEST(DictdDictionaryTest, ReadsAPlainDictFile) {
  TempDir dir;
  auto [index, dict] = writeDictd(dir, "plain", {{"kot", "kot\n1. cat\n"}}, false);
  auto loaded = DictdDictionary::load(index, dict);
  ASSERT_TRUE(loaded.has_value()) << loaded.error();
  EXPECT_EQ((*loaded)->lookup("kot"), (std::vector<WordEntry>{{"kot", "", {"cat"}}}));
}

TEST(DictdDictionaryTest, BadFiles) {
  TempDir dir;
  auto [index, dict] = writeDictd(dir, "good", {{"kot", "kot\n1. cat\n"}});
  // An index line pointing past the text is skipped, not read.
  auto outside = DictdFile::load(testData("bad/04-dictd-outside.index"), dict);
  ASSERT_TRUE(outside.has_value());
  EXPECT_TRUE(outside->entries().empty());
  EXPECT_EQ(outside->skippedLines(), 1u);
  EXPECT_FALSE(DictdFile::load(index, testData("bad/05-corrupt.dict.dz")).has_value());
  EXPECT_FALSE(DictdFile::load(index, dir.path() / "missing.dict.dz").has_value());
  EXPECT_FALSE(DictdFile::load(dir.path() / "missing.index", dict).has_value());
}

TEST(DictdDictionaryTest, GunzipStopsAtTheLimit) {
  std::string text(100'000, 'a');
  uLongf size = compressBound(text.size()) + 32;
  // A real gzip member, written through zlib's gzip stream API into memory.
  std::string gz(size, '\0');
  z_stream s{};
  ASSERT_EQ(deflateInit2(&s, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  s.next_in = reinterpret_cast<Bytef*>(text.data());
  s.avail_in = static_cast<uInt>(text.size());
  s.next_out = reinterpret_cast<Bytef*>(gz.data());
  s.avail_out = static_cast<uInt>(gz.size());
  ASSERT_EQ(deflate(&s, Z_FINISH), Z_STREAM_END);
  gz.resize(s.total_out);
  deflateEnd(&s);

  EXPECT_EQ(gunzip(gz, 200'000), text);
  EXPECT_FALSE(gunzip(gz, 99'999).has_value());
  EXPECT_EQ(gunzip(gz + gz, 200'000), text + text);  // two members, as `cat a.gz b.gz` makes
  EXPECT_FALSE(gunzip(gz.substr(0, gz.size() / 2), 200'000).has_value());
  EXPECT_FALSE(gunzip("", 10).has_value());
}

TEST(ReversedMuellerDictionaryTest, ReadsEnglishToRussianBackwards) {
  TempDir dir;
  auto [index, dict] = writeDictd(
      dir, "mueller",
      {{"00databaseshort", "Mueller\n"},
       {"cat", "cat\n   [kæt] _n.\n   1) кот; кошка; tom cat кот\n"},
       {"hedgehog", "hedgehog\n   [ˈhɛdʒhɒg] _n. ёж\n"},
       {"puss", "puss\n   _n. кошка, киска\n"},
       {"tomcat", "tomcat\n   _n. кот\n"},
       {"feline", "feline\n   1) кошачий\n   2) похожий на кошку, кот\n"}});
  auto loaded = ReversedMuellerDictionary::load(index, dict);
  ASSERT_TRUE(loaded.has_value()) << loaded.error();
  const ReversedMuellerDictionary& d = **loaded;
  struct Row {
    const char* word;
    std::vector<WordEntry> expected;
  };
  // English headwords where the Russian word comes first go first; "feline" names кот last.
  const Row rows[] = {
      {"кот", {{"кот", "", {"cat", "tomcat", "feline"}, true}}},
      {"кошка", {{"кошка", "", {"puss", "cat"}, true}}},
      {"ёж", {{"ёж", "", {"hedgehog"}, true}}},
      {"еж", {{"ёж", "", {"hedgehog"}, true}}},
      {"киска", {{"киска", "", {"puss"}, true}}},
      {"cat", {}},
      {"кошку", {}},
      {"mueller", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(d.lookup(row.word), row.expected);
    EXPECT_EQ(d.contains(row.word), !row.expected.empty());
  }
}

}  // namespace
}  // namespace vesko
