#include "learn/word_export.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace vesko {
namespace {

// Splits an export's note lines into fields as Anki's CSV reader does: quoted fields may hold
// the separator, doubled quotes and line breaks.
std::vector<std::vector<std::string>> readNotes(const std::string& text, char separator) {
  std::vector<std::vector<std::string>> rows;
  std::vector<std::string> row;
  std::string field;
  bool quoted = false, atLineStart = true;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (atLineStart && c == '#') {  // a header line
      i = text.find('\n', i);
      continue;
    }
    atLineStart = false;
    if (quoted) {
      if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
        field += '"';
        ++i;
      } else if (c == '"') {
        quoted = false;
      } else {
        field += c;
      }
    } else if (c == '"') {
      quoted = true;
    } else if (c == separator) {
      row.push_back(std::move(field));
      field.clear();
    } else if (c == '\n') {
      row.push_back(std::move(field));
      field.clear();
      rows.push_back(std::move(row));
      row.clear();
      atLineStart = true;
    } else {
      field += c;
    }
  }
  return rows;
}

SavedWord word(std::string spelling, std::string reading, std::string definition,
               std::string context, std::string lang) {
  SavedWord saved;
  saved.word = std::move(spelling);
  saved.pinyin = std::move(reading);
  saved.definition = std::move(definition);
  saved.context = std::move(context);
  saved.lang = std::move(lang);
  return saved;
}

TEST(WordExportTest, HeaderTellsAnkiTheLayout) {
  EXPECT_EQ(exportWords({}, ExportFormat::csv),
            "#separator:comma\n#html:true\n#columns:word,reading,definition,sentence,tags\n"
            "#tags column:5\n");
  EXPECT_EQ(exportWords({}, ExportFormat::tsv),
            "#separator:tab\n#html:true\n#columns:word\treading\tdefinition\tsentence\ttags\n"
            "#tags column:5\n");
}

TEST(WordExportTest, FieldsSurviveQuotingInBothFormats) {
  const std::vector<SavedWord> words{
      word("学习", "xué xí", "to study, to learn", "我们一起学习。", "zh"),
      word("#hash", "", "say \"hi\"\tthen go", "line one\nline two with #hash", "en"),
      word("a<b", "", "", "x a<b y", "fr"),
  };
  // clang-format off
  const std::vector<std::vector<std::string>> expected{
    {"学习", "xué xí", "to study, to learn", "我们一起<b>学习</b>。", "zh"},
    {"#hash", "", "say &quot;hi&quot;\tthen go", "line one\nline two with <b>#hash</b>", "en"},
    {"a&lt;b", "", "", "x <b>a&lt;b</b> y", "fr"},
  };
  // clang-format on
  for (auto [format, separator] : {std::pair{ExportFormat::csv, ','}, {ExportFormat::tsv, '\t'}}) {
    SCOPED_TRACE(separator == ',' ? "csv" : "tsv");
    EXPECT_EQ(readNotes(exportWords(words, format), separator), expected);
  }
}

TEST(WordExportTest, WordIsBoldInItsSentence) {
  struct Row {
    const char* sentence;
    const char* word;
    const char* html;
  };
  // clang-format off
  const Row rows[] = {
    {"我们一起学习。", "学习", "我们一起<b>学习</b>。"},
    {"hello there", "Hello", "<b>hello</b> there"},            // kept with a capital
    {"ÉTÉ chaud", "été", "<b>ÉTÉ</b> chaud"},
    {"learn, learned, learning", "learned", "learn, <b>learned</b>, learning"},
    {"nothing here", "absent", "nothing here"},
    {"<i>x</i> & y", "y", "&lt;i&gt;x&lt;/i&gt; &amp; <b>y</b>"},
    {"", "word", ""},
    {"sentence", "", "sentence"},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(row.sentence);
    EXPECT_EQ(boldSentence(row.sentence, row.word), row.html);
  }
}

std::string contentOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(WordExportTest, FileHoldsTheExportAndTheCount) {
  testing::TempDir dir;
  const std::vector<SavedWord> words{word("学习", "xué xí", "to study", "我们一起学习。", "zh"),
                                     word("chat", "", "cat", "Le chat dort.", "fr")};
  const auto file = dir.path() / "anki" / "mots.tsv";  // the folder is made
  auto written = exportWordsToFile(words, ExportFormat::tsv, file);
  ASSERT_TRUE(written) << written.error();
  EXPECT_EQ(*written, 2u);
  EXPECT_EQ(contentOf(file), exportWords(words, ExportFormat::tsv));
}

TEST(WordExportTest, FailedWriteLeavesTheOldFile) {
  testing::TempDir dir;
  const auto file = dir.write("mots.csv", "old");
  std::filesystem::create_directories(dir.path() / "mots.csv.d");
  // A folder where the file should be cannot be replaced by it.
  auto refused = exportWordsToFile({}, ExportFormat::csv, dir.path() / "mots.csv.d");
  ASSERT_FALSE(refused);
  EXPECT_FALSE(refused.error().empty());
  EXPECT_EQ(contentOf(file), "old");
}

TEST(WordExportTest, ExtensionAddedOnlyWhenMissing) {
  struct Row {
    const char* given;
    ExportFormat format;
    const char* kept;
  };
  const Row rows[] = {
      {"/x/mots", ExportFormat::tsv, "/x/mots.tsv"},
      {"/x/mots", ExportFormat::csv, "/x/mots.csv"},
      {"/x/mots.txt", ExportFormat::tsv, "/x/mots.txt"},
      {"/x/mots.csv", ExportFormat::tsv, "/x/mots.csv"},
      {"/x/", ExportFormat::csv, "/x/"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.given);
    EXPECT_EQ(withExportExtension(row.given, row.format), std::filesystem::path(row.kept));
  }
}

}  // namespace
}  // namespace vesko
