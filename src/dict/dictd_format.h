#pragma once
// The pieces of dictd's format that need parsing, kept free of I/O so that tests and fuzzers can
// drive them directly: index lines ("kot<TAB>CdG6<TAB>Bs", numbers in dictd's own base-64, most
// significant digit first) and the bodies of FreeDict entries.
// Stateless; any thread. Views point into the text passed in.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// "A"…"Z" are 0–25, "a"…"z" 26–51, "0"…"9" 52–61, "+" 62, "/" 63. Nothing for an empty string, a
// foreign character or a number past 2^60 (ten digits: no dictionary is that large).
std::optional<uint64_t> decodeDictdNumber(std::string_view digits);

struct DictdIndexLine {
  std::string_view headword;
  uint64_t offset = 0;
  uint64_t length = 0;
};

// Nothing for a line without a headword and two valid numbers. Fields after the third are
// ignored.
std::optional<DictdIndexLine> parseDictdIndexLine(std::string_view line);

// True for dictd's own entries about the database ("00databaseinfo", "00-database-url").
bool isDictdMetadata(std::string_view headword);

// A FreeDict entry body:
//   kot /kɔt/ <n>
//   1. dust bunny
//   (potocznie, potoczny) kłąb kurzu …
//   2. cat
// The numbered lines are the translations; the unnumbered lines under them explain the sense in
// the source language and are left out. An entry without numbers has its translation on the
// line after the headword.
struct FreedictBody {
  std::string_view headword;
  std::string_view pronunciation;  // "kɔt", empty when there is none
  std::vector<std::string_view> senses;
};
FreedictBody parseFreedictBody(std::string_view body);

// The Russian translations in a body of Mueller's English–Russian dictionary, in order of
// appearance and without repeats:
//   cat
//      _I  [kæt]
//         1. _n.
//            1) кот; кошка; tom cat кот; pussy cat кошка, кошечка
//            2) _зоол. животное семейства кошачьих
// gives "кот", "кошка". Transcriptions, "_зоол."-style labels and parenthesised remarks are
// dropped; a sense is read up to its first example (the first part holding Latin letters); only
// words and phrases of at most three words, all Cyrillic, are kept, so that explanations
// ("животное семейства кошачьих") are not taken for translations.
std::vector<std::string> muellerTranslations(std::string_view body);

}  // namespace vesko
