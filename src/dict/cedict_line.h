#pragma once
// Parsers for one line of the two Chinese dictionary files: the CC-CEDICT layout
// ("中國 中国 [Zhong1 guo2] /China/") and the single-character supplement
// ("字<TAB>zi4<TAB>letter"). Views point into the line; nothing is allocated beyond `defs`'
// capacity, which callers reuse from line to line. Stateless; any thread.

#include <string_view>
#include <vector>

namespace vesko {

struct DictionaryLine {
  std::string_view trad;
  std::string_view simp;
  std::string_view pinyin;
  std::vector<std::string_view> defs;
};

// False for lines to skip: empty, comments, no "[...]", fewer than two headwords.
bool parseDictionaryLine(std::string_view line, DictionaryLine& out);

struct SupplementLine {
  std::string_view character;
  std::string_view pinyin;
  std::string_view definition;
};

// False for lines with fewer than three tab-separated fields or whose first field is not exactly
// one character. The line must be valid UTF-8.
bool parseSupplementLine(std::string_view line, SupplementLine& out);

// A gloss that only points elsewhere ("variant of 個|个[ge4]", "CL:個|个[ge4]") rather than
// saying what the character means.
bool isCrossReference(std::string_view gloss);

}  // namespace vesko
