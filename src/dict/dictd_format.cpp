#include "dict/dictd_format.h"

#include <algorithm>

#include "dict/text_lines.h"

namespace vesko {
namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLatin(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// "12. cat" → 5 (the length of "12. "); 0 when the line does not start with a sense number.
std::size_t senseNumberLength(std::string_view line) {
  std::size_t i = 0;
  while (i < line.size() && isDigit(line[i])) ++i;
  if (i == 0 || i >= line.size() || line[i] != '.') return 0;
  ++i;
  if (i == line.size()) return i;
  if (i < line.size() && !isBlank(line[i])) return 0;
  while (i < line.size() && isBlank(line[i])) ++i;
  return i;
}

// "house, home 2." → "house, home": FreeDict leaves the number of a nested sense at the end of
// the line above it.
std::string_view withoutTrailingNumber(std::string_view s) {
  s = trimmedBlanks(s);
  if (s.empty() || s.back() != '.') return s;
  std::size_t i = s.size() - 1;
  while (i > 0 && isDigit(s[i - 1])) --i;
  if (i == s.size() - 1 || i == 0 || !isBlank(s[i - 1])) return s;
  return trimmedBlanks(s.substr(0, i));
}

// --- Mueller ---------------------------------------------------------------------------------

// Cyrillic letters are U+0400–U+04FF: lead bytes 0xD0–0xD3 in UTF-8.
bool isCyrillicLead(unsigned char c) { return c >= 0xD0 && c <= 0xD3; }

// "_I", "_II", "_IV": the homograph numbers of Mueller's entries.
std::size_t romanMarkLength(std::string_view s) {
  if (s.size() < 2 || s[0] != '_') return 0;
  std::size_t i = 1;
  while (i < s.size() && (s[i] == 'I' || s[i] == 'V' || s[i] == 'X')) ++i;
  if (i == 1 || (i < s.size() && !isBlank(s[i]))) return 0;
  return i;
}

// "1)", "12)", "1.", and the lettered sub-senses "а)", "б)" (Cyrillic letters, two bytes).
// `lettered` tells which.
std::size_t senseMarkLength(std::string_view s, bool& lettered) {
  lettered = false;
  std::size_t i = 0;
  while (i < s.size() && isDigit(s[i])) ++i;
  if (i > 0 && i < s.size() && (s[i] == ')' || s[i] == '.')) return i + 1;
  if (s.size() >= 3 && isCyrillicLead(static_cast<unsigned char>(s[0])) && s[2] == ')') {
    lettered = true;
    return 3;
  }
  return 0;
}

// Removes (…), […] and {…} groups, nested or not, and "_зоол."-style labels. An unclosed group
// runs to the end of the text.
std::string withoutRemarks(std::string_view s) {
  std::string out;
  int depth = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const char c = s[i];
    if (c == '(' || c == '[' || c == '{') {
      ++depth;
    } else if ((c == ')' || c == ']' || c == '}') && depth > 0) {
      --depth;
    } else if (depth == 0) {
      if (c == '_') {
        // A label runs to the next blank or to its closing '.'.
        while (i + 1 < s.size() && !isBlank(s[i + 1]) && s[i] != '.') ++i;
        out += ' ';
        continue;
      }
      out += c;
    }
  }
  return out;
}

// One word or a phrase of two words, every character a Cyrillic letter, a blank or a hyphen.
bool isRussianPhrase(std::string_view s) {
  if (s.empty()) return false;
  int words = 0;
  bool inWord = false;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const auto c = static_cast<unsigned char>(s[i]);
    if (c == ' ') {
      inWord = false;
      continue;
    }
    if (c == '-') {
      if (!inWord) return false;
      continue;
    }
    if (!isCyrillicLead(c) || i + 1 >= s.size()) return false;
    const auto next = static_cast<unsigned char>(s[i + 1]);
    if ((next & 0xC0) != 0x80) return false;
    ++i;
    if (!inWord) ++words;
    inWord = true;
  }
  return words >= 1 && words <= 2 && s.back() != '-';
}

std::string collapsedBlanks(std::string_view s) {
  std::string out;
  for (char c : s) {
    if (isBlank(c) || c == '\n') {
      if (!out.empty() && out.back() != ' ') out += ' ';
    } else {
      out += c;
    }
  }
  while (!out.empty() && out.back() == ' ') out.pop_back();
  return out;
}

struct Segment {
  std::string text;
  bool lettered = false;
};

}  // namespace

std::optional<uint64_t> decodeDictdNumber(std::string_view digits) {
  if (digits.empty() || digits.size() > 10) return std::nullopt;
  uint64_t value = 0;
  for (char c : digits) {
    int d;
    if (c >= 'A' && c <= 'Z') d = c - 'A';
    else if (c >= 'a' && c <= 'z') d = c - 'a' + 26;
    else if (c >= '0' && c <= '9') d = c - '0' + 52;
    else if (c == '+') d = 62;
    else if (c == '/') d = 63;
    else return std::nullopt;
    value = value * 64 + static_cast<uint64_t>(d);
  }
  return value;
}

std::optional<DictdIndexLine> parseDictdIndexLine(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  const std::size_t tab1 = line.find('\t');
  if (tab1 == std::string_view::npos || tab1 == 0) return std::nullopt;
  const std::size_t tab2 = line.find('\t', tab1 + 1);
  if (tab2 == std::string_view::npos) return std::nullopt;
  std::size_t end = line.find('\t', tab2 + 1);
  if (end == std::string_view::npos) end = line.size();
  auto offset = decodeDictdNumber(line.substr(tab1 + 1, tab2 - tab1 - 1));
  auto length = decodeDictdNumber(line.substr(tab2 + 1, end - tab2 - 1));
  if (!offset || !length) return std::nullopt;
  return DictdIndexLine{line.substr(0, tab1), *offset, *length};
}

bool isDictdMetadata(std::string_view headword) {
  return headword.substr(0, 10) == "00database" || headword.substr(0, 11) == "00-database";
}

FreedictBody parseFreedictBody(std::string_view body) {
  FreedictBody out;
  std::vector<std::string_view> lines;
  forEachLineFeedLine(body, [&](std::string_view line, std::size_t) {
    if (!trimmedBlanks(line).empty()) lines.push_back(line);
  });
  if (lines.empty()) return out;

  std::string_view head = trimmedBlanks(lines.front());
  const std::size_t slash = head.find('/');
  if (slash != std::string_view::npos) {
    const std::size_t close = head.find('/', slash + 1);
    if (close != std::string_view::npos)
      out.pronunciation = trimmedBlanks(head.substr(slash + 1, close - slash - 1));
  }
  out.headword = trimmedBlanks(head.substr(0, std::min(slash, head.find(" <"))));

  bool numbered = false;
  for (std::size_t i = 1; i < lines.size(); ++i) {
    if (const std::size_t n = senseNumberLength(lines[i]); n > 0) {
      numbered = true;
      std::string_view sense = withoutTrailingNumber(lines[i].substr(n));
      if (!sense.empty()) out.senses.push_back(sense);
    }
  }
  if (!numbered && lines.size() > 1) {
    std::string_view sense = withoutTrailingNumber(lines[1]);
    if (!sense.empty()) out.senses.push_back(sense);
  }
  return out;
}

std::vector<std::string> muellerTranslations(std::string_view body) {
  // Wrapped lines are joined back into the senses they belong to.
  std::vector<Segment> segments;
  bool first = true;
  forEachLineFeedLine(body, [&](std::string_view line, std::size_t) {
    if (first) {  // the English headword
      first = false;
      return;
    }
    std::string_view t = trimmedBlanks(line);
    if (t.empty()) return;
    bool lettered = false;
    if (segments.empty() || romanMarkLength(t) > 0 || senseMarkLength(t, lettered) > 0) {
      segments.push_back({std::string(t), lettered});
    } else {
      segments.back().text += ' ';
      segments.back().text += t;
    }
  });

  std::vector<std::string> out;
  bool parentHasExample = false;
  for (const Segment& segment : segments) {
    std::string_view t = segment.text;
    // Leading marks: "_I", "1.", "1)", "а)", labels and transcriptions come off with the remarks.
    while (true) {
      t = trimmedBlanks(t);
      bool lettered = false;
      if (std::size_t n = romanMarkLength(t); n > 0) {
        t.remove_prefix(n);
      } else if (std::size_t m = senseMarkLength(t, lettered); m > 0) {
        t.remove_prefix(m);
      } else {
        break;
      }
    }
    const std::string plain = withoutRemarks(t);
    const bool hasLatin = std::any_of(plain.begin(), plain.end(), isLatin);
    // "go about а) расхаживать; б) …": the lettered senses after an English phrase translate the
    // phrase, not the headword.
    if (segment.lettered && parentHasExample) continue;
    if (!segment.lettered) parentHasExample = hasLatin;

    std::string_view rest = plain;
    while (!rest.empty()) {
      const std::size_t semicolon = rest.find(';');
      std::string_view part = rest.substr(0, semicolon);
      rest = semicolon == std::string_view::npos ? std::string_view() : rest.substr(semicolon + 1);
      if (std::any_of(part.begin(), part.end(), isLatin)) break;  // examples start here
      while (!part.empty()) {
        const std::size_t comma = part.find(',');
        const std::string phrase = collapsedBlanks(part.substr(0, comma));
        part = comma == std::string_view::npos ? std::string_view() : part.substr(comma + 1);
        if (isRussianPhrase(phrase) && std::find(out.begin(), out.end(), phrase) == out.end())
          out.push_back(phrase);
      }
    }
  }
  return out;
}

}  // namespace vesko
