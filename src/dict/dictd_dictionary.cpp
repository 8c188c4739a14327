#include "dict/dictd_dictionary.h"

#include <zlib.h>

#include <algorithm>
#include <fstream>
#include <memory>

#include "dict/lowercase.h"

namespace vesko {
namespace {

// dictd's base64 digits: A–Z, a–z, 0–9, +, / are 0–63, most significant first.
int digitValue(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return -1;
}

std::optional<uint64_t> decodeNumber(std::string_view digits) {
  // Eleven digits already exceed 64 bits; offsets into a dictionary are far shorter.
  if (digits.empty() || digits.size() > 10) return std::nullopt;
  uint64_t value = 0;
  for (char c : digits) {
    const int d = digitValue(c);
    if (d < 0) return std::nullopt;
    value = value * 64 + static_cast<uint64_t>(d);
  }
  return value;
}

std::string_view trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

// "1. fare" → "fare"; "12. go" → "go"; a line that merely starts with digits keeps them.
std::string_view withoutNumber(std::string_view s) {
  std::size_t i = 0;
  while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i;
  if (i > 0 && i + 1 < s.size() && s[i] == '.' && s[i + 1] == ' ') return trim(s.substr(i + 2));
  return s;
}

// The whole of a gzip file (a .dict.dz is gzip with a random-access table in its header, which
// gzip readers skip).
std::optional<std::string> gunzip(const std::filesystem::path& path) {
  gzFile file = gzopen(path.c_str(), "rb");
  if (!file) return std::nullopt;
  std::unique_ptr<gzFile_s, decltype(&gzclose)> closer(file, &gzclose);
  std::string out;
  char buffer[1 << 16];
  for (;;) {
    const int n = gzread(file, buffer, sizeof buffer);
    if (n < 0) return std::nullopt;
    if (n == 0) break;
    out.append(buffer, static_cast<std::size_t>(n));
  }
  return out;
}

}  // namespace

std::optional<DictdIndexLine> parseDictdIndexLine(std::string_view line) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  const auto tab1 = line.find('\t');
  if (tab1 == std::string_view::npos || tab1 == 0) return std::nullopt;
  const auto tab2 = line.find('\t', tab1 + 1);
  if (tab2 == std::string_view::npos) return std::nullopt;
  const auto offset = decodeNumber(line.substr(tab1 + 1, tab2 - tab1 - 1));
  const auto length = decodeNumber(line.substr(tab2 + 1));
  if (!offset || !length) return std::nullopt;
  return DictdIndexLine{line.substr(0, tab1), *offset, *length};
}

std::optional<WordEntry> parseDictdEntry(std::string_view headword, std::string_view text) {
  WordEntry entry;
  entry.headword = std::string(headword);
  bool first = true;
  while (!text.empty()) {
    const auto end = text.find('\n');
    const std::string_view raw = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    const std::string_view line = trim(raw);
    if (first) {
      first = false;
      // The heading: "aller /ale/ <v>". The headword line always comes first, even without a
      // pronunciation; only what lies between slashes is kept.
      const auto open = line.find(" /");
      if (open != std::string_view::npos) {
        const auto close = line.find('/', open + 2);
        if (close != std::string_view::npos) entry.reading = std::string(line.substr(open + 2, close - open - 2));
      }
      continue;
    }
    const std::string_view sense = withoutNumber(line);
    if (!sense.empty()) entry.defs.emplace_back(sense);
  }
  if (entry.defs.empty()) return std::nullopt;
  return entry;
}

DictdDictionary::DictdDictionary(std::filesystem::path index, std::filesystem::path dictDz)
    : index_(std::move(index)), dictDz_(std::move(dictDz)),
      data_([this] { return load(index_, dictDz_); }) {}

DictdDictionary::Data DictdDictionary::load(const std::filesystem::path& index,
                                            const std::filesystem::path& dictDz) {
  Data data;
  auto text = gunzip(dictDz);
  if (!text) {
    data.error = "cannot read " + dictDz.string();
    return data;
  }
  data.text = std::move(*text);
  std::ifstream in(index, std::ios::binary);
  if (!in) {
    data.error = "cannot read " + index.string();
    return data;
  }
  for (std::string line; std::getline(in, line);) {
    const auto parsed = parseDictdIndexLine(line);
    if (!parsed) continue;
    // dictd's own entries (00databaseinfo, 00-database-short…) describe the file, not words.
    if (parsed->headword.starts_with("00database") || parsed->headword.starts_with("00-database"))
      continue;
    if (parsed->offset > data.text.size() || parsed->length > data.text.size() - parsed->offset)
      continue;
    std::string lower = lowercased(parsed->headword);
    if (lower.empty()) continue;
    data.keys.push_back({std::move(lower), std::string(parsed->headword),
                         static_cast<uint32_t>(parsed->offset),
                         static_cast<uint32_t>(parsed->length)});
  }
  std::sort(data.keys.begin(), data.keys.end(), [](const Key& a, const Key& b) {
    return std::tie(a.lowercased, a.offset) < std::tie(b.lowercased, b.offset);
  });
  return data;
}

std::optional<std::string> DictdDictionary::loadError() const {
  const auto& d = data_.get();
  if (d.error.empty()) return std::nullopt;
  return d.error;
}

std::vector<WordEntry> DictdDictionary::lookup(std::string_view lowercased) const {
  const auto& d = data_.get();
  auto [first, last] = std::equal_range(
      d.keys.begin(), d.keys.end(), lowercased,
      [](const auto& a, const auto& b) {
        if constexpr (std::is_same_v<std::decay_t<decltype(a)>, Key>) {
          return std::string_view(a.lowercased) < b;
        } else {
          return a < std::string_view(b.lowercased);
        }
      });
  std::vector<WordEntry> out;
  for (auto it = first; it != last; ++it) {
    auto entry = parseDictdEntry(it->headword, std::string_view(d.text).substr(it->offset, it->length));
    if (entry && std::find(out.begin(), out.end(), *entry) == out.end()) out.push_back(std::move(*entry));
  }
  return out;
}

bool DictdDictionary::contains(std::string_view lowercased) const {
  const auto& d = data_.get();
  return std::binary_search(d.keys.begin(), d.keys.end(), lowercased, [](const auto& a, const auto& b) {
    if constexpr (std::is_same_v<std::decay_t<decltype(a)>, Key>) {
      return std::string_view(a.lowercased) < b;
    } else {
      return a < std::string_view(b.lowercased);
    }
  });
}

}  // namespace vesko
