// Lookup latency of the Japanese, Polish and Russian dictionaries on real words (bench/data/
// *-words.txt), all loaded first: a dictionary lookup, and on a miss the stemmer and a second
// lookup, as the word chooser does. Prints the median and 99th percentile per language.

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "bench_common.h"
#include "dict/language_dictionaries.h"
#include "settings/resources.h"

namespace {

std::vector<std::string> readWords(const std::filesystem::path& path) {
  std::vector<std::string> words;
  std::ifstream in(path);
  std::string line;
  while (std::getline(in, line))
    if (!line.empty() && line[0] != '#') words.push_back(line);
  return words;
}

// One word as the word chooser would look it up; returns how many entries it found.
std::size_t lookUp(const vesko::WordDictionary& dictionary, const vesko::Conjugator* stems,
                   const std::string& word) {
  auto entries = dictionary.lookup(word);
  if (entries.empty() && stems) {
    if (auto base = stems->baseForm(word)) entries = dictionary.lookup(base->word);
  }
  return entries.size();
}

void measure(const char* language, const vesko::WordDictionary& dictionary,
             const vesko::Conjugator* stems, const std::vector<std::string>& words, int rounds) {
  std::vector<double> us;
  std::size_t found = 0, hits = 0;
  for (int round = 0; round < rounds; ++round) {
    for (const std::string& word : words) {
      auto start = vesko::bench::Clock::now();
      const std::size_t n = lookUp(dictionary, stems, word);
      us.push_back(vesko::bench::millisecondsSince(start) * 1000);
      if (round == 0) {
        found += n;
        hits += n > 0;
      }
    }
  }
  std::printf("%s words: %zu, found: %zu (%zu entries)\n", language, words.size(), hits, found);
  std::printf("%s lookup median: %.2f us\n", language, vesko::bench::median(us));
  std::printf("%s lookup p99: %.2f us\n", language, vesko::bench::percentile(us, 0.99));
}

}  // namespace

int main() {
  const auto edict = vesko::Resources::find("ja/edict", "txt");
  if (edict.empty()) {
    std::fprintf(stderr, "no resources/ja/edict.txt: run scripts/fetch-dicts-ja-pl-ru\n");
    return 1;
  }
  const auto folder = edict.parent_path().parent_path();
  const std::filesystem::path data = VESKO_BENCH_WORDS_DIR;
  auto japanese = vesko::makeJapaneseDictionary(folder);
  auto polish = vesko::makePolishDictionary(folder);
  auto polishStems = vesko::makePolishConjugator(folder, *polish);
  auto russian = vesko::makeRussianDictionary(folder);
  auto russianStems = vesko::makeRussianConjugator(folder, *russian);
  if (!japanese->load() || !polish->load() || !polishStems->load() || !russian->load() ||
      !russianStems->load()) {
    std::fprintf(stderr, "a dictionary failed to load: run scripts/fetch-dicts-ja-pl-ru\n");
    return 1;
  }
  constexpr int kRounds = 200;
  measure("ja", *japanese, nullptr, readWords(data / "ja-words.txt"), kRounds);
  measure("pl", *polish, polishStems.get(), readWords(data / "pl-words.txt"), kRounds);
  measure("ru", *russian, russianStems.get(), readWords(data / "ru-words.txt"), kRounds);
  return 0;
}
