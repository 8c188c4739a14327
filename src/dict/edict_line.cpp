#include "dict/edict_line.h"

#include <cstdint>

#include "dict/text_lines.h"

namespace vesko {
namespace {

// EDICT2 marks forms like "会う(P)" or "逢う(iK)"; the marker is not part of the word.
std::string_view withoutFormMarkers(std::string_view form) {
  while (!form.empty() && form.back() == ')') {
    const std::size_t open = form.rfind('(');
    if (open == std::string_view::npos || open == 0) break;
    form = trimmedBlanks(form.substr(0, open));
  }
  return form;
}

// A headword is never empty, never holds a blank or a bracket, and never starts with U+3000
// IDEOGRAPHIC SPACE, as the file's header line "　？？？ /EDICT, …/" does.
bool isHeadwordForm(std::string_view form) {
  if (form.empty() || form.substr(0, 3) == "\xE3\x80\x80") return false;
  for (char c : form)
    if (isBlank(c) || c == '[' || c == ']' || c == '/' || c == '(' || c == ')') return false;
  return true;
}

bool splitForms(std::string_view list, std::vector<std::string_view>& out) {
  out.clear();
  while (true) {
    const std::size_t semicolon = list.find(';');
    std::string_view form = withoutFormMarkers(trimmedBlanks(list.substr(0, semicolon)));
    if (!form.empty()) {
      if (!isHeadwordForm(form)) return false;
      out.push_back(form);
    }
    if (semicolon == std::string_view::npos) break;
    list.remove_prefix(semicolon + 1);
  }
  return !out.empty();
}

// "(n)", "(v5r,vi)", "(1)", "(on-mim)", "{comp}": tags are short runs of lowercase letters, digits,
// commas and hyphens. "(e.g. a salary)" and "(Metaplexis japonica)" are part of the gloss.
bool isTag(std::string_view inside) {
  if (inside.empty() || inside.size() > 24) return false;
  for (char c : inside) {
    const bool ok = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == ',' || c == '-' ||
                    c == '_';
    if (!ok) return false;
  }
  return true;
}

std::string_view withoutLeadingTags(std::string_view gloss) {
  while (!gloss.empty() && (gloss.front() == '(' || gloss.front() == '{')) {
    const char close = gloss.front() == '(' ? ')' : '}';
    const std::size_t end = gloss.find(close);
    if (end == std::string_view::npos || !isTag(gloss.substr(1, end - 1))) break;
    gloss = trimmedBlanks(gloss.substr(end + 1));
  }
  return gloss;
}

bool isKatakana(char32_t c) { return c >= 0x30A0 && c <= 0x30FF; }
bool isHiragana(char32_t c) { return c >= 0x3040 && c <= 0x309F; }

// The first code point of a UTF-8 string, U+FFFD when it is not well formed.
char32_t firstCodePoint(std::string_view s, std::size_t& length) {
  length = 1;
  if (s.empty()) return 0xFFFD;
  const auto b0 = static_cast<unsigned char>(s[0]);
  if (b0 < 0x80) return b0;
  int extra = b0 >= 0xF0 ? 3 : b0 >= 0xE0 ? 2 : b0 >= 0xC0 ? 1 : -1;
  if (extra < 0 || s.size() <= static_cast<std::size_t>(extra)) return 0xFFFD;
  char32_t c = b0 & (0x3F >> extra);
  for (int i = 1; i <= extra; ++i) {
    const auto b = static_cast<unsigned char>(s[static_cast<std::size_t>(i)]);
    if ((b & 0xC0) != 0x80) return 0xFFFD;
    c = (c << 6) | (b & 0x3F);
  }
  length = static_cast<std::size_t>(extra) + 1;
  return c;
}

}  // namespace

bool parseEdictLine(std::string_view line, EdictLine& out) {
  out.kanji.clear();
  out.kana.clear();
  out.glosses.clear();
  if (line.empty() || line.front() == '#') return false;
  const std::size_t slash = line.find('/');
  if (slash == std::string_view::npos) return false;
  const std::string_view head = trimmedBlanks(line.substr(0, slash));
  const std::size_t open = head.find('[');
  if (open == std::string_view::npos) {
    if (head.find(']') != std::string_view::npos || !splitForms(head, out.kana)) return false;
  } else {
    if (head.back() != ']' || head.find('[', open + 1) != std::string_view::npos) return false;
    const std::string_view readings = head.substr(open + 1, head.size() - open - 2);
    if (!splitForms(head.substr(0, open), out.kanji) || !splitForms(readings, out.kana))
      return false;
  }

  std::string_view rest = line.substr(slash + 1);
  while (!rest.empty()) {
    const std::size_t next = rest.find('/');
    std::string_view gloss = withoutLeadingTags(trimmedBlanks(rest.substr(0, next)));
    // "(P)" marks a common word; EDICT2's "EntL1234" is the entry's sequence number.
    if (!gloss.empty() && gloss != "(P)" && gloss.substr(0, 4) != "EntL") out.glosses.push_back(gloss);
    if (next == std::string_view::npos) break;
    rest.remove_prefix(next + 1);
  }
  return !out.glosses.empty();
}

bool parseKanjidicLine(std::string_view line, KanjidicLine& out) {
  out = KanjidicLine{};
  if (line.empty() || line.front() == '#') return false;
  std::size_t at = line.find(' ');
  if (at == std::string_view::npos) return false;
  out.kanji = line.substr(0, at);
  std::size_t length = 0;
  const char32_t kanji = firstCodePoint(out.kanji, length);
  if (kanji < 0x2E80 || kanji == 0xFFFD || length != out.kanji.size()) return false;

  bool nanori = false;  // after T1/T2 come readings used only in names
  while (at < line.size()) {
    while (at < line.size() && isBlank(line[at])) ++at;
    if (at >= line.size()) break;
    if (line[at] == '{') {
      const std::size_t close = line.find('}', at + 1);
      // "{ca {cat}": a brace opened inside a meaning leaves the line's layout in doubt.
      if (close == std::string_view::npos || line.find('{', at + 1) < close) return false;
      const std::string_view meaning = trimmedBlanks(line.substr(at + 1, close - at - 1));
      if (!meaning.empty()) out.meanings.push_back(meaning);
      at = close + 1;
      continue;
    }
    std::size_t end = line.find(' ', at);
    if (end == std::string_view::npos) end = line.size();
    const std::string_view token = trimmedBlanks(line.substr(at, end - at));
    at = end;
    // Braces belong to meanings only: "しげ.{る" is a damaged line, not a reading.
    if (token.find_first_of("{}") != std::string_view::npos) return false;
    if (token == "T1" || token == "T2") {
      nanori = true;
      continue;
    }
    if (nanori || token.empty()) continue;
    std::size_t n = 0;
    const std::string_view body = token.front() == '-' ? token.substr(1) : token;
    const char32_t first = firstCodePoint(body, n);
    if (isKatakana(first)) {
      out.onReadings.push_back(token);
    } else if (isHiragana(first)) {
      out.kunReadings.push_back(token);
    }
  }
  return !out.meanings.empty();
}

}  // namespace vesko
