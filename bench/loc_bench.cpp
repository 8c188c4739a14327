// What a translated interface text costs: `Loc::t` over every text of the tables, in English,
// in traditional Chinese from its own table, and in traditional Chinese converted from the
// simplified table through the (warm) HantCache, as a traditional reader sees a text the
// traditional table lacks. Each figure is the median of batches of calls.
// Target: Loc.t median <= 200 ns, the traditional fallback included.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_common.h"
#include "dict/cedict.h"
#include "settings/loc.h"

namespace {

using vesko::bench::Clock;

constexpr const char* kUsage =
    "usage: bench_loc [--cedict FILE] [--unihan FILE | --no-unihan] [--gbench] [--benchmark_* "
    "flags]\n"
    "The dictionary converts the simplified texts for the traditional fallback.";

constexpr int kBatches = 301;

std::vector<std::string> frenchTexts() {
  std::vector<std::string> texts;
  for (const auto& row : vesko::builtInRows(vesko::TableLanguage::english))
    texts.emplace_back(row.french);
  return texts;
}

// Median cost of one call, from batches that each translate every text once.
double medianNs(const vesko::Loc& loc, const std::vector<std::string>& texts) {
  std::vector<double> perCall;
  std::size_t sink = 0;
  for (int b = 0; b < kBatches; ++b) {
    auto start = Clock::now();
    for (const auto& text : texts) sink += loc.t(text).size();
    perCall.push_back(std::chrono::duration<double, std::nano>(Clock::now() - start).count() /
                      static_cast<double>(texts.size()));
  }
  benchmark::DoNotOptimize(sink);
  return vesko::bench::median(perCall);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  auto options = vesko::bench::parseOptions(argc, argv, kUsage, false, {{"--gbench", false}});

  vesko::CEDict dictionary;
  if (!dictionary.load(options.cedict, options.unihan)) {
    std::fprintf(stderr, "loading %s failed\n", options.cedict.c_str());
    return 2;
  }
  std::string pattern = (std::filesystem::temp_directory_path() / "vesko-bench-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) return 2;
  std::filesystem::path folder = pattern;

  vesko::SystemClock clock;
  vesko::Settings settings(folder / "settings.json", clock);
  vesko::LocTables tables;
  // The same tables without a traditional one: every text takes the conversion path.
  vesko::LocTables withoutTraditional({vesko::builtInRows(vesko::TableLanguage::english),
                                       vesko::builtInRows(vesko::TableLanguage::simplifiedChinese),
                                       {},
                                       vesko::builtInRows(vesko::TableLanguage::polish),
                                       vesko::builtInRows(vesko::TableLanguage::russian),
                                       vesko::builtInRows(vesko::TableLanguage::thai)});
  vesko::HantCache hant(dictionary);
  vesko::Loc loc(settings, tables, hant, {"fr-FR"});
  vesko::Loc fallback(settings, withoutTraditional, hant, {"fr-FR"});
  auto texts = frenchTexts();
  std::printf("texts: %zu per batch, %d batches\n", texts.size(), kBatches);

  settings.overrideForRun("uiLang", std::string("fr"));
  std::printf("Loc.t French (unchanged) median: %.1f ns\n", medianNs(loc, texts));
  settings.overrideForRun("uiLang", std::string("en"));
  std::printf("Loc.t English median: %.1f ns\n", medianNs(loc, texts));
  settings.overrideForRun("uiLang", std::string("zh-Hant"));
  std::printf("Loc.t traditional Chinese, own table median: %.1f ns\n", medianNs(loc, texts));
  for (const auto& text : texts) fallback.t(text);  // the cache fills once, as in a session
  std::printf(
      "Loc.t traditional Chinese, converted and cached median: %.1f ns (%zu texts cached)\n",
      medianNs(fallback, texts), hant.size());

  if (vesko::bench::flag(options, "--gbench")) {
    benchmark::RegisterBenchmark("Loc/t/zh-Hant-fallback", [&](benchmark::State& state) {
      std::size_t i = 0;
      for (auto _ : state) benchmark::DoNotOptimize(fallback.t(texts[i++ % texts.size()]));
    });
    benchmark::RunSpecifiedBenchmarks();
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return 0;
}
