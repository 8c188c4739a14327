#include "dict/reversed_mueller.h"

#include <algorithm>
#include <unordered_map>

#include "dict/dictd.h"
#include "dict/dictd_format.h"
#include "dict/lowercase.h"

namespace vesko {

std::string foldedRussian(std::string_view lowercased) {
  std::string out(lowercased);
  for (std::size_t i = 0; i + 1 < out.size(); ++i) {
    if (out[i] == '\xD1' && out[i + 1] == '\x91') {  // ё → е
      out[i] = '\xD0';
      out[i + 1] = '\xB5';
    }
  }
  return out;
}

std::expected<std::unique_ptr<ReversedMuellerDictionary>, std::string>
ReversedMuellerDictionary::load(const std::filesystem::path& index,
                                const std::filesystem::path& dict) {
  auto file = DictdFile::load(index, dict);
  if (!file) return std::unexpected(file.error());
  std::unique_ptr<ReversedMuellerDictionary> out(new ReversedMuellerDictionary);

  struct Hit {
    uint32_t rank;     // position of the Russian word in the English entry
    uint32_t english;
  };
  struct Gathered {
    std::string russian;
    std::vector<Hit> hits;
  };
  std::unordered_map<std::string, Gathered> gathered;
  // One body may be indexed under several headwords; it is read once.
  std::unordered_map<const char*, bool> seen;
  for (const DictdFile::Entry& entry : file->entries()) {
    if (!seen.emplace(entry.body.data(), true).second) continue;
    std::string_view english = entry.body.substr(0, entry.body.find('\n'));
    while (!english.empty() && (english.back() == ' ' || english.back() == '\r'))
      english.remove_suffix(1);
    while (!english.empty() && english.front() == ' ') english.remove_prefix(1);
    if (english.empty()) english = entry.headword;
    const auto englishIndex = static_cast<uint32_t>(out->english_.size());
    bool used = false;
    uint32_t rank = 0;
    for (const std::string& russian : muellerTranslations(entry.body)) {
      std::string lower = lowercased(russian);
      Gathered& g = gathered[foldedRussian(lower)];
      if (g.russian.empty()) g.russian = std::move(lower);
      if (g.hits.empty() || g.hits.back().english != englishIndex)
        g.hits.push_back({rank, englishIndex});
      ++rank;
      used = true;
    }
    if (used) out->english_.emplace_back(english);
  }

  out->headwords_.reserve(gathered.size());
  for (auto& [key, g] : gathered) {
    std::stable_sort(g.hits.begin(), g.hits.end(),
                     [](const Hit& a, const Hit& b) { return a.rank < b.rank; });
    Headword headword{std::move(g.russian), {}};
    for (const Hit& hit : g.hits) {
      if (headword.english.size() == kMaxDefs) break;
      // "cat" may have two homograph entries; each English word is shown once.
      const bool repeat = std::any_of(headword.english.begin(), headword.english.end(),
                                      [&](uint32_t e) { return out->english_[e] == out->english_[hit.english]; });
      if (!repeat) headword.english.push_back(hit.english);
    }
    out->keys_.add(key, static_cast<uint32_t>(out->headwords_.size()));
    out->headwords_.push_back(std::move(headword));
  }
  out->keys_.finish();
  return out;
}

std::vector<WordEntry> ReversedMuellerDictionary::lookup(std::string_view lowercased) const {
  std::vector<WordEntry> out;
  for (uint32_t i : keys_.find(foldedRussian(lowercased))) {
    const Headword& headword = headwords_[i];
    WordEntry entry;
    entry.headword = headword.russian;
    entry.reversed = true;
    for (uint32_t e : headword.english) entry.defs.push_back(english_[e]);
    out.push_back(std::move(entry));
  }
  return out;
}

bool ReversedMuellerDictionary::contains(std::string_view lowercased) const {
  return !keys_.find(foldedRussian(lowercased)).empty();
}

}  // namespace vesko
