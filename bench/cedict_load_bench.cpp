// Start-up cost of the Chinese dictionary: how long CC-CEDICT and the Unihan supplement take to
// load, and how much memory the process holds afterwards. Memory is read first, in this fresh
// process, before Google Benchmark or repeated loads disturb the heap.
// Targets: load median <= 40 ms; RSS after load <= 35 MB.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench_common.h"
#include "dict/cedict.h"

namespace {

constexpr const char* kUsage =
    "usage: bench_cedict_load [--cedict FILE] [--unihan FILE | --no-unihan] [--runs N]\n"
    "                         [--memory-only] [--benchmark_* flags]\n"
    "Prints the memory after one load in this process, then the median of N fresh loads (9).";

vesko::bench::Options gOptions;
std::vector<double> gLoadMs;

const char* describe(vesko::LoadError error) {
  switch (error) {
    case vesko::LoadError::unreadable:
      return "unreadable";
    case vesko::LoadError::invalidUtf8:
      return "not valid UTF-8";
    case vesko::LoadError::alreadyLoaded:
      return "already loaded";
  }
  return "unknown error";
}

void loadOrExit(vesko::CEDict& dict) {
  auto loaded = dict.load(gOptions.cedict, gOptions.unihan);
  if (!loaded) {
    std::fprintf(stderr, "load failed: %s (%s)\n", describe(loaded.error()),
                 gOptions.cedict.c_str());
    std::exit(1);
  }
}

void BM_CEDictLoad(benchmark::State& state) {
  for (auto _ : state) {
    // Construction and destruction stay outside the figure: the app pays for them once, and
    // freeing a whole dictionary is not start-up work.
    auto dict = std::make_unique<vesko::CEDict>();
    auto start = vesko::bench::Clock::now();
    loadOrExit(*dict);
    double ms = vesko::bench::millisecondsSince(start);
    benchmark::DoNotOptimize(dict->maxLen());
    state.SetIterationTime(ms / 1e3);
    gLoadMs.push_back(ms);
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  gOptions = vesko::bench::parseOptions(argc, argv, kUsage, false,
                                        {{"--runs", true}, {"--memory-only", false}});
  long runs = vesko::bench::optionNumber(gOptions, "--runs", 9, 5);

  std::printf("cedict: %s\n", gOptions.cedict.c_str());
  std::printf("unihan: %s\n", gOptions.unihan.empty() ? "(not loaded)" : gOptions.unihan.c_str());

  {
    auto before = vesko::bench::processMemory();
    auto dict = std::make_unique<vesko::CEDict>();
    auto start = vesko::bench::Clock::now();
    auto loaded = dict->load(gOptions.cedict, gOptions.unihan);
    double firstMs = vesko::bench::millisecondsSince(start);
    auto after = vesko::bench::processMemory();
    if (!loaded) {
      std::fprintf(stderr, "load failed: %s (%s)\n", describe(loaded.error()),
                   gOptions.cedict.c_str());
      return 1;
    }
    const auto& stats = *loaded;
    std::printf("entries: %zu, keys: %zu, skipped lines: %zu, supplement added: %zu\n",
                stats.entries, stats.keys, stats.skippedLines, stats.supplementAdded);
    std::printf("first load: %.2f ms (cold caches, not the figure)\n", firstMs);
    std::printf("rss before load: %.1f MB\n", before.rssMb);
    std::printf("rss after load: %.1f MB\n", after.rssMb);
    std::printf("peak rss during load: %.1f MB\n", after.peakMb);
    std::printf("rss added by the dictionary: %.1f MB\n", after.rssMb - before.rssMb);
    std::fflush(stdout);
  }
  if (vesko::bench::flag(gOptions, "--memory-only")) return 0;

  benchmark::RegisterBenchmark("CEDict/load", BM_CEDictLoad)
      ->Unit(benchmark::kMillisecond)
      ->Iterations(1)
      ->Repetitions(static_cast<int>(runs))
      ->UseManualTime()
      ->DisplayAggregatesOnly(true)
      ->ComputeStatistics("min", [](const std::vector<double>& v) {
        return *std::min_element(v.begin(), v.end());
      });
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();

  if (gLoadMs.empty()) return 0;  // filtered out with --benchmark_filter
  std::vector<double> sorted = gLoadMs;
  std::sort(sorted.begin(), sorted.end());
  std::printf("load median: %.2f ms over %zu runs (min %.2f, max %.2f)\n",
              vesko::bench::median(gLoadMs), gLoadMs.size(), sorted.front(), sorted.back());
  return 0;
}
