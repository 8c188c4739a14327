// Fuzzes the EDICT and KANJIDIC line parsers: every accepted line's forms, readings and glosses
// must lie inside the line, be non-empty and trimmed, and hold none of the layout's separators.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "dict/edict_line.h"
#include "fuzz_support.h"

namespace {

using vesko::fuzz::inside;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

bool hasAny(std::string_view s, std::string_view bytes) {
  return s.find_first_of(bytes) != std::string_view::npos;
}

// Reused from line to line, as the loader does, so that leftovers show up as foreign views.
vesko::EdictLine edict;
vesko::KanjidicLine kanjidic;

void checkLine(std::string_view line) {
  if (vesko::parseEdictLine(line, edict)) {
    VESKO_FUZZ_CHECK(!edict.kana.empty() && !edict.glosses.empty(), line);
    VESKO_FUZZ_CHECK(line.front() != '#', line);
    for (const auto* forms : {&edict.kanji, &edict.kana}) {
      for (std::string_view form : *forms) {
        VESKO_FUZZ_CHECK(inside(form, line) && !form.empty(), line);
        VESKO_FUZZ_CHECK(!hasAny(form, " \t\r/[];"), line);
      }
    }
    for (std::string_view gloss : edict.glosses) {
      VESKO_FUZZ_CHECK(inside(gloss, line) && !gloss.empty(), line);
      VESKO_FUZZ_CHECK(!isBlank(gloss.front()) && !isBlank(gloss.back()), line);
      VESKO_FUZZ_CHECK(gloss.find('/') == std::string_view::npos, line);
      VESKO_FUZZ_CHECK(gloss != "(P)", line);
    }
  }
  if (vesko::parseKanjidicLine(line, kanjidic)) {
    VESKO_FUZZ_CHECK(inside(kanjidic.kanji, line) && !kanjidic.kanji.empty(), line);
    VESKO_FUZZ_CHECK(!kanjidic.meanings.empty(), line);
    for (std::string_view meaning : kanjidic.meanings) {
      VESKO_FUZZ_CHECK(inside(meaning, line) && !meaning.empty(), line);
      VESKO_FUZZ_CHECK(!hasAny(meaning, "{}"), line);
    }
    for (const auto* readings : {&kanjidic.onReadings, &kanjidic.kunReadings})
      for (std::string_view reading : *readings)
        VESKO_FUZZ_CHECK(inside(reading, line) && !reading.empty() && !hasAny(reading, " {"), line);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  vesko::fuzz::forEachLine(data, size, checkLine);
  return 0;
}
