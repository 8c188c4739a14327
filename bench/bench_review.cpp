// The day's review on a large store: the due cards of 10,000 kept words, in the review order,
// cut to the day's allowance, as the review screen and `vesko due` compute them on each opening.
// The words are made up with the spread of a store used for a year: a third never reviewed,
// most of the rest on the ladder with due dates around today, a few archived.
// Target: due + day split on 10,000 words <= 5 ms.

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "learn/review_day.h"

namespace {

constexpr double kDay = 86'400;
constexpr vesko::StoreDate kNow = 800'000'000;  // in 2026

std::vector<vesko::SavedWord> store(std::size_t count) {
  std::mt19937 random(20260301);
  std::uniform_real_distribution<double> within(-200 * kDay, 60 * kDay);
  std::uniform_int_distribution<int> percent(0, 99), step(0, 6), hits(1, 4);
  std::vector<vesko::SavedWord> words(count);
  for (std::size_t i = 0; i < count; ++i) {
    auto& w = words[i];
    w.id = "00000000-0000-4000-8000-" + std::to_string(100'000'000'000 + i);
    w.word = "词" + std::to_string(i);
    w.lang = "zh";
    w.context = "这是一个用来测试复习速度的句子，里面有词" + std::to_string(i) + "。";
    w.definition = "a made-up word for the benchmark";
    w.date = kNow + within(random) - 60 * kDay;
    const int kind = percent(random);
    if (kind >= 33) {
      w.reviewStep = step(random);
      w.reviewDue = kNow + within(random) / 4;
      w.reviews = 3;
    }
    if (kind < 3) w.archived = "useless";
    if (kind >= 97) w.archived = "known";
    if (percent(random) < 10) w.triaged = true;
    if (percent(random) < 30) w.hits = hits(random);
  }
  return words;
}

void BM_DueAndDaySplit(benchmark::State& state) {
  const auto words = store(static_cast<std::size_t>(state.range(0)));
  std::size_t offered = 0, later = 0;
  for (auto _ : state) {
    auto day = vesko::planDay(words, kNow, {12, 3});
    offered = day.today.size();
    later = day.later;
    benchmark::DoNotOptimize(day);
  }
  state.counters["offered"] = static_cast<double>(offered);
  state.counters["later"] = static_cast<double>(later);
}
BENCHMARK(BM_DueAndDaySplit)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
