// Fuzzes parseSupplementLine on valid UTF-8, the only input the loader gives it (the whole file is
// validated first). The parser's answer is checked against the line split here by hand, and the
// two Unicode helpers it relies on (the UTF-8 validator and the character count) against ICU.

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "dict/cedict_line.h"
#include "fuzz_support.h"
#include "text/unicode.h"

namespace {

using vesko::fuzz::inside;
using vesko::fuzz::offsetIn;

// Every tab-separated field, empty ones included.
std::vector<std::string_view> fieldsOf(std::string_view line) {
  std::vector<std::string_view> fields;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    if (i < line.size() && line[i] != '\t') continue;
    fields.push_back(line.substr(start, i - start));
    start = i + 1;
  }
  return fields;
}

// characterCount takes shortcuts around ICU for common scripts; counting with a plain ICU
// character break iterator tells whether those shortcuts agree with the full rules.
std::unique_ptr<icu::BreakIterator> graphemes;

std::size_t icuCharacterCount(std::string_view utf8) {
  const icu::UnicodeString text =
      icu::UnicodeString::fromUTF8(icu::StringPiece(utf8.data(), static_cast<int32_t>(utf8.size())));
  graphemes->setText(text);
  std::size_t count = 0;
  graphemes->first();
  while (graphemes->next() != icu::BreakIterator::DONE) ++count;
  return count;
}

// The validator has a fast path of its own; ICU's decoder, which also refuses overlongs,
// surrogates and anything past U+10FFFF, is the reference.
bool icuValidUtf8(std::string_view bytes) {
  const auto* p = reinterpret_cast<const uint8_t*>(bytes.data());
  const auto length = static_cast<int32_t>(bytes.size());
  for (int32_t i = 0; i < length;) {
    UChar32 c;
    U8_NEXT(p, i, length, c);
    if (c < 0) return false;
  }
  return true;
}

void checkLine(std::string_view line) {
  const std::vector<std::string_view> fields = fieldsOf(line);
  const std::size_t firstCount = vesko::text::characterCount(fields[0]);
  VESKO_FUZZ_CHECK(firstCount == icuCharacterCount(fields[0]) &&
                       "characterCount disagrees with ICU on the first field",
                   line);

  vesko::SupplementLine parsed;
  parsed.character = parsed.pinyin = parsed.definition = "stale";
  if (!vesko::parseSupplementLine(line, parsed)) {
    VESKO_FUZZ_CHECK((fields.size() < 3 || firstCount != 1) && "rejected a well-formed line", line);
    return;
  }
  VESKO_FUZZ_CHECK(fields.size() >= 3 && "accepted a line with fewer than three fields", line);
  VESKO_FUZZ_CHECK(firstCount == 1 && "accepted a first field that is not one character", line);
  VESKO_FUZZ_CHECK(!parsed.character.empty(), line);

  VESKO_FUZZ_CHECK(inside(parsed.character, line), line);
  VESKO_FUZZ_CHECK(inside(parsed.pinyin, line), line);
  VESKO_FUZZ_CHECK(inside(parsed.definition, line), line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.character, line) == offsetIn(fields[0], line) &&
                       parsed.character.size() == fields[0].size(),
                   line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.pinyin, line) == offsetIn(fields[1], line) &&
                       parsed.pinyin.size() == fields[1].size(),
                   line);
  VESKO_FUZZ_CHECK(offsetIn(parsed.definition, line) == offsetIn(fields[2], line) &&
                       parsed.definition.size() == fields[2].size(),
                   line);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  UErrorCode status = U_ZERO_ERROR;
  graphemes.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  if (U_FAILURE(status) || !graphemes) vesko::fuzz::fail("no ICU character break iterator", {});
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const bool valid = vesko::text::isValidUtf8(input);
  VESKO_FUZZ_CHECK(valid == icuValidUtf8(input) && "isValidUtf8 disagrees with ICU", input);
  // Bytes the loader would never hand over: -1 keeps them out of the corpus.
  if (!valid) return -1;
  vesko::fuzz::forEachLine(data, size, checkLine);
  return 0;
}
