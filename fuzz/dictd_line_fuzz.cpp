// The dictd reader's two parsers on arbitrary lines: an index line's fields must lie inside the
// line, and an entry read from any text keeps only non-empty senses.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dict/dictd_dictionary.h"
#include "fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  vesko::fuzz::forEachLine(data, size, [](std::string_view line) {
    if (auto parsed = vesko::parseDictdIndexLine(line)) {
      VESKO_FUZZ_CHECK(vesko::fuzz::inside(parsed->headword, line), line);
      VESKO_FUZZ_CHECK(!parsed->headword.empty(), line);
    }
  });
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (auto entry = vesko::parseDictdEntry("headword", text)) {
    VESKO_FUZZ_CHECK(!entry->defs.empty(), text);
    for (const auto& d : entry->defs) VESKO_FUZZ_CHECK(!d.empty(), text);
  }
  return 0;
}
