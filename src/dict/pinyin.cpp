#include "dict/pinyin.h"

#include <fmt/format.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cmath>

namespace vesko {
namespace {

struct ToneRow {
  char32_t key;
  std::array<char32_t, 4> marked;  // tones 1 to 4
};

// clang-format off
constexpr std::array<ToneRow, 9> kToneMarks{{
  {U'a', {U'ā', U'á', U'ǎ', U'à'}},
  {U'e', {U'ē', U'é', U'ě', U'è'}},
  {U'i', {U'ī', U'í', U'ǐ', U'ì'}},
  {U'o', {U'ō', U'ó', U'ǒ', U'ò'}},
  {U'u', {U'ū', U'ú', U'ǔ', U'ù'}},
  {U'ü', {U'ǖ', U'ǘ', U'ǚ', U'ǜ'}},
  {U'A', {U'Ā', U'Á', U'Ǎ', U'À'}},
  {U'E', {U'Ē', U'É', U'Ě', U'È'}},
  {U'O', {U'Ō', U'Ó', U'Ǒ', U'Ò'}},
}};
// clang-format on

const ToneRow* toneRow(char32_t c) {
  for (const auto& row : kToneMarks)
    if (row.key == c) return &row;
  return nullptr;
}

// Pinyin vowels are all in Latin-1 and need no locale to lower.
char32_t lower(char32_t c) {
  if ((c >= U'A' && c <= U'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return c + 32;
  return c;
}

std::u32string decode(std::string_view utf8) {
  std::u32string out;
  const auto* bytes = reinterpret_cast<const uint8_t*>(utf8.data());
  const auto length = static_cast<int32_t>(utf8.size());
  for (int32_t i = 0; i < length;) {
    UChar32 c;
    U8_NEXT(bytes, i, length, c);
    out.push_back(c < 0 ? U'\uFFFD' : static_cast<char32_t>(c));
  }
  return out;
}

void encode(char32_t c, std::string& out) {
  uint8_t buffer[U8_MAX_LENGTH];
  int32_t n = 0;
  [[maybe_unused]] UBool error = false;  // the buffer always has room
  U8_APPEND(buffer, n, U8_MAX_LENGTH, static_cast<UChar32>(c), error);
  out.append(reinterpret_cast<const char*>(buffer), static_cast<std::size_t>(n));
}

int toneDigit(std::string_view syllable) {
  if (syllable.empty()) return 0;
  char last = syllable.back();
  return last >= '1' && last <= '5' ? last - '0' : 0;
}

template <typename F>
void forEachSyllable(std::string_view reading, F&& f) {
  while (!reading.empty()) {
    std::size_t space = reading.find(' ');
    std::string_view syllable = reading.substr(0, space);
    if (!syllable.empty()) f(syllable);
    if (space == std::string_view::npos) break;
    reading.remove_prefix(space + 1);
  }
}

std::string markSyllable(std::string_view numbered) {
  std::u32string s;
  for (char32_t c : decode(numbered)) {
    if (c == U':' && !s.empty() && (s.back() == U'u' || s.back() == U'U')) {
      s.back() = s.back() == U'u' ? U'ü' : U'Ü';
    } else {
      s.push_back(c);
    }
  }
  const int tone = s.empty() ? 0 : (s.back() >= U'1' && s.back() <= U'5' ? int(s.back() - U'0') : 0);
  if (tone != 0) s.pop_back();
  if (tone >= 1 && tone <= 4) {
    // Which vowel carries the mark: a, else e, else the o of "ou", else the last vowel.
    std::size_t chosen = std::u32string::npos;
    for (std::size_t i = 0; i < s.size() && chosen == std::u32string::npos; ++i)
      if (lower(s[i]) == U'a') chosen = i;
    for (std::size_t i = 0; i < s.size() && chosen == std::u32string::npos; ++i)
      if (lower(s[i]) == U'e') chosen = i;
    for (std::size_t i = 0; i < s.size() && chosen == std::u32string::npos; ++i)
      if (lower(s[i]) == U'o' && i + 1 < s.size() && lower(s[i + 1]) == U'u') chosen = i;
    for (std::size_t i = s.size(); i-- > 0 && chosen == std::u32string::npos;) {
      char32_t l = lower(s[i]);
      if (l == U'a' || l == U'e' || l == U'i' || l == U'o' || l == U'u' || l == U'ü') chosen = i;
    }
    if (chosen != std::u32string::npos) {
      // Capital I, U and Ü have no row of their own: they come out as marked lower case.
      const ToneRow* row = toneRow(s[chosen]);
      if (!row) row = toneRow(lower(s[chosen]));
      if (row) s[chosen] = row->marked[static_cast<std::size_t>(tone - 1)];
    }
  }
  std::string out;
  for (char32_t c : s) encode(c, out);
  return out;
}

}  // namespace

std::string Rgb::hex() const {
  auto byte = [](double v) { return static_cast<int>(std::lround(std::clamp(v, 0.0, 1.0) * 255.0)); };
  return fmt::format("#{:02x}{:02x}{:02x}", byte(red), byte(green), byte(blue));
}

std::string Pinyin::marked(std::string_view numbered) {
  std::string out;
  forEachSyllable(numbered, [&](std::string_view syllable) {
    if (!out.empty()) out.push_back(' ');
    out += markSyllable(syllable);
  });
  return out;
}

std::vector<int> Pinyin::tones(std::string_view numbered) {
  std::vector<int> out;
  forEachSyllable(numbered, [&](std::string_view syllable) { out.push_back(toneDigit(syllable)); });
  return out;
}

std::optional<Rgb> Pinyin::toneColor(int tone) {
  switch (tone) {
    case 1: return Rgb{0.89, 0.2, 0.2};
    case 2: return Rgb{0.15, 0.62, 0.25};
    case 3: return Rgb{0.16, 0.42, 0.86};
    case 4: return Rgb{0.58, 0.27, 0.8};
    default: return std::nullopt;
  }
}

}  // namespace vesko
