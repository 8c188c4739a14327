#include "dict/chengyu.h"

#include "text/unicode.h"

namespace vesko {

bool isChengyu(const CEDict& dictionary, std::u16string_view word) {
  std::size_t characters = 0;
  for (std::size_t i = 0; i < word.size(); i = text::nextCharacter(word, i)) {
    if (!text::isHanAt(word, i)) return false;
    ++characters;
  }
  if (characters != 4) return false;
  // CC-CEDICT marks idioms in the gloss itself: "/(idiom) to draw a snake and add feet/".
  for (EntryRef entry : dictionary.lookup(word))
    for (std::size_t i = 0; i < entry.defCount(); ++i)
      if (entry.def(i).find("(idiom)") != std::string_view::npos) return true;
  return false;
}

}  // namespace vesko
