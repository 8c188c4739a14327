#pragma once
// What every benchmark needs besides the code it measures: where the dictionary and the Chinese
// text are, plain statistics over timings, and the process's memory as the kernel counts it.
// Figures are printed as plain "name: value unit" lines so that a person can copy them and
// bench/compare-peers can read them.

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vesko::bench {

using Clock = std::chrono::steady_clock;

inline double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// An option a single benchmark reads itself, besides the shared --cedict, --unihan, --no-unihan
// and --text.
struct OwnOption {
  std::string_view name;  // "--runs"
  bool takesValue;
};

// Command-line options, read after Google Benchmark has taken its own --benchmark_* flags.
struct Options {
  std::filesystem::path cedict;
  std::filesystem::path unihan;  // empty: load without the supplement
  std::filesystem::path text;    // empty when the benchmark reads no text
  std::vector<std::pair<std::string, std::string>> own;
};

// Resolves the data files: explicit options first, then the program's resources, then (for the
// text) the sample committed beside the benchmarks. Exits with a message naming scripts/fetch-data
// when the dictionary is missing, and on an unknown option.
Options parseOptions(int argc, char** argv, std::string_view usage, bool needsText,
                     std::vector<OwnOption> known);

std::optional<std::string> option(const Options& options, std::string_view name);
bool flag(const Options& options, std::string_view name);
// Exits with a message when the value is not a whole number of at least `minimum`.
long optionNumber(const Options& options, std::string_view name, long fallback, long minimum);

std::string readFile(const std::filesystem::path& path);

// Sorts `values` in place. `fraction` in [0, 1]; the nearest-rank percentile.
double percentile(std::vector<double>& values, double fraction);
double median(std::vector<double> values);

struct Memory {
  double rssMb = 0;   // VmRSS
  double peakMb = 0;  // VmHWM
};
// From /proc/self/status, in MB of 10^6 bytes.
Memory processMemory();

}  // namespace vesko::bench
