// Randomized robustness test for the word chooser: a few hundred thousand random texts and
// indexes, from a fixed seed, through `read` with random language switches. It passes when nothing
// crashes, no sanitizer complains and every result lies inside its text. It runs with every test
// suite, the asan preset's included; fuzz/lookup_fuzz.cpp explores the same reads guided by
// coverage.
// Usage: app_lookup_robustness_test [COUNT] [SEED]

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include "app/sentence.h"
#include "app/word_chooser.h"
#include "support/fake_language_data.h"
#include "text/unicode.h"

namespace {

// Pieces a random text is made of: every script the rules tell apart, the characters they treat
// specially, and the UTF-16 that screen readers hand over broken.
// clang-format off
constexpr std::u16string_view kPieces[] = {
    u"学", u"习", u"乔", u"纳", u"森", u"馬", u"克", u"思", u"人", u"々", u"日本", u"𠀀", u"𠀁",
    u"す", u"た", u"て", u"い", u"ま", u"し", u"ｽ", u"ー", u"行った", u"食べていました",
    u"ภาษา", u"ไทย", u"ข้าว", u"ั", u"привет", u"мир", u"żółw", u"na", u"zdrowie", u"kot",
    u"l'", u"c'mon", u"s’il", u"jusqu'", u"école", u"the", u"cat", u"a", u"Z", u"e\u0301",
    u"λόγος", u"한국", u" ", u"  ", u"\n", u".", u"!", u"?", u"。", u"…", u",", u"'", u"’",
    u"1", u"\xD800", u"\xDC00", u"\u200D", u"👍🏽", u"\uFFFD", u"\0",
};
// clang-format on

bool inside(std::size_t start, std::size_t length, std::size_t size) {
  return start <= size && length <= size - start;
}

}  // namespace

int main(int argc, char** argv) {
  const long count = argc > 1 ? std::atol(argv[1]) : 300000;
  const unsigned long seed = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 20240611;

  vesko::CEDict cedict;
  if (!cedict.load(std::string(VESKO_TEST_DATA) + "/cedict_names.txt", "")) {
    std::fprintf(stderr, "cannot load the test dictionary\n");
    return 1;
  }
  const vesko::testing::SmallLanguages languages;
  vesko::SkippedLanguage skipped;
  vesko::WordChooser chooser(cedict, languages.data, skipped);

  std::mt19937_64 random(seed);
  std::uniform_int_distribution<std::size_t> piece(0, std::size(kPieces) - 1);
  std::uniform_int_distribution<int> pieces(0, 120);
  std::uniform_int_distribution<int> bit(0, 1);
  long results = 0;
  for (long n = 0; n < count; ++n) {
    std::u16string text;
    for (int i = pieces(random); i > 0; --i) text += kPieces[piece(random)];
    std::uniform_int_distribution<std::ptrdiff_t> at(-3,
                                                     static_cast<std::ptrdiff_t>(text.size()) + 3);
    const std::ptrdiff_t index = at(random);
    vesko::Snapshot snapshot;
    snapshot.zh = bit(random);
    snapshot.ja = bit(random);
    snapshot.th = bit(random);
    snapshot.fr = bit(random);
    snapshot.en = bit(random);
    snapshot.ru = bit(random);
    snapshot.pl = bit(random);
    snapshot.conj = bit(random);
    snapshot.prefLatin = bit(random) ? "fr" : "en";
    snapshot.prefHan = bit(random) ? "zh" : "ja";

    auto result = chooser.read(text, index, snapshot);
    if (result) {
      ++results;
      std::size_t start = 0, length = 0;
      if (auto* hit = result->chinese()) start = hit->start, length = hit->length;
      if (auto* word = result->word()) start = word->start, length = word->length;
      if (!inside(start, length, text.size()) || length == 0) {
        std::fprintf(stderr, "case %ld: result [%zu, +%zu) outside a text of %zu units\n", n, start,
                     length, text.size());
        return 1;
      }
    }
    auto sentence =
        vesko::sentenceForWord(text.substr(0, std::min<std::size_t>(text.size(), 3)), text);
    if (sentence.size() > text.size() + 2) {
      std::fprintf(stderr, "case %ld: sentence longer than its text\n", n);
      return 1;
    }
  }
  std::printf("%ld random reads, %ld with a result\n", count, results);
  return 0;
}
