// Fuzzes the dictd readers: index lines, FreeDict bodies and the reading of Mueller's bodies.
// The input is an index, a NUL byte, then the text the index points into, as a .dict file would
// hold it. Beyond memory errors, every result is checked against the layout's invariants.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "dict/dictd_format.h"
#include "fuzz_support.h"

namespace {

using vesko::fuzz::inside;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

void checkNumber(std::string_view digits, uint64_t value) {
  // Ten base-64 digits hold at most 60 bits.
  VESKO_FUZZ_CHECK(value < (uint64_t{1} << 60), digits);
  VESKO_FUZZ_CHECK(!digits.empty() && digits.size() <= 10, digits);
}

void checkFreedict(std::string_view body) {
  const vesko::FreedictBody parsed = vesko::parseFreedictBody(body);
  VESKO_FUZZ_CHECK(parsed.headword.empty() || inside(parsed.headword, body), body);
  VESKO_FUZZ_CHECK(parsed.pronunciation.empty() || inside(parsed.pronunciation, body), body);
  for (std::string_view sense : parsed.senses) {
    VESKO_FUZZ_CHECK(inside(sense, body), body);
    VESKO_FUZZ_CHECK(!sense.empty(), body);
    VESKO_FUZZ_CHECK(!isBlank(sense.front()) && !isBlank(sense.back()), body);
    VESKO_FUZZ_CHECK(sense.find('\n') == std::string_view::npos, body);
  }
}

void checkMueller(std::string_view body) {
  const auto russian = vesko::muellerTranslations(body);
  for (std::size_t i = 0; i < russian.size(); ++i) {
    const std::string& phrase = russian[i];
    VESKO_FUZZ_CHECK(!phrase.empty(), body);
    VESKO_FUZZ_CHECK(phrase.front() != ' ' && phrase.back() != ' ', body);
    for (char c : phrase) {
      const auto b = static_cast<unsigned char>(c);
      // Only Cyrillic letters (two-byte sequences), spaces and hyphens survive.
      VESKO_FUZZ_CHECK(b == ' ' || b == '-' || b >= 0x80, body);
    }
    for (std::size_t j = 0; j < i; ++j) VESKO_FUZZ_CHECK(russian[j] != phrase, body);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t split = input.find('\0');
  const std::string index = input.substr(0, split);
  // A copy of exactly its size, so that AddressSanitizer sees any read past the text.
  const std::string text = split == std::string::npos ? std::string() : input.substr(split + 1);

  vesko::fuzz::forEachLine(reinterpret_cast<const uint8_t*>(index.data()), index.size(),
                           [&](std::string_view line) {
    const auto parsed = vesko::parseDictdIndexLine(line);
    if (!parsed) return;
    VESKO_FUZZ_CHECK(!parsed->headword.empty() && inside(parsed->headword, line), line);
    VESKO_FUZZ_CHECK(parsed->headword.find('\t') == std::string_view::npos, line);
    const std::size_t tab1 = line.find('\t');
    const std::size_t tab2 = line.find('\t', tab1 + 1);
    checkNumber(line.substr(tab1 + 1, tab2 - tab1 - 1), parsed->offset);
    if (parsed->offset > text.size() || parsed->length > text.size() - parsed->offset) return;
    const std::string body = text.substr(parsed->offset, parsed->length);
    checkFreedict(body);
    checkMueller(body);
  });
  checkFreedict(text);
  checkMueller(text);
  return 0;
}
