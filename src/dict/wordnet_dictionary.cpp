#include "dict/wordnet_dictionary.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <numeric>
#include <utility>

namespace vesko {
namespace {

struct PartFiles {
  const char* name;   // index.<name>, data.<name>, <name>.exc
  const char* label;  // the part of speech before each gloss
};
// clang-format off
constexpr std::array<PartFiles, kPartsOfSpeech> kParts = {{
    {"noun", "(n)"},
    {"verb", "(v)"},
    {"adj",  "(adj)"},
    {"adv",  "(adv)"},
}};
// clang-format on

std::vector<std::string_view> fields(std::string_view line) {
  std::vector<std::string_view> out;
  std::size_t i = 0;
  while (i < line.size()) {
    while (i < line.size() && line[i] == ' ') ++i;
    const std::size_t start = i;
    while (i < line.size() && line[i] != ' ') ++i;
    if (i > start) out.push_back(line.substr(start, i - start));
  }
  return out;
}

template <typename T>
bool number(std::string_view s, T& out, int base = 10) {
  auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), out, base);
  return ec == std::errc() && end == s.data() + s.size();
}

// WordNet writes the spaces of multi-word lemmas as underscores.
std::string withUnderscores(std::string_view s) {
  std::string out(s);
  std::replace(out.begin(), out.end(), ' ', '_');
  return out;
}
std::string withSpaces(std::string_view s) {
  std::string out(s);
  std::replace(out.begin(), out.end(), '_', ' ');
  return out;
}

template <typename Fn>
bool forEachLine(const std::filesystem::path& path, Fn&& fn) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    fn(std::string_view(line));
  }
  return true;
}

struct IndexRow {
  std::string lemma;
  std::vector<uint32_t> offsets;
  uint16_t tagged = 0;
};

// index.* line: lemma pos synset_cnt p_cnt [ptr_symbol…] sense_cnt tagsense_cnt offset…
// The licence header lines start with two spaces and fail the checks, like any malformed line.
std::optional<IndexRow> parseIndexLine(std::string_view line) {
  if (line.empty() || line[0] == ' ') return std::nullopt;
  const auto f = fields(line);
  if (f.size() < 6) return std::nullopt;
  unsigned synsets = 0, pointers = 0, tagged = 0;
  if (!number(f[2], synsets) || !number(f[3], pointers)) return std::nullopt;
  const std::size_t tagIndex = 4 + static_cast<std::size_t>(pointers) + 1;
  if (synsets == 0 || tagIndex >= f.size() || f.size() != tagIndex + 1 + synsets)
    return std::nullopt;
  if (!number(f[tagIndex], tagged)) return std::nullopt;
  IndexRow row{std::string(f[0]), {}, static_cast<uint16_t>(std::min(tagged, 65535u))};
  for (std::size_t i = tagIndex + 1; i < f.size(); ++i) {
    uint32_t offset = 0;
    if (!number(f[i], offset)) return std::nullopt;
    row.offsets.push_back(offset);
  }
  return row;
}

// The gloss of the synset whose line starts at `offset` in a data file: the text after " | ".
std::optional<std::string_view> glossAt(std::string_view data, uint32_t offset) {
  if (offset >= data.size()) return std::nullopt;
  std::string_view line = data.substr(offset);
  line = line.substr(0, line.find('\n'));
  // The line must be the synset's own: it starts with its offset, written in eight digits.
  uint32_t written = 0;
  const auto space = line.find(' ');
  if (space == std::string_view::npos || !number(line.substr(0, space), written) ||
      written != offset)
    return std::nullopt;
  const auto bar = line.find(" | ");
  if (bar == std::string_view::npos) return std::nullopt;
  std::string_view gloss = line.substr(bar + 3);
  while (!gloss.empty() && (gloss.back() == ' ' || gloss.back() == '\r')) gloss.remove_suffix(1);
  if (gloss.empty()) return std::nullopt;
  return gloss;
}

}  // namespace

WordNetDictionary::WordNetDictionary(std::filesystem::path folder)
    : folder_(std::move(folder)), db_([this] { return load(folder_); }) {}

WordNetDictionary::Database WordNetDictionary::load(const std::filesystem::path& folder) {
  Database db;
  std::vector<std::string> every;
  for (std::size_t p = 0; p < kPartsOfSpeech; ++p) {
    Part& part = db.parts[p];
    std::vector<IndexRow> rows;
    const auto index = folder / (std::string("index.") + kParts[p].name);
    if (!forEachLine(index, [&](std::string_view line) {
          if (auto row = parseIndexLine(line)) rows.push_back(std::move(*row));
        })) {
      db.error = "cannot read " + index.string();
      return db;
    }
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (const auto& r : rows) names.push_back(r.lemma);
    part.lemmas = WordList(names);
    part.senses.resize(part.lemmas.size());
    for (auto& r : rows) {
      const auto at = part.lemmas.indexOf(r.lemma);
      Senses& s = part.senses[static_cast<std::size_t>(at)];
      if (s.count != 0) continue;  // a repeated lemma keeps its first line
      s.firstOffset = static_cast<uint32_t>(part.offsets.size());
      s.count = static_cast<uint16_t>(std::min<std::size_t>(r.offsets.size(), 65535));
      s.tagged = r.tagged;
      part.offsets.insert(part.offsets.end(), r.offsets.begin(), r.offsets.begin() + s.count);
    }
    for (auto& n : names) every.push_back(std::move(n));

    const auto data = folder / (std::string("data.") + kParts[p].name);
    part.data = MappedFile::open(data);
    if (!part.data) {
      db.error = "cannot read " + data.string();
      return db;
    }

    // The exception lists are optional: without them only regular forms are recognised.
    std::vector<std::pair<std::string, std::vector<std::string>>> exc;
    forEachLine(folder / (std::string(kParts[p].name) + ".exc"), [&](std::string_view line) {
      auto f = fields(line);
      if (f.size() < 2) return;
      std::vector<std::string> bases(f.begin() + 1, f.end());
      exc.emplace_back(std::string(f[0]), std::move(bases));
    });
    std::vector<std::string> forms;
    for (const auto& e : exc) forms.push_back(e.first);
    part.exceptionForms = WordList(std::move(forms));
    part.exceptionBases.resize(part.exceptionForms.size());
    for (auto& [form, bases] : exc) {
      auto& into = part.exceptionBases[static_cast<std::size_t>(part.exceptionForms.indexOf(form))];
      for (auto& b : bases) {
        if (std::find(into.begin(), into.end(), b) == into.end()) into.push_back(std::move(b));
      }
    }
  }
  db.allLemmas = WordList(std::move(every));
  return db;
}

std::optional<std::string> WordNetDictionary::loadError() const {
  const auto& db = db_.get();
  if (db.error.empty()) return std::nullopt;
  return db.error;
}

std::size_t WordNetDictionary::lemmaCount() const { return db_.get().allLemmas.size(); }

bool WordNetDictionary::contains(std::string_view lowercased) const {
  const auto& db = db_.get();
  return db.error.empty() && db.allLemmas.contains(withUnderscores(lowercased));
}

bool WordNetDictionary::hasLemma(std::string_view lowercased, PartOfSpeech pos) const {
  const auto& db = db_.get();
  return db.error.empty() &&
         db.parts[static_cast<std::size_t>(pos)].lemmas.contains(withUnderscores(lowercased));
}

std::vector<std::string> WordNetDictionary::exceptions(std::string_view lowercased,
                                                       PartOfSpeech pos) const {
  const auto& db = db_.get();
  if (!db.error.empty()) return {};
  const Part& part = db.parts[static_cast<std::size_t>(pos)];
  const auto at = part.exceptionForms.indexOf(withUnderscores(lowercased));
  if (at < 0) return {};
  std::vector<std::string> out;
  for (const auto& b : part.exceptionBases[static_cast<std::size_t>(at)]) out.push_back(withSpaces(b));
  return out;
}

std::vector<WordEntry> WordNetDictionary::lookup(std::string_view lowercased) const {
  const auto& db = db_.get();
  if (!db.error.empty()) return {};
  const std::string key = withUnderscores(lowercased);
  struct Found {
    std::size_t part;
    const Senses* senses;
  };
  std::vector<Found> found;
  for (std::size_t p = 0; p < kPartsOfSpeech; ++p) {
    const auto at = db.parts[p].lemmas.indexOf(key);
    if (at >= 0) found.push_back({p, &db.parts[p].senses[static_cast<std::size_t>(at)]});
  }
  if (found.empty()) return {};
  // "go" is tagged far more often as a verb than as a noun: its verb senses come first.
  std::stable_sort(found.begin(), found.end(),
                   [](const Found& a, const Found& b) { return a.senses->tagged > b.senses->tagged; });
  WordEntry entry;
  entry.headword = withSpaces(key);
  for (const auto& f : found) {
    const Part& part = db.parts[f.part];
    for (uint32_t i = 0; i < f.senses->count; ++i) {
      const auto gloss = glossAt(part.data->bytes(), part.offsets[f.senses->firstOffset + i]);
      if (gloss) entry.defs.push_back(std::string(kParts[f.part].label) + " " + std::string(*gloss));
    }
  }
  if (entry.defs.empty()) return {};
  return {std::move(entry)};
}

}  // namespace vesko
