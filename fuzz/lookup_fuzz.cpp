// The word chooser on arbitrary text and index: the language decision, every language's word
// rules and the sentences, with small fake dictionaries so that every lookup path is reached.
// Input: one byte of language switches, one of preferences, two of index (signed, so that
// out-of-range indexes come too), then the text as raw UTF-16 units, broken surrogates included.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "app/sentence.h"
#include "app/word_chooser.h"
#include "support/fake_language_data.h"

namespace {

struct World {
  vesko::CEDict cedict;
  const vesko::testing::SmallLanguages languages;
  vesko::SkippedLanguage skipped;
  std::unique_ptr<vesko::WordChooser> chooser;

  World() {
    if (!cedict.load(std::string(VESKO_TEST_DATA) + "/cedict_names.txt", "")) {
      std::fprintf(stderr, "cannot load the test dictionary\n");
      std::abort();
    }
    chooser = std::make_unique<vesko::WordChooser>(cedict, languages.data, skipped);
  }
};

World& world() {
  static World instance;
  return instance;
}

void require(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "broken: %s\n", what);
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 4) return 0;
  vesko::Snapshot snapshot;
  snapshot.zh = data[0] & 1;
  snapshot.ja = data[0] & 2;
  snapshot.th = data[0] & 4;
  snapshot.fr = data[0] & 8;
  snapshot.en = data[0] & 16;
  snapshot.ru = data[0] & 32;
  snapshot.pl = data[0] & 64;
  snapshot.conj = data[0] & 128;
  snapshot.prefLatin = data[1] & 1 ? "fr" : "en";
  snapshot.prefHan = data[1] & 2 ? "zh" : "ja";
  int16_t index;
  std::memcpy(&index, data + 2, 2);
  std::u16string text((size - 4) / 2, u'\0');
  std::memcpy(text.data(), data + 4, text.size() * 2);

  auto result = world().chooser->read(text, index, snapshot);
  if (result) {
    std::size_t start = 0, length = 0;
    if (auto* hit = result->chinese()) start = hit->start, length = hit->length;
    if (auto* word = result->word()) start = word->start, length = word->length;
    require(length > 0 && start <= text.size() && length <= text.size() - start,
            "the word lies outside its text");
  }
  auto sentence = vesko::sentenceAround(text, index);
  require(sentence.size() <= text.size(), "a sentence longer than its text");
  return 0;
}
