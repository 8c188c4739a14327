#pragma once
// The line layouts of EDICT and KANJIDIC (UTF-8, as scripts/fetch-dicts-ja-pl-ru writes them):
//   EDICT     食べる [たべる] /(v1,vt) (1) to eat/(2) to live on (e.g. a salary)/(P)/
//             かわいい /(adj-i) cute/             (a kana-only headword has no [..])
//   KANJIDIC  猫 4753 U732b B94 … ビョウ ねこ {cat}
// Parsing never allocates for EDICT: results are views into the line. Stateless; any thread.

#include <string>
#include <string_view>
#include <vector>

namespace vesko {

struct EdictLine {
  std::vector<std::string_view> kanji;  // written forms; empty for a kana-only headword
  std::vector<std::string_view> kana;   // readings, or the kana-only headwords
  // Glosses without their leading tags: "(v1,vt) (1) to eat" gives "to eat". The "(P)" marker of
  // common words is not a gloss and is left out.
  std::vector<std::string_view> glosses;
};

// False for comments, the file's header line and malformed lines (no '/', no headword, an
// unclosed '[', no gloss); `out` is then unspecified. Views point into `line`.
bool parseEdictLine(std::string_view line, EdictLine& out);

struct KanjidicLine {
  std::string_view kanji;
  std::vector<std::string_view> onReadings;   // katakana: ビョウ
  std::vector<std::string_view> kunReadings;  // hiragana, okurigana after '.': ね.こ, -ねこ
  std::vector<std::string_view> meanings;     // the {…} fields: "cat"
};

// False for comments and lines without a kanji, readings or an English meaning.
bool parseKanjidicLine(std::string_view line, KanjidicLine& out);

}  // namespace vesko
