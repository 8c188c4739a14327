// Invariants over the interface-text tables, and a scan of the sources for every French text the
// code hands to Loc::t.

#include "settings/loc_table.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "text/unicode.h"

namespace vesko {
namespace {

std::string name(TableLanguage language) {
  return std::string(tableCode(language));
}

TEST(LocTableTest, NoTableHasADuplicateOrAnEmptyRow) {
  for (auto language : kTableLanguages) {
    SCOPED_TRACE(name(language));
    std::set<std::string_view> seen;
    for (const auto& row : builtInRows(language)) {
      EXPECT_TRUE(seen.insert(row.french).second) << "duplicate: " << row.french;
      EXPECT_FALSE(row.translation.empty()) << row.french;
      EXPECT_TRUE(text::isValidUtf8(row.french) && text::isValidUtf8(row.translation))
          << row.french;
      // A key with spaces around it would never match the text the code passes.
      EXPECT_EQ(row.french.find_first_not_of(' '), 0u) << row.french;
      EXPECT_NE(row.french.back(), ' ') << row.french;
    }
  }
}

TEST(LocTableTest, EveryTextIsInEveryTableWithItsPlaceholders) {
  std::set<std::string_view> all;
  for (auto language : kTableLanguages)
    for (const auto& row : builtInRows(language)) all.insert(row.french);
  for (auto language : kTableLanguages) {
    SCOPED_TRACE(name(language));
    LocTable table(builtInRows(language));
    for (auto french : all) {
      auto translation = table.find(french);
      if (!translation) {
        ADD_FAILURE() << "no row for: " << french;
        continue;
      }
      EXPECT_EQ(placeholders(*translation), placeholders(french))
          << french << " → " << *translation;
    }
  }
}

TEST(LocTableTest, PlaceholdersInOrder) {
  struct Row {
    std::string_view text;
    std::vector<std::string_view> expected;
  };
  const Row rows[] = {
      {"Niveau %d sur %d", {"%d", "%d"}},
      {"%@ est surchargé", {"%@"}},
      {"100 %% sûr, %d fois", {"%%", "%d"}},
      {"50 % de remise", {"% "}},  // a stray percent sign is a difference to catch
      {"fin %", {"%"}},
      {"sans rien", {}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    EXPECT_EQ(placeholders(row.text), row.expected);
  }
}

// The parser of AI answers recognises a section by its title in the answer language, so two
// titles that translate alike would be confused.
TEST(LocTableTest, AnswerSectionTitlesStayDistinct) {
  const char* titles[] = {"Structure", "Expression",    "Termes", "Origine",    "Grammaire",
                          "Nuance",    "Sens littéral", "Sens",   "Caractères", "Famille",
                          "Ici",       "Exemple",       "Phrase", "Mot",        "Morceaux"};
  for (auto language : kTableLanguages) {
    SCOPED_TRACE(name(language));
    LocTable table(builtInRows(language));
    std::map<std::string_view, const char*> seen;
    for (const char* title : titles) {
      auto translated = table.find(title);
      ASSERT_TRUE(translated) << title;
      auto [it, fresh] = seen.emplace(*translated, title);
      EXPECT_TRUE(fresh) << title << " and " << it->second << " are both " << *translated;
      EXPECT_EQ(translated->find(':'), std::string_view::npos) << title;
    }
  }
}

// The French literals passed to `t(`, `.t(` or `->t(` in the sources, with adjacent literals joined
// ("a" "b" is "ab") and the common escapes undone.
std::vector<std::string> literalsHandedToT(const std::string& source) {
  std::vector<std::string> found;
  for (std::size_t at = source.find("t("); at != std::string::npos;
       at = source.find("t(", at + 2)) {
    // `t(` alone (inside Loc), `.t(` or `->t(`, but not `set(` or `list(`.
    char before = at > 0 ? source[at - 1] : ' ';
    if (std::isalnum(static_cast<unsigned char>(before)) || before == '_') continue;
    std::size_t i = at + 2;
    std::string literal;
    bool any = false;
    for (;;) {
      while (i < source.size() && std::isspace(static_cast<unsigned char>(source[i]))) ++i;
      if (i >= source.size() || source[i] != '"') break;
      any = true;
      for (++i; i < source.size() && source[i] != '"'; ++i) {
        if (source[i] == '\\' && i + 1 < source.size()) {
          char escaped = source[++i];
          literal += escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
        } else {
          literal += source[i];
        }
      }
      ++i;
    }
    if (any) found.push_back(literal);
  }
  return found;
}

TEST(LocTableTest, ScannerFindsLiterals) {
  auto found = literalsHandedToT(
      "loc.t(\"Réponse vide.\"); loc_->t( \"Il manque \"\n \"la clé\" ); set(\"x\"); "
      "loc.t(text); fmt(\"a\"); loc.t(\"Dis \\\"oui\\\"\", \"en\"); (t(\"Mot\"));");
  EXPECT_EQ(found,
            (std::vector<std::string>{"Réponse vide.", "Il manque la clé", "Dis \"oui\"", "Mot"}));
}

TEST(LocTableTest, EveryTextTheCodeTranslatesHasARowEverywhere) {
  std::set<std::string> literals;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(VESKO_SOURCE_DIR)) {
    auto extension = entry.path().extension();
    if (extension != ".cpp" && extension != ".h") continue;
    // The tables themselves are data, not calls.
    if (entry.path().filename().string().starts_with("loc_rows")) continue;
    std::ifstream in(entry.path(), std::ios::binary);
    std::string source((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    for (auto& literal : literalsHandedToT(source)) literals.insert(std::move(literal));
  }
  // The picker's first label goes through Loc::t: the scan must at least find that one.
  EXPECT_TRUE(literals.contains("Automatique (langue du Mac)"));
  for (auto language : kTableLanguages) {
    SCOPED_TRACE(name(language));
    LocTable table(builtInRows(language));
    for (const auto& literal : literals) {
      auto row = table.find(literal);
      EXPECT_TRUE(row) << "no row for: " << literal;
      if (row) {
        EXPECT_EQ(placeholders(*row), placeholders(literal)) << literal;
      }
    }
  }
}

}  // namespace
}  // namespace vesko
