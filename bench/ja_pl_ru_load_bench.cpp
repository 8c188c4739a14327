// First-use cost of the Japanese, Polish and Russian dictionaries and stemmers: how long the first
// lookup of each language waits for its load, and how much resident memory each adds. Loaded one
// after the other in this fresh process, so each figure is the growth its own load caused; then
// the median of N fresh loads of each.

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench_common.h"
#include "dict/language_dictionaries.h"
#include "settings/resources.h"

namespace {

using vesko::bench::Clock;
using vesko::bench::millisecondsSince;

struct Step {
  const char* name;
  std::function<bool()> load;
};

double timeLoad(const std::function<bool()>& load, const char* name) {
  auto start = Clock::now();
  if (!load()) {
    std::fprintf(stderr, "%s: load failed (run scripts/fetch-dicts-ja-pl-ru)\n", name);
    std::exit(1);
  }
  return millisecondsSince(start);
}

}  // namespace

int main(int argc, char** argv) {
  long runs = 5;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--runs" && i + 1 < argc) {
      runs = std::max(1L, std::strtol(argv[++i], nullptr, 10));
    } else {
      std::fprintf(stderr, "usage: bench_ja_pl_ru_load [--runs N]\n");
      return 2;
    }
  }
  const auto edict = vesko::Resources::find("ja/edict", "txt");
  if (edict.empty()) {
    std::fprintf(stderr, "no resources/ja/edict.txt: run scripts/fetch-dicts-ja-pl-ru\n");
    return 1;
  }
  const auto folder = edict.parent_path().parent_path();

  // Kept alive to the end, so that each step's memory is counted once.
  auto japanese = vesko::makeJapaneseDictionary(folder);
  auto polish = vesko::makePolishDictionary(folder);
  auto polishStems = vesko::makePolishConjugator(folder, *polish);
  auto russian = vesko::makeRussianDictionary(folder);
  auto russianStems = vesko::makeRussianConjugator(folder, *russian);

  const std::vector<Step> steps = {
      {"japanese (edict + kanjidic)", [&] { return japanese->load(); }},
      {"polish (freedict pol-eng)", [&] { return polish->load(); }},
      {"polish stemmer (hunspell pl_PL)", [&] { return polishStems->load(); }},
      {"russian (mueller reversed)", [&] { return russian->load(); }},
      {"russian stemmer (hunspell ru_RU)", [&] { return russianStems->load(); }},
  };
  const double base = vesko::bench::processMemory().rssMb;
  std::printf("rss before loading: %.1f MB\n", base);
  double previous = base;
  for (const Step& step : steps) {
    const double ms = timeLoad(step.load, step.name);
    const double rss = vesko::bench::processMemory().rssMb;
    std::printf("%s first load: %.1f ms\n", step.name, ms);
    std::printf("%s rss added: %.1f MB\n", step.name, rss - previous);
    previous = rss;
  }
  const auto memory = vesko::bench::processMemory();
  std::printf("rss added by all five: %.1f MB\n", memory.rssMb - base);
  std::printf("peak rss: %.1f MB\n", memory.peakMb);
  std::fflush(stdout);

  // Fresh objects each run: a lazy dictionary loads only once.
  const std::vector<Step> fresh = {
      {"japanese (edict + kanjidic)", [&] { return vesko::makeJapaneseDictionary(folder)->load(); }},
      {"polish (freedict pol-eng)", [&] { return vesko::makePolishDictionary(folder)->load(); }},
      {"polish stemmer (hunspell pl_PL)",
       [&] { return vesko::makePolishConjugator(folder, *polish)->load(); }},
      {"russian (mueller reversed)", [&] { return vesko::makeRussianDictionary(folder)->load(); }},
      {"russian stemmer (hunspell ru_RU)",
       [&] { return vesko::makeRussianConjugator(folder, *russian)->load(); }},
  };
  for (const Step& step : fresh) {
    std::vector<double> ms;
    for (long r = 0; r < runs; ++r) ms.push_back(timeLoad(step.load, step.name));
    std::printf("%s load median: %.1f ms over %ld runs\n", step.name, vesko::bench::median(ms),
                runs);
  }
  return 0;
}
