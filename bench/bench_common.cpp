#include "bench_common.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>

#include "settings/resources.h"

namespace vesko::bench {
namespace {

[[noreturn]] void fail(const std::string& message) {
  std::cerr << message << '\n';
  std::exit(2);
}

std::filesystem::path requireResource(std::string_view name, std::string_view type,
                                      std::string_view what) {
  auto found = Resources::find(name, type);
  if (found.empty())
    fail(std::string(what) + " not found (looked for " + Resources::expected(name, type).string() +
         "). Run scripts/fetch-data first, or pass its path explicitly.");
  return found;
}

std::filesystem::path requireFile(const std::string& path, std::string_view what) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error))
    fail(std::string(what) + " not found: " + path);
  return path;
}

}  // namespace

Options parseOptions(int argc, char** argv, std::string_view usage, bool needsText,
                     std::vector<OwnOption> known) {
  Options options;
  bool noUnihan = false;
  std::optional<std::string> cedict, unihan, text;
  auto value = [&](int& i, std::string_view name) -> std::string {
    if (i + 1 >= argc) fail(std::string(name) + " needs a value\n" + std::string(usage));
    return argv[++i];
  };
  for (int i = 1; i < argc; ++i) {
    std::string_view arg = argv[i];
    if (arg == "-h" || arg == "--help") {
      std::cout << usage << '\n';
      std::exit(0);
    } else if (arg == "--cedict") {
      cedict = value(i, arg);
    } else if (arg == "--unihan") {
      unihan = value(i, arg);
    } else if (arg == "--no-unihan") {
      noUnihan = true;
    } else if (arg == "--text" && needsText) {
      text = value(i, arg);
    } else {
      auto match = std::find_if(known.begin(), known.end(),
                                [&](const OwnOption& o) { return o.name == arg; });
      if (match == known.end())
        fail("unknown option '" + std::string(arg) + "'\n" + std::string(usage));
      options.own.emplace_back(std::string(arg), match->takesValue ? value(i, arg) : "");
    }
  }

  options.cedict = cedict ? requireFile(*cedict, "CC-CEDICT file")
                          : requireResource("cedict", "txt", "CC-CEDICT (cedict.txt)");
  if (!noUnihan)
    options.unihan = unihan ? requireFile(*unihan, "Unihan supplement")
                            : requireResource("unihan", "tsv", "Unihan supplement (unihan.tsv)");
  if (needsText)
    options.text = text ? requireFile(*text, "Chinese text")
                        : requireFile(VESKO_BENCH_DATA_DIR "/zh-sample.txt",
                                      "Committed Chinese sample (bench/data/zh-sample.txt)");
  return options;
}

std::optional<std::string> option(const Options& options, std::string_view name) {
  for (const auto& [key, val] : options.own)
    if (key == name) return val;
  return std::nullopt;
}

bool flag(const Options& options, std::string_view name) {
  return option(options, name).has_value();
}

long optionNumber(const Options& options, std::string_view name, long fallback, long minimum) {
  auto text = option(options, name);
  if (!text) return fallback;
  char* end = nullptr;
  long number = std::strtol(text->c_str(), &end, 10);
  if (text->empty() || *end != '\0' || number < minimum)
    fail(std::string(name) + " needs a whole number of at least " + std::to_string(minimum) +
         ", not '" + *text + "'");
  return number;
}

std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) fail("cannot read " + path.string());
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

double percentile(std::vector<double>& values, double fraction) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  auto rank = static_cast<std::size_t>(std::ceil(fraction * static_cast<double>(values.size())));
  return values[std::clamp<std::size_t>(rank, 1, values.size()) - 1];
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  std::size_t n = values.size();
  return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

Memory processMemory() {
  // Read with stdio into a fixed buffer: the point is to disturb the heap being measured as
  // little as possible.
  Memory memory;
  std::FILE* status = std::fopen("/proc/self/status", "r");
  if (!status) return memory;
  char line[256];
  while (std::fgets(line, sizeof line, status)) {
    long kib = 0;
    if (std::sscanf(line, "VmRSS: %ld kB", &kib) == 1) memory.rssMb = kib * 1024.0 / 1e6;
    if (std::sscanf(line, "VmHWM: %ld kB", &kib) == 1) memory.peakMb = kib * 1024.0 / 1e6;
  }
  std::fclose(status);
  return memory;
}

}  // namespace vesko::bench
