// What a hover and a passage cost once the dictionary is loaded: `wordAt` latency at random Han
// characters of real Chinese prose, each call timed on its own so that the tail shows, and
// `segment` throughput over the whole text.
// Targets: wordAt median <= 2 µs, p99 <= 8 µs; segment >= 50 MB/s of UTF-8 input.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "bench_common.h"
#include "dict/cedict.h"
#include "text/unicode.h"

namespace {

constexpr const char* kUsage =
    "usage: bench_cedict_lookup [--cedict FILE] [--unihan FILE | --no-unihan] [--text FILE]\n"
    "                           [--positions N] [--seed N] [--segment-runs N] [--gbench]\n"
    "                           [--benchmark_* flags]\n"
    "The text is UTF-8, one paragraph a line (default: the committed bench/data/zh-sample.txt).\n"
    "--gbench also runs Google Benchmark's own loops over the same calls.";

// A screen reader hands over the line or paragraph under the pointer; longer paragraphs are cut
// to a window of this many UTF-16 units around the character.
constexpr std::size_t kWindow = 300;

struct Hover {
  std::u16string_view window;
  std::ptrdiff_t index;
};

bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

Hover hoverAt(std::u16string_view paragraph, std::size_t index) {
  if (paragraph.size() <= kWindow) return {paragraph, static_cast<std::ptrdiff_t>(index)};
  std::size_t start = index > kWindow / 2 ? index - kWindow / 2 : 0;
  start = std::min(start, paragraph.size() - kWindow);
  std::size_t end = start + kWindow;
  if (start > 0 && isLowSurrogate(paragraph[start])) --start;
  if (end < paragraph.size() && isLowSurrogate(paragraph[end])) ++end;
  return {paragraph.substr(start, end - start), static_cast<std::ptrdiff_t>(index - start)};
}

struct Corpus {
  std::string utf8;
  std::u16string whole;
  std::vector<std::u16string> paragraphs;
  std::size_t hanCharacters = 0;
};

Corpus readCorpus(const std::filesystem::path& path) {
  Corpus corpus;
  corpus.utf8 = vesko::bench::readFile(path);
  auto whole = vesko::text::fromUtf8(corpus.utf8);
  if (!whole) {
    std::fprintf(stderr, "%s is not valid UTF-8\n", path.c_str());
    std::exit(1);
  }
  corpus.whole = std::move(*whole);
  std::u16string_view rest = corpus.whole;
  while (!rest.empty()) {
    auto newline = rest.find(u'\n');
    auto line = rest.substr(0, newline);
    if (!line.empty()) corpus.paragraphs.emplace_back(line);
    rest = newline == std::u16string_view::npos ? std::u16string_view() : rest.substr(newline + 1);
  }
  return corpus;
}

std::vector<Hover> pickHovers(Corpus& corpus, std::size_t count, unsigned long seed) {
  std::vector<Hover> candidates;
  for (const auto& paragraph : corpus.paragraphs) {
    for (std::size_t i = 0; i < paragraph.size(); ++i) {
      if (isLowSurrogate(paragraph[i]) || !vesko::text::isHanAt(paragraph, i)) continue;
      candidates.push_back(hoverAt(paragraph, i));
    }
  }
  corpus.hanCharacters = candidates.size();
  if (candidates.empty()) {
    std::fprintf(stderr, "the text has no Han characters\n");
    std::exit(1);
  }
  std::mt19937_64 random(seed);
  std::uniform_int_distribution<std::size_t> pick(0, candidates.size() - 1);
  std::vector<Hover> hovers;
  hovers.reserve(count);
  for (std::size_t i = 0; i < count; ++i) hovers.push_back(candidates[pick(random)]);
  return hovers;
}

double timerOverheadNs() {
  std::vector<double> samples;
  samples.reserve(100000);
  for (int i = 0; i < 100000; ++i) {
    auto a = vesko::bench::Clock::now();
    auto b = vesko::bench::Clock::now();
    samples.push_back(std::chrono::duration<double, std::nano>(b - a).count());
  }
  return vesko::bench::median(std::move(samples));
}

void measureWordAt(const vesko::CEDict& dict, const std::vector<Hover>& hovers) {
  // One untimed pass over part of the sample, so that the figures are for a warmed-up process.
  std::size_t warm = std::min<std::size_t>(hovers.size(), 10000);
  for (std::size_t i = 0; i < warm; ++i)
    benchmark::DoNotOptimize(dict.wordAt(hovers[i].window, hovers[i].index));

  std::vector<double> latencyUs(hovers.size());
  std::size_t found = 0, foundLength = 0;
  for (std::size_t i = 0; i < hovers.size(); ++i) {
    auto start = vesko::bench::Clock::now();
    auto match = dict.wordAt(hovers[i].window, hovers[i].index);
    auto stop = vesko::bench::Clock::now();
    benchmark::DoNotOptimize(match);
    latencyUs[i] = std::chrono::duration<double, std::micro>(stop - start).count();
    if (match) {
      ++found;
      foundLength += match->word.size();
    }
  }
  double n = static_cast<double>(hovers.size());
  double mean = 0;
  for (double v : latencyUs) mean += v;
  mean /= n;

  std::printf("wordAt found a word: %.1f%% of positions (mean word length %.2f UTF-16 units)\n",
              100.0 * static_cast<double>(found) / n,
              found ? static_cast<double>(foundLength) / static_cast<double>(found) : 0.0);
  std::printf("wordAt median: %.3f µs\n", vesko::bench::percentile(latencyUs, 0.50));
  std::printf("wordAt p90: %.3f µs\n", vesko::bench::percentile(latencyUs, 0.90));
  std::printf("wordAt p99: %.3f µs\n", vesko::bench::percentile(latencyUs, 0.99));
  std::printf("wordAt p99.9: %.3f µs\n", vesko::bench::percentile(latencyUs, 0.999));
  std::printf("wordAt max: %.3f µs\n", latencyUs.back());
  std::printf("wordAt mean: %.3f µs\n", mean);
  std::printf("timer overhead: %.3f µs per call (included in the figures above)\n",
              timerOverheadNs() / 1e3);
}

void measureSegment(const vesko::CEDict& dict, const Corpus& corpus, long runs) {
  const double bytes = static_cast<double>(corpus.utf8.size());

  // The words must give the text back; a segmenter that dropped text would look fast.
  auto words = dict.segment(corpus.whole);
  std::size_t covered = 0, multi = 0;
  for (auto word : words) {
    covered += word.size();
    if (word.size() > 1 && vesko::text::isHanAt(word, 0)) ++multi;
  }
  if (covered != corpus.whole.size()) {
    std::fprintf(stderr, "segment gave back %zu of %zu UTF-16 units; figures withheld\n", covered,
                 corpus.whole.size());
    std::exit(1);
  }

  std::vector<double> ms;
  for (long r = 0; r < runs; ++r) {
    auto start = vesko::bench::Clock::now();
    auto result = dict.segment(corpus.whole);
    benchmark::DoNotOptimize(result.data());
    ms.push_back(vesko::bench::millisecondsSince(start));
  }
  double segmentMs = vesko::bench::median(ms);

  ms.clear();
  for (long r = 0; r < runs; ++r) {
    auto start = vesko::bench::Clock::now();
    auto converted = vesko::text::fromUtf8(corpus.utf8);
    auto result = dict.segment(*converted);
    benchmark::DoNotOptimize(result.data());
    ms.push_back(vesko::bench::millisecondsSince(start));
  }
  double convertedMs = vesko::bench::median(ms);

  std::printf("segment words: %zu (%zu Han words of two or more units)\n", words.size(), multi);
  std::printf("segment: %.1f MB/s (median of %ld runs, %.3f ms per run, %.0f UTF-8 bytes)\n",
              bytes / (segmentMs / 1e3) / 1e6, runs, segmentMs, bytes);
  std::printf("segment incl. UTF-8 conversion: %.1f MB/s (median of %ld runs, %.3f ms per run)\n",
              bytes / (convertedMs / 1e3) / 1e6, runs, convertedMs);
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  auto options = vesko::bench::parseOptions(
      argc, argv, kUsage, true,
      {{"--positions", true}, {"--seed", true}, {"--segment-runs", true}, {"--gbench", false}});
  auto positions =
      static_cast<std::size_t>(vesko::bench::optionNumber(options, "--positions", 100000, 1000));
  auto seed = static_cast<unsigned long>(vesko::bench::optionNumber(options, "--seed", 1, 0));
  long segmentRuns = vesko::bench::optionNumber(options, "--segment-runs", 21, 5);

  vesko::CEDict dict;
  auto start = vesko::bench::Clock::now();
  auto loaded = dict.load(options.cedict, options.unihan);
  if (!loaded) {
    std::fprintf(stderr, "loading %s failed\n", options.cedict.c_str());
    return 1;
  }
  std::printf("dictionary: %zu entries, loaded in %.1f ms\n", loaded->entries,
              vesko::bench::millisecondsSince(start));

  auto corpus = readCorpus(options.text);
  auto hovers = pickHovers(corpus, positions, seed);
  std::printf("text: %s (%zu UTF-8 bytes, %zu paragraphs, %zu Han characters)\n",
              options.text.c_str(), corpus.utf8.size(), corpus.paragraphs.size(),
              corpus.hanCharacters);
  std::printf("wordAt positions: %zu random Han characters (seed %lu), window <= %zu units\n",
              hovers.size(), seed, kWindow);
  std::fflush(stdout);

  measureWordAt(dict, hovers);
  measureSegment(dict, corpus, segmentRuns);
  std::fflush(stdout);

  if (vesko::bench::flag(options, "--gbench")) {
    benchmark::RegisterBenchmark("CEDict/wordAt", [&](benchmark::State& state) {
      std::size_t i = 0;
      for (auto _ : state) {
        benchmark::DoNotOptimize(dict.wordAt(hovers[i].window, hovers[i].index));
        if (++i == hovers.size()) i = 0;
      }
    })->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("CEDict/segment", [&](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(dict.segment(corpus.whole).data());
      state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(corpus.utf8.size()));
    })->Unit(benchmark::kMillisecond);
    benchmark::RunSpecifiedBenchmarks();
  }
  benchmark::Shutdown();
  return 0;
}
