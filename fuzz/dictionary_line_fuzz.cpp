// Fuzzes parseDictionaryLine. Beyond memory errors, every accepted line is checked against the
// layout's invariants and against a plain byte-by-byte reading of the layout written here, and a
// line that reading accepts must not be rejected.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "dict/cedict_line.h"
#include "fuzz_support.h"

namespace {

using vesko::fuzz::inside;
using vesko::fuzz::offsetIn;

struct Span {
  std::size_t begin = 0;
  std::size_t length = 0;
  bool operator==(const Span&) const = default;
};

// What the line should parse to, found without string_view's find/substr so that it does not
// share the parser's mistakes.
struct Expected {
  bool accepted = false;
  Span trad, simp, pinyin;
  std::vector<Span> defs;
};

bool isBlank(char c) { return c == ' ' || c == '\t'; }

Expected expectedParse(std::string_view line) {
  Expected e;
  const std::size_t n = line.size();
  if (n == 0 || line[0] == '#') return e;
  std::size_t open = 0;
  while (open < n && line[open] != '[') ++open;
  if (open == n) return e;
  std::size_t close = open + 1;
  while (close < n && line[close] != ']') ++close;
  if (close == n) return e;

  // Headwords are separated by spaces only: a tab stays inside a headword.
  Span words[2];
  int found = 0;
  for (std::size_t i = 0; i < open && found < 2;) {
    if (line[i] == ' ') {
      ++i;
      continue;
    }
    std::size_t j = i;
    while (j < open && line[j] != ' ') ++j;
    words[found++] = {i, j - i};
    i = j;
  }
  if (found < 2) return e;

  e.accepted = true;
  e.trad = words[0];
  e.simp = words[1];
  e.pinyin = {open + 1, close - open - 1};
  std::size_t pieceStart = close + 1;
  for (std::size_t i = close + 1; i <= n; ++i) {
    if (i < n && line[i] != '/') continue;
    std::size_t b = pieceStart, end = i;
    while (b < end && isBlank(line[b])) ++b;
    while (end > b && isBlank(line[end - 1])) --end;
    if (end > b) e.defs.push_back({b, end - b});
    pieceStart = i + 1;
  }
  return e;
}

bool hasByte(std::string_view s, char c) {
  for (char x : s)
    if (x == c) return true;
  return false;
}

// Reused from line to line, as the loader does, so that anything left over from an earlier line
// shows up as a view outside the current one.
vesko::DictionaryLine parsed;

void checkLine(std::string_view line) {
  const Expected expected = expectedParse(line);
  const bool accepted = vesko::parseDictionaryLine(line, parsed);

  if (!accepted) {
    VESKO_FUZZ_CHECK(!expected.accepted && "rejected a well-formed line", line);
    return;
  }
  VESKO_FUZZ_CHECK(expected.accepted && "accepted a line without '[', ']' or two headwords", line);
  VESKO_FUZZ_CHECK(!line.empty() && line.front() != '#', line);

  const std::size_t open = expected.pinyin.begin - 1;

  VESKO_FUZZ_CHECK(inside(parsed.trad, line), line);
  VESKO_FUZZ_CHECK(inside(parsed.simp, line), line);
  VESKO_FUZZ_CHECK(inside(parsed.pinyin, line), line);
  VESKO_FUZZ_CHECK(!parsed.trad.empty() && !parsed.simp.empty(), line);
  VESKO_FUZZ_CHECK(!hasByte(parsed.trad, ' ') && !hasByte(parsed.simp, ' '), line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.trad, line) + parsed.trad.size() < offsetIn(parsed.simp, line),
                   line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.trad, line) + parsed.trad.size() <= open, line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.simp, line) + parsed.simp.size() <= open, line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.pinyin, line) == open + 1, line);
  VESKO_FUZZ_CHECK(!hasByte(parsed.pinyin, ']'), line);

  VESKO_FUZZ_CHECK((Span{offsetIn(parsed.trad, line), parsed.trad.size()} == expected.trad), line);
  VESKO_FUZZ_CHECK((Span{offsetIn(parsed.simp, line), parsed.simp.size()} == expected.simp), line);
  VESKO_FUZZ_CHECK((Span{offsetIn(parsed.pinyin, line), parsed.pinyin.size()} == expected.pinyin),
                   line);

  VESKO_FUZZ_CHECK(parsed.defs.size() == expected.defs.size(), line);
  const std::size_t glossesFrom = expected.pinyin.begin + expected.pinyin.length + 1;
  std::size_t previousEnd = glossesFrom;
  for (std::size_t k = 0; k < parsed.defs.size(); ++k) {
    const std::string_view gloss = parsed.defs[k];
    VESKO_FUZZ_CHECK(inside(gloss, line), line);
    VESKO_FUZZ_CHECK(!gloss.empty(), line);
    VESKO_FUZZ_CHECK(!isBlank(gloss.front()) && !isBlank(gloss.back()), line);
    VESKO_FUZZ_CHECK(!hasByte(gloss, '/'), line);
    const std::size_t at = offsetIn(gloss, line);
    VESKO_FUZZ_CHECK(at >= previousEnd && "glosses out of order or before the ']'", line);
    VESKO_FUZZ_CHECK((Span{at, gloss.size()} == expected.defs[k]), line);
    previousEnd = at + gloss.size();

    // A cross-reference is recognised by how the gloss begins, so whatever follows cannot
    // change the answer from yes to no.
    if (vesko::isCrossReference(gloss))
      VESKO_FUZZ_CHECK(vesko::isCrossReference(line.substr(at)), line);
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // A leftover gloss from a line before the first would otherwise look like one from the input.
  parsed.defs.assign(4, std::string_view("stale"));
  VESKO_FUZZ_CHECK(!vesko::isCrossReference(""), std::string_view());
  VESKO_FUZZ_CHECK(vesko::isCrossReference("variant of 個|个[ge4]"), std::string_view());
  VESKO_FUZZ_CHECK(vesko::isCrossReference("CL:個|个[ge4]"), std::string_view());
  VESKO_FUZZ_CHECK(!vesko::isCrossReference("China"), std::string_view());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  vesko::fuzz::forEachLine(data, size, checkLine);
  return 0;
}
