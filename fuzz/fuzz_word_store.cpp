// Fuzzes the word store opening mots.json: whatever the file holds, the store either loads
// exactly what the file decodes to and leaves the file as it was, or starts empty and keeps the
// file's bytes, untouched, in the dated "broken-" copy; the next save then writes a new mots.json
// beside that copy without touching it. What decodes is also valid JSON to nlohmann-json, and
// writes back to the same records.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <string_view>

#include "dict/cedict.h"
#include "fuzz_support.h"
#include "learn/saved_word_json.h"
#include "learn/word_store.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace {

// A clock that stands still, so that every set-aside copy has the same name.
class StillClock final : public vesko::Clock {
 public:
  vesko::TimePoint now() const override {
    return vesko::TimePoint(std::chrono::seconds(1'741'530'725));  // 2025-03-09 14:32:05 UTC
  }
  std::chrono::seconds utcOffset(vesko::TimePoint) const override {
    return std::chrono::seconds(0);
  }
};

// A folder in memory when there is one: every save syncs its file to disk.
std::filesystem::path makeFolder() {
  std::filesystem::path base = std::filesystem::is_directory("/dev/shm")
                                   ? "/dev/shm"
                                   : std::filesystem::temp_directory_path();
  std::string pattern = (base / "vesko-fuzz-store-XXXXXX").string();
  if (!::mkdtemp(pattern.data())) std::abort();
  return pattern;
}

struct Services {
  std::filesystem::path folder = makeFolder();
  StillClock clock;
  vesko::Settings settings{folder / "settings.json", clock};
  vesko::Log log{folder / "debug.log", settings, clock};
  vesko::CEDict dictionary;
  vesko::HantCache hant{dictionary};
  vesko::LocTables tables;
  vesko::Loc loc{settings, tables, hant, {"fr-FR"}};
  std::filesystem::path data() const { return folder / "data"; }
};

std::string readText(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Services s;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  std::filesystem::remove_all(s.data());
  std::filesystem::create_directories(s.data());
  const auto file = s.data() / "mots.json";
  const auto copy = s.data() / "mots.broken-2025-03-09-1432.json";
  {
    std::ofstream out(file, std::ios::binary);
    out.write(input.data(), static_cast<std::streamsize>(input.size()));
  }

  const auto decoded = vesko::decodeWords(input);
  // The store's own JSON reader accepts nothing that nlohmann-json's strict reader refuses.
  if (decoded) VESKO_FUZZ_CHECK(nlohmann::json::accept(input), input);
  vesko::WordStore store(file, s.clock, s.log, s.loc);
  if (decoded) {
    VESKO_FUZZ_CHECK(store.words() == *decoded, input);
    VESKO_FUZZ_CHECK(readText(file) == input, input);
    VESKO_FUZZ_CHECK(!std::filesystem::exists(copy), input);
    VESKO_FUZZ_CHECK(!store.pendingNotice(), input);
    // What was read is written back and read again unchanged.
    auto again = vesko::decodeWords(vesko::encodeWords(*decoded));
    VESKO_FUZZ_CHECK(again && *again == *decoded, input);
    return 0;
  }
  VESKO_FUZZ_CHECK(store.words().empty(), input);
  VESKO_FUZZ_CHECK(!std::filesystem::exists(file), input);
  VESKO_FUZZ_CHECK(readText(copy) == input, input);
  VESKO_FUZZ_CHECK(store.pendingNotice().has_value(), input);
  vesko::SavedWord fresh;
  fresh.word = "mot";
  fresh.lang = "fr";
  store.keep(fresh);
  VESKO_FUZZ_CHECK(readText(copy) == input, input);
  auto written = vesko::decodeWords(readText(file));
  VESKO_FUZZ_CHECK(written && written->size() == 1, input);
  return 0;
}
