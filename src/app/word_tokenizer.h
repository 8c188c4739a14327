#pragma once
// Words as a locale's rules cut them, through ICU's word break iterator: spaces and punctuation
// for French or Polish, a dictionary for Thai, which writes no spaces between words.
// Stateless; any thread. Each thread keeps one iterator per locale, since creating one costs far
// more than resetting it on a new text.

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

namespace vesko {

struct TextSpan {
  std::size_t start = 0;  // UTF-16 indexes, end exclusive
  std::size_t end = 0;
  std::size_t length() const { return end - start; }
  friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

class WordTokenizer {
 public:
  // The token holding `index`, with punctuation and white space trimmed from both ends; nothing
  // for an index out of range or a token that is all punctuation or space. `locale` is an ICU
  // locale identifier such as "th" or "pl".
  static std::optional<TextSpan> tokenAt(std::u16string_view text, std::ptrdiff_t index,
                                         std::string_view locale);
  // The boundaries that follow `from`, at most `count` of them, in order; used to grow a match
  // over several words.
  static std::vector<std::size_t> followingBoundaries(std::u16string_view text, std::size_t from,
                                                      std::string_view locale, std::size_t count);
};

// The word text of `WordTokenizer::tokenAt`; a view into `text`.
std::optional<std::u16string_view> tokenWord(std::u16string_view text, std::ptrdiff_t index,
                                             std::string_view locale);

}  // namespace vesko
