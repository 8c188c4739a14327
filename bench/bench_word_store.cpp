// What opening and saving the kept words cost with a large store: 10,000 words, each with a
// sentence, a definition and review fields, as a learner of several years might have. Load is
// the store's creation (lock, read, decode); save is one immediate save (encode, write, fsync,
// rename). Encoding and decoding alone are measured too, to tell the disk from the code.
// Targets: load <= 50 ms, save <= 50 ms.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "dict/cedict.h"
#include "learn/saved_word_json.h"
#include "learn/uuid.h"
#include "learn/word_store.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace {

constexpr int kWords = 10'000;

std::vector<vesko::SavedWord> sampleWords() {
  std::vector<vesko::SavedWord> words;
  words.reserve(kWords);
  for (int i = 0; i < kWords; ++i) {
    vesko::SavedWord word;
    word.id = vesko::newUuid();
    word.word = "学习" + std::to_string(i);
    word.lang = i % 3 == 0 ? "zh" : (i % 3 == 1 ? "fr" : "en");
    word.pinyin = "xué xí";
    word.simp = "学习";
    word.trad = "學習";
    word.definition = "to learn; to study; to emulate; learning; study";
    word.translations = {{"en", "to study"}, {"fr", "étudier"}};
    word.context = "我们每天晚上一起学习中文，因为下个月要去北京旅行。";
    word.date = 700'000'000.0 + i * 3600.5;
    word.hits = 1 + i % 4;
    word.lastSeen = word.date + 86400.25;
    word.source = "Le Monde — page d'accueil";
    word.app = "Firefox";
    word.reviewStep = i % 7;
    word.reviewDue = word.date + 7 * 86400.0;
    word.seen = i % 11;
    word.reviews = i % 9;
    word.confidence = 1 + i % 5;
    word.sentenceMeaning = "We study Chinese together every evening.";
    words.push_back(std::move(word));
  }
  return words;
}

struct Services {
  explicit Services(std::filesystem::path where) : folder(std::move(where)) {}
  std::filesystem::path folder;
  vesko::SystemClock clock;
  vesko::Settings settings{folder / "settings.json", clock};
  vesko::Log log{folder / "debug.log", settings, clock};
  vesko::CEDict dictionary;
  vesko::HantCache hant{dictionary};
  vesko::LocTables tables;
  vesko::Loc loc{settings, tables, hant, {}};
  std::filesystem::path file() const { return folder / "mots.json"; }
};

std::filesystem::path makeTempFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vesko-bench-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) {
    std::perror("mkdtemp");
    std::exit(2);
  }
  return pattern;
}

Services& services() {
  static Services shared(makeTempFolder());
  static const bool written = [] {
    auto text = vesko::encodeWords(sampleWords());
    std::FILE* out = std::fopen(shared.file().c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), out);
    std::fclose(out);
    std::printf("mots.json with %d words: %zu bytes\n", kWords, text.size());
    return true;
  }();
  (void)written;
  return shared;
}

void BM_Load(benchmark::State& state) {
  Services& s = services();
  for (auto _ : state) {
    vesko::WordStore store(s.file(), s.clock, s.log, s.loc);
    if (store.words().size() != kWords) state.SkipWithError("the store did not load");
    benchmark::DoNotOptimize(store.words().data());
  }
}
BENCHMARK(BM_Load)->Unit(benchmark::kMillisecond);

void BM_SaveNow(benchmark::State& state) {
  Services& s = services();
  vesko::WordStore store(s.file(), s.clock, s.log, s.loc);
  for (auto _ : state) store.saveNow();
  if (store.writeError()) state.SkipWithError(store.writeError()->c_str());
}
BENCHMARK(BM_SaveNow)->Unit(benchmark::kMillisecond);

void BM_Decode(benchmark::State& state) {
  const std::string text = vesko::encodeWords(sampleWords());
  for (auto _ : state) benchmark::DoNotOptimize(vesko::decodeWords(text));
}
BENCHMARK(BM_Decode)->Unit(benchmark::kMillisecond);

void BM_Encode(benchmark::State& state) {
  const auto words = sampleWords();
  for (auto _ : state) benchmark::DoNotOptimize(vesko::encodeWords(words));
}
BENCHMARK(BM_Encode)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::error_code ignored;
  std::filesystem::remove_all(services().folder, ignored);
  return 0;
}
