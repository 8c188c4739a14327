// What `log` costs the thread that calls it: every hover step logs, so the call must hand its
// line to the worker and return without touching the disk. Each call is timed alone: in a burst
// (the worker busy writing debug.log while calls keep coming), at a steady pace, at the pace of
// the hover timer, and after a quiet second, when the worker has gone to sleep.
// Target: log median <= 2 µs on the caller's thread.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "bench_common.h"
#include "settings/log.h"

namespace {

using vesko::bench::Clock;

constexpr const char* kMessage = "survol : recherche sans réponse depuis 4 s → on repart";

std::filesystem::path makeTempFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "vesko-bench-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) {
    std::perror("mkdtemp");
    std::exit(2);
  }
  return pattern;
}

void report(const char* name, std::vector<double> ns) {
  std::printf("%s median: %.3f µs\n", name, vesko::bench::percentile(ns, 0.50) / 1000);
  std::printf("%s p90: %.3f µs\n", name, vesko::bench::percentile(ns, 0.90) / 1000);
  std::printf("%s p99: %.3f µs\n", name, vesko::bench::percentile(ns, 0.99) / 1000);
}

double timedCall(vesko::Log& log, const std::string& message) {
  auto start = Clock::now();
  log.log(message);
  return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  bool gbench = false;
  long calls = 20'000;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--gbench") {
      gbench = true;
    } else if (arg == "--calls" && i + 1 < argc) {
      calls = std::max(100L, std::atol(argv[++i]));
    } else {
      std::fprintf(stderr, "usage: bench_log [--calls N] [--gbench] [--benchmark_* flags]\n");
      return 2;
    }
  }

  auto folder = makeTempFolder();
  vesko::SystemClock clock;
  vesko::Settings settings(folder / "settings.json", clock);
  const std::string message = kMessage;
  for (bool toFile : {false, true}) {
    settings.overrideForRun("debugLog", toFile);
    std::filesystem::remove(folder / "debug.log");
    vesko::Log log(folder / "debug.log", settings, clock);
    std::printf("debugLog %s\n", toFile ? "on: lines go to debug.log" : "off");

    std::vector<double> burst;
    for (long i = 0; i < calls; ++i) burst.push_back(timedCall(log, message));
    report("  log, calls in a burst", burst);
    log.flush();

    std::vector<double> paced;
    for (long i = 0; i < calls / 4; ++i) {
      paced.push_back(timedCall(log, message));
      std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    report("  log, a call every 0.1 ms", paced);

    std::vector<double> hover;
    for (int i = 0; i < 100; ++i) {
      hover.push_back(timedCall(log, message));
      std::this_thread::sleep_for(std::chrono::milliseconds(30));  // the hover timer's tick
    }
    report("  log, a call every 30 ms", hover);
  }

  // A thread that has slept 30 ms starts with cold caches (and, on a shared virtual machine, a
  // descheduled core): the same pause before the least a log could do shows what is the
  // machine's and what is the log's.
  {
    std::mutex mutex;
    std::vector<std::string> queue;
    std::vector<double> baseline;
    for (int i = 0; i < 100; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(30));
      auto start = Clock::now();
      {
        std::lock_guard lock(mutex);
        queue.push_back(message);
      }
      baseline.push_back(std::chrono::duration<double, std::nano>(Clock::now() - start).count());
    }
    report("baseline: a locked push of the same line every 30 ms", baseline);
  }

  // After a second without lines the worker sleeps, and the next line pays for waking it.
  {
    vesko::Log log(folder / "debug.log", settings, clock);
    std::vector<double> afterQuiet;
    for (int i = 0; i < 6; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1200));
      afterQuiet.push_back(timedCall(log, message));
    }
    report("first log after a quiet second", afterQuiet);
  }

  if (gbench) {
    vesko::Log log(folder / "debug.log", settings, clock);
    benchmark::RegisterBenchmark("Log/log", [&log, &message](benchmark::State& state) {
      for (auto _ : state) log.log(message);
    });
    benchmark::RunSpecifiedBenchmarks();
  }
  std::error_code ignored;
  std::filesystem::remove_all(folder, ignored);
  return 0;
}
