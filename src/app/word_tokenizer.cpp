#include "app/word_tokenizer.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

#include <memory>
#include <string>
#include <vector>

#include "text/unicode.h"

namespace vesko {
namespace {

// The few locales a process uses, each with its iterator and the UText it reads through; a
// linear search beats hashing for seven entries.
struct CachedIterator {
  std::string locale;
  std::unique_ptr<icu::BreakIterator> iterator;
};

struct IteratorCache {
  std::vector<CachedIterator> iterators;
  UText utext = UTEXT_INITIALIZER;
  ~IteratorCache() { utext_close(&utext); }
};

icu::BreakIterator* iteratorFor(std::u16string_view text, std::string_view locale) {
  thread_local IteratorCache cache;
  icu::BreakIterator* iterator = nullptr;
  for (auto& cached : cache.iterators) {
    if (cached.locale == locale) {
      iterator = cached.iterator.get();
      break;
    }
  }
  if (!iterator) {
    UErrorCode status = U_ZERO_ERROR;
    std::string name(locale);
    std::unique_ptr<icu::BreakIterator> created(
        icu::BreakIterator::createWordInstance(icu::Locale(name.c_str()), status));
    if (U_FAILURE(status) || !created) return nullptr;
    iterator = created.get();
    cache.iterators.push_back({std::move(name), std::move(created)});
  }
  UErrorCode status = U_ZERO_ERROR;
  utext_openUChars(&cache.utext, text.data(), static_cast<int64_t>(text.size()), &status);
  iterator->setText(&cache.utext, status);
  return U_SUCCESS(status) ? iterator : nullptr;
}

bool isTrimmed(char32_t c) {
  return u_ispunct(static_cast<UChar32>(c)) || u_isUWhiteSpace(static_cast<UChar32>(c)) ||
         u_iscntrl(static_cast<UChar32>(c));
}

}  // namespace

std::optional<TextSpan> WordTokenizer::tokenAt(std::u16string_view text, std::ptrdiff_t index,
                                               std::string_view locale) {
  if (index < 0 || static_cast<std::size_t>(index) >= text.size() || text.size() > INT32_MAX)
    return std::nullopt;
  icu::BreakIterator* iterator = iteratorFor(text, locale);
  if (!iterator) return std::nullopt;
  const int32_t end = iterator->following(static_cast<int32_t>(index));
  if (end == icu::BreakIterator::DONE) return std::nullopt;
  int32_t start = iterator->preceding(end);
  if (start == icu::BreakIterator::DONE) start = 0;
  TextSpan span{static_cast<std::size_t>(start), static_cast<std::size_t>(end)};
  while (span.start < span.end && isTrimmed(text::codePointAt(text, span.start)))
    span.start += text::codePointAt(text, span.start) > 0xFFFF ? 2 : 1;
  while (span.end > span.start) {
    std::size_t last = span.end - 1;
    if (last > span.start && (text[last] & 0xFC00) == 0xDC00 && (text[last - 1] & 0xFC00) == 0xD800)
      --last;
    if (!isTrimmed(text::codePointAt(text, last))) break;
    span.end = last;
  }
  if (span.start >= span.end) return std::nullopt;
  return span;
}

std::vector<std::size_t> WordTokenizer::followingBoundaries(std::u16string_view text,
                                                            std::size_t from,
                                                            std::string_view locale,
                                                            std::size_t count) {
  std::vector<std::size_t> boundaries;
  if (from >= text.size() || text.size() > INT32_MAX) return boundaries;
  icu::BreakIterator* iterator = iteratorFor(text, locale);
  if (!iterator) return boundaries;
  int32_t at = iterator->following(static_cast<int32_t>(from));
  while (boundaries.size() < count && at != icu::BreakIterator::DONE) {
    boundaries.push_back(static_cast<std::size_t>(at));
    at = iterator->next();
  }
  return boundaries;
}

std::optional<std::u16string_view> tokenWord(std::u16string_view text, std::ptrdiff_t index,
                                             std::string_view locale) {
  auto span = WordTokenizer::tokenAt(text, index, locale);
  if (!span) return std::nullopt;
  return text.substr(span->start, span->length());
}

}  // namespace vesko
