// First-use cost of the English and French data, and the cost of a lookup afterwards. Each
// dictionary is loaded by its first lookup, in this fresh process, one after the other, so the
// growth of the resident memory across each load is that dictionary's share.
// Lookup latency: every word of the recogniser's evaluation sentences of the language, looked up
// (dictionary, headword set, conjugator), median and p99 per word.
//
//   bench_latin_dicts [--runs N]     (N: passes over the words for the latency, default 3)

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "bench_common.h"
#include "dict/language_dictionaries.h"
#include "dict/english_conjugator.h"
#include "dict/french_conjugator.h"
#include "dict/lowercase.h"
#include "dict/word_list_headwords.h"
#include "dict/wordnet_dictionary.h"
#include "settings/resources.h"

namespace {

using vesko::bench::Clock;

// Loads by calling `first` and prints its time and the memory it added.
template <typename Fn>
void firstUse(const char* name, Fn&& first) {
  const auto before = vesko::bench::processMemory();
  const auto start = Clock::now();
  if (auto error = first()) {
    std::fprintf(stderr, "%s: %s (run scripts/fetch-dicts-en-fr)\n", name, error->c_str());
    std::exit(1);
  }
  const double ms = vesko::bench::millisecondsSince(start);
  // The load's temporaries are freed, but glibc keeps freed pages until asked: without this the
  // figure would be the load's peak, and the next load would reuse it and seem free.
  malloc_trim(0);
  const auto after = vesko::bench::processMemory();
  std::printf("%s first use: %.1f ms\n", name, ms);
  std::printf("%s rss added: %.1f MB\n", name, after.rssMb - before.rssMb);
}

std::vector<std::string> words(std::string_view language) {
  const auto text = vesko::bench::readFile(std::filesystem::path(VESKO_BENCH_DATA_DIR) /
                                           ("lang-eval-" + std::string(language) + ".txt"));
  std::vector<std::string> out;
  std::string word;
  auto flush = [&] {
    if (!word.empty()) out.push_back(vesko::lowercased(word));
    word.clear();
  };
  for (char c : text) {
    // Letters, apostrophes inside words and every byte of a multi-byte character.
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80)) {
      word += c;
    } else {
      flush();
    }
  }
  flush();
  return out;
}

template <typename Fn>
void latency(const char* name, const std::vector<std::string>& list, long runs, Fn&& lookup) {
  std::vector<double> micros;
  std::size_t found = 0;
  for (long r = 0; r < runs; ++r) {
    for (const auto& w : list) {
      const auto start = Clock::now();
      found += lookup(w) ? 1 : 0;
      micros.push_back(vesko::bench::millisecondsSince(start) * 1e3);
    }
  }
  std::printf("%s lookup median: %.2f us\n", name, vesko::bench::median(micros));
  std::printf("%s lookup p99: %.2f us\n", name, vesko::bench::percentile(micros, 0.99));
  std::printf("%s found: %.1f %% of %zu words\n", name,
              100.0 * static_cast<double>(found) / static_cast<double>(micros.size()),
              list.size());
}

}  // namespace

int main(int argc, char** argv) {
  long runs = 3;
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--runs" && i + 1 < argc) {
      runs = std::max(1L, std::atol(argv[++i]));
    } else {
      std::fprintf(stderr, "usage: bench_latin_dicts [--runs N]\n");
      return 2;
    }
  }
  const auto root = vesko::Resources::folder();
  std::printf("rss at start: %.1f MB\n", vesko::bench::processMemory().rssMb);

  vesko::WordNetDictionary wordnet(root / "en/wordnet");
  vesko::EnglishConjugator english(wordnet);
  vesko::WordListHeadwords englishWords(root / "en/words.txt", wordnet);
  const auto frenchDictionary = vesko::makeFrenchDictionary(root);
  const vesko::LazyDictionary& french = *frenchDictionary;
  vesko::WordListHeadwords frenchWords(root / "fr/words.txt", french);
  vesko::FrenchConjugator conjugator(root / "fr/verbiste/verbs-fr.xml",
                                     root / "fr/verbiste/conjugation-fr.xml");

  firstUse("wordnet", [&] { return wordnet.loadError(); });
  firstUse("english headwords (wamerican-large)", [&] { return englishWords.loadError(); });
  firstUse("freedict fra-eng", [&] { return french.error(); });
  firstUse("french headwords (wfrench)", [&] { return frenchWords.loadError(); });
  firstUse("french conjugator", [&] { return conjugator.loadError(); });
  std::printf("french conjugator forms: %zu\n", conjugator.formCount());
  std::printf("french conjugator table: %.1f MB\n", static_cast<double>(conjugator.tableBytes()) / 1e6);
  std::printf("rss after all: %.1f MB\n", vesko::bench::processMemory().rssMb);

  const auto en = words("en");
  const auto fr = words("fr");
  latency("wordnet", en, runs, [&](const std::string& w) { return !wordnet.lookup(w).empty(); });
  latency("english headwords", en, runs, [&](const std::string& w) { return englishWords.contains(w); });
  latency("english conjugator", en, runs, [&](const std::string& w) { return english.baseForm(w).has_value(); });
  latency("freedict fra-eng", fr, runs, [&](const std::string& w) { return !french.lookup(w).empty(); });
  latency("french headwords", fr, runs, [&](const std::string& w) { return frenchWords.contains(w); });
  latency("french conjugator", fr, runs, [&](const std::string& w) { return conjugator.baseForm(w).has_value(); });
  std::printf("rss at end: %.1f MB\n", vesko::bench::processMemory().rssMb);
  return 0;
}
