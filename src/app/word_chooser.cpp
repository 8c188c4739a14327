#include "app/word_chooser.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/uscript.h>

#include <array>

#include "app/french_elision.h"
#include "app/japanese_forms.h"
#include "app/name_characters.h"
#include "app/sentence.h"
#include "app/word_tokenizer.h"
#include "text/unicode.h"

namespace vesko {
namespace {

constexpr char16_t kIterationMark = u'々';
constexpr std::u16string_view kPolishDiacritics = u"ąćęłńóśźżĄĆĘŁŃÓŚŹŻ";
constexpr std::size_t kPolishSentenceMinimum = 20;  // characters before the recogniser is asked
constexpr double kPolishProbability = 0.8;
constexpr std::size_t kGuessOverrideMinimum = 25;  // characters before a guess beats preference
constexpr double kGuessOverrideProbability = 0.9;
constexpr std::size_t kJapaneseMaxWord = 12;  // code points tried from the word's start
constexpr std::size_t kJapaneseMaxStem = 4;   // kanji taken before kana okurigana
constexpr std::size_t kThaiMaxWords = 4;      // words a Thai dictionary match may span

bool isKana(char32_t c) {
  return (c >= 0x3040 && c <= 0x30FF) || (c >= 0xFF66 && c <= 0xFF9D) ||
         (c >= 0x31F0 && c <= 0x31FF);
}

bool isJapanese(char32_t c) {
  return text::isHan(c) || isKana(c) || c == kIterationMark;
}

std::size_t codePointLength(std::u16string_view text, std::size_t i) {
  return text::codePointAt(text, i) > 0xFFFF ? 2 : 1;
}

std::string lowercased(std::u16string_view word) {
  icu::UnicodeString s(false, word.data(), static_cast<int32_t>(word.size()));
  s.toLower(icu::Locale::getRoot());
  return text::toUtf8(std::u16string_view(reinterpret_cast<const char16_t*>(s.getBuffer()),
                                          static_cast<std::size_t>(s.length())));
}

std::string lowercased(std::string_view utf8Word) {
  icu::UnicodeString s = icu::UnicodeString::fromUTF8(
      icu::StringPiece(utf8Word.data(), static_cast<int32_t>(utf8Word.size())));
  s.toLower(icu::Locale::getRoot());
  std::string out;
  s.toUTF8String(out);
  return out;
}

std::string utf8(std::u16string_view s) {
  return text::toUtf8(s);
}

std::string sentenceAt(std::u16string_view text, std::size_t index) {
  return utf8(sentenceAround(text, static_cast<std::ptrdiff_t>(index)));
}

HoverResult wordResult(std::u16string_view text, std::size_t index, TextSpan span,
                       Language language, std::vector<WordEntry> entries) {
  HoverResult::Word word;
  word.word = utf8(text.substr(span.start, span.length()));
  word.language = language;
  word.start = span.start;
  word.length = span.length();
  word.entries = std::move(entries);
  word.sentence = sentenceAt(text, index);
  return HoverResult{std::move(word)};
}

}  // namespace

WordChooser::WordChooser(const CEDict& cedict, const LanguageData& data, SkippedLanguage& skipped,
                         ChooserTexts texts)
    : cedict_(cedict), data_(data), skipped_(skipped), texts_(std::move(texts)) {}

std::optional<Language> WordChooser::skip(Language language) const {
  skipped_.set(language);
  return std::nullopt;
}

std::optional<Language> WordChooser::detect(std::u16string_view text, std::ptrdiff_t index,
                                            const Snapshot& snapshot) const {
  if (index < 0 || static_cast<std::size_t>(index) >= text.size()) return std::nullopt;
  const auto at = static_cast<std::size_t>(index);
  const char32_t c = text::codePointAt(text, at);
  if (text::isHan(c) || isKana(c) || c == kIterationMark) return decideHan(text, c, snapshot);

  const bool anyOther =
      snapshot.fr || snapshot.en || snapshot.th || snapshot.ja || snapshot.ru || snapshot.pl;
  if (!anyOther || !isLetter(c)) return std::nullopt;
  if (c >= 0x0E00 && c <= 0x0E7F)
    return snapshot.th ? std::optional(Language::th) : skip(Language::th);
  if (c >= 0x0400 && c <= 0x04FF)
    return snapshot.ru ? std::optional(Language::ru) : skip(Language::ru);
  // Greek, Arabic, Hangul and the other scripts no studied language is written in would
  // otherwise fall through to the French and English dictionaries.
  UErrorCode status = U_ZERO_ERROR;
  const UScriptCode script = uscript_getScript(static_cast<UChar32>(c), &status);
  if (script != USCRIPT_LATIN && script != USCRIPT_INHERITED) return std::nullopt;

  if (snapshot.pl) {
    if (isPolish(text, index)) return Language::pl;
  } else if (auto word = tokenWord(text, index, "pl");
             word && word->find_first_of(kPolishDiacritics) != std::u16string_view::npos) {
    return skip(Language::pl);
  }
  if (findElision(text, at)) return snapshot.fr ? std::optional(Language::fr) : skip(Language::fr);
  if (!snapshot.fr && snapshot.en) return Language::en;
  if (snapshot.fr && !snapshot.en) return Language::fr;

  std::optional<Language> named;
  if (auto word = tokenWord(text, index, "en")) named = headwordLanguage(*word);
  if (!named) named = languageFromCode(guessLatin(text, snapshot.prefLatin));
  if (!named) return std::nullopt;
  if (snapshot.fr && snapshot.en) return named;
  return skip(*named);
}

std::optional<Language> WordChooser::decideHan(std::u16string_view text, char32_t c,
                                               const Snapshot& snapshot) const {
  if (snapshot.ja) {
    bool kana = isKana(c);
    for (std::size_t i = 0; !kana && i < text.size(); ++i) kana = isKana(text[i]);
    if (kana || !snapshot.zh || snapshot.prefHan == "ja") return Language::ja;
  }
  if (snapshot.zh && text::isHan(c)) return Language::zh;
  return skip(Language::zh);
}

bool WordChooser::isPolish(std::u16string_view text, std::ptrdiff_t index) const {
  const std::u16string_view word = tokenWord(text, index, "pl").value_or(std::u16string_view());
  if (word.find_first_of(kPolishDiacritics) != std::u16string_view::npos) return true;
  if (text::characterCount(word) < 2) return false;
  const std::string key = lowercased(word);
  const WordDictionary* polish = data_.dictionary(Language::pl);
  const HeadwordSet* english = data_.headwords(Language::en);
  const HeadwordSet* french = data_.headwords(Language::fr);
  if (polish && polish->contains(key) && !(english && english->contains(key)) &&
      !(french && french->contains(key)))
    return true;
  const LanguageRecognizer* recognizer = data_.recognizer();
  if (!recognizer) return false;
  const std::u16string sentence = sentenceAround(text, index);
  if (text::characterCount(sentence) < kPolishSentenceMinimum) return false;
  constexpr std::array<std::string_view, 3> kCandidates = {"pl", "fr", "en"};
  auto guesses = recognizer->hypotheses(utf8(sentence), kCandidates, 1);
  return !guesses.empty() && guesses.front().language == "pl" &&
         guesses.front().probability >= kPolishProbability;
}

std::optional<Language> WordChooser::headwordLanguage(std::u16string_view word) const {
  if (text::characterCount(word) < 2) return std::nullopt;
  const std::string key = lowercased(word);
  const HeadwordSet* english = data_.headwords(Language::en);
  const HeadwordSet* french = data_.headwords(Language::fr);
  const bool inEnglish = english && english->contains(key);
  const bool inFrench = french && french->contains(key);
  if (inEnglish && !inFrench) return Language::en;
  if (inFrench && !inEnglish) return Language::fr;
  return std::nullopt;
}

std::string WordChooser::guessLatin(std::u16string_view text, std::string_view preference) const {
  std::vector<LanguageGuess> guesses;
  if (const LanguageRecognizer* recognizer = data_.recognizer()) {
    constexpr std::array<std::string_view, 2> kCandidates = {"fr", "en"};
    guesses = recognizer->hypotheses(utf8(text), kCandidates, 2);
  }
  double french = 0, english = 0;
  for (const auto& guess : guesses) {
    if (guess.language == "fr") french = guess.probability;
    if (guess.language == "en") english = guess.probability;
  }
  const std::string guess = !guesses.empty() && english > french ? "en" : "fr";
  if (preference != "fr" && preference != "en") return guess;
  if (text::characterCount(text) >= kGuessOverrideMinimum &&
      std::max(french, english) >= kGuessOverrideProbability)
    return guess;
  return std::string(preference);
}

std::optional<HoverResult> WordChooser::read(std::u16string_view text, std::ptrdiff_t index,
                                             const Snapshot& snapshot) const {
  auto language = detect(text, index, snapshot);
  if (!language) return std::nullopt;
  return lookup(text, index, *language, snapshot);
}

std::optional<HoverResult> WordChooser::lookup(std::u16string_view text, std::ptrdiff_t index,
                                               Language language, const Snapshot& snapshot) const {
  if (index < 0 || static_cast<std::size_t>(index) >= text.size()) return std::nullopt;
  const auto at = static_cast<std::size_t>(index);
  switch (language) {
    case Language::zh:
      return chinese(text, at);
    case Language::ja:
      return japanese(text, at);
    case Language::th:
      return thai(text, at);
    case Language::fr:
    case Language::en:
    case Language::ru:
    case Language::pl:
      return inflected(text, at, language, snapshot);
  }
  return std::nullopt;
}

std::optional<HoverResult> WordChooser::chinese(std::u16string_view text, std::size_t index) const {
  if (!cedict_.loaded() || !text::isHanAt(text, index)) return std::nullopt;
  auto match = cedict_.wordAt(text, static_cast<std::ptrdiff_t>(index));
  // A single character is what the dictionary finds under any Han character it knows; only a
  // longer word stops a run of transliteration characters from being read as a name.
  const bool word = match && text::characterCount(match->word) > 1;
  if (!word) {
    if (auto name = guessName(text, index)) return HoverResult{std::move(*name)};
  }
  if (!match) return std::nullopt;
  HoverResult::Chinese hit;
  hit.word = utf8(match->word);
  hit.start = match->start;
  hit.length = match->word.size();
  hit.entries = match->entries.toVector();
  hit.sentence = sentenceAt(text, index);
  return HoverResult{std::move(hit)};
}

std::optional<HoverResult::Chinese> WordChooser::guessName(std::u16string_view text,
                                                           std::size_t index) const {
  auto isNameCharacter = [&](std::size_t i) {
    const char16_t c = text[i];
    if (chinese::kNameCharacters.find(c) != std::u16string_view::npos) return true;
    if (!text::isHan(c)) return false;
    const std::u16string simplified = cedict_.convert(text.substr(i, 1), false);
    return simplified.size() == 1 &&
           chinese::kNameCharacters.find(simplified[0]) != std::u16string_view::npos;
  };
  if (index >= text.size() || !isNameCharacter(index)) return std::nullopt;
  // Every name character is in the Basic Multilingual Plane, so the run is walked unit by unit.
  std::size_t start = index, end = index + 1;
  while (start > 0 && end - start < chinese::kMaxNameLength && isNameCharacter(start - 1)) --start;
  while (end < text.size() && end - start < chinese::kMaxNameLength && isNameCharacter(end)) ++end;
  if (end - start < 2) return std::nullopt;

  const std::u16string_view run = text.substr(start, end - start);
  std::string pinyin;
  for (std::size_t i = 0; i < run.size(); ++i) {
    Entries entries = cedict_.lookup(run.substr(i, 1));
    if (entries.empty()) return std::nullopt;
    if (!pinyin.empty()) pinyin += ' ';
    pinyin += entries[0].pinyin();
  }
  HoverResult::Chinese name;
  name.word = utf8(run);
  name.start = start;
  name.length = run.size();
  name.entries.push_back(Entry{utf8(cedict_.convert(run, true)),
                               utf8(cedict_.convert(run, false)),
                               std::move(pinyin),
                               {texts_.probableName}});
  name.sentence = sentenceAt(text, index);
  return name;
}

std::optional<HoverResult> WordChooser::japanese(std::u16string_view text,
                                                 std::size_t index) const {
  auto token = WordTokenizer::tokenAt(text, static_cast<std::ptrdiff_t>(index), "ja");
  const WordDictionary* dictionary = data_.dictionary(Language::ja);
  if (!dictionary) {
    if (!token) return std::nullopt;
    return wordResult(text, index, *token, Language::ja, {});
  }
  // The tokenizer finds where the word starts and the dictionary finds its end, longest first,
  // since the tokenizer cuts inflections into pieces (食|べ|てい|ま|した). Kana right after kanji
  // is read as the kanji's ending first: the pointer on べ of 食べ still finds 食べる.
  std::size_t tokenStart = token && token->start <= index ? token->start : index;
  if (!isJapanese(text::codePointAt(text, tokenStart))) tokenStart = index;
  std::size_t hanStart = tokenStart;
  if (isKana(text[tokenStart])) {
    while (hanStart > 0 && tokenStart - hanStart < kJapaneseMaxStem &&
           (text::isHan(text[hanStart - 1]) || text[hanStart - 1] == kIterationMark))
      --hanStart;
  }
  for (std::size_t start : {hanStart, tokenStart}) {
    std::vector<std::size_t> ends;
    for (std::size_t i = start; i < text.size() && ends.size() < kJapaneseMaxWord;) {
      if (!isJapanese(text::codePointAt(text, i))) break;
      i += codePointLength(text, i);
      ends.push_back(i);
    }
    for (auto end = ends.rbegin(); end != ends.rend() && *end > index; ++end) {
      const std::u16string surface = withIterationMarksSpelled(text, start, *end);
      std::vector<std::u16string> candidates = japaneseCandidates(surface);
      candidates.insert(candidates.begin(), surface);
      for (const auto& candidate : candidates) {
        std::vector<WordEntry> entries = dictionary->lookup(utf8(candidate));
        if (entries.empty()) continue;
        HoverResult result =
            wordResult(text, index, {start, *end}, Language::ja, std::move(entries));
        if (candidate != surface) {
          std::string form = utf8(candidate);
          std::string note = " → " + form + "  (" + texts_.dictionaryForm + ")";
          std::get<HoverResult::Word>(result.value).base =
              BaseForm{std::move(form), std::move(note)};
        }
        return result;
      }
    }
    if (hanStart == tokenStart) break;
  }
  return std::nullopt;
}

std::optional<HoverResult> WordChooser::thai(std::u16string_view text, std::size_t index) const {
  auto token = WordTokenizer::tokenAt(text, static_cast<std::ptrdiff_t>(index), "th");
  if (!token) return std::nullopt;
  const WordDictionary* dictionary = data_.dictionary(Language::th);
  if (!dictionary) return wordResult(text, index, *token, Language::th, {});
  // Thai dictionaries hold phrases of several words; the longest that starts with the word wins.
  std::vector<std::size_t> ends =
      WordTokenizer::followingBoundaries(text, token->start, "th", kThaiMaxWords);
  if (ends.empty() || ends.front() != token->end) ends.insert(ends.begin(), token->end);
  for (auto end = ends.rbegin(); end != ends.rend(); ++end) {
    if (*end < token->end) continue;
    TextSpan span{token->start, *end};
    auto entries = dictionary->lookup(lowercased(text.substr(span.start, span.length())));
    if (!entries.empty()) return wordResult(text, index, span, Language::th, std::move(entries));
  }
  return std::nullopt;
}

std::optional<HoverResult> WordChooser::inflected(std::u16string_view text, std::size_t index,
                                                  Language language,
                                                  const Snapshot& snapshot) const {
  std::optional<TextSpan> span;
  std::optional<std::string> elided;
  if (language == Language::fr) {
    if (auto elision = findElision(text, index)) {
      span = elision->word;
      elided = utf8(elision->expanded);
    }
  }
  if (!span)
    span = WordTokenizer::tokenAt(text, static_cast<std::ptrdiff_t>(index), languageCode(language));
  if (!span) return std::nullopt;

  const std::string key = lowercased(text.substr(span->start, span->length()));
  const WordDictionary* dictionary = data_.dictionary(language);
  const Conjugator* conjugator = data_.conjugator(language);
  std::optional<BaseForm> base = conjugator ? conjugator->baseForm(key) : std::nullopt;
  std::vector<WordEntry> entries;
  bool throughBase = false;
  if (dictionary) {
    entries = dictionary->lookup(key);
    if (entries.empty() && base) {
      entries = dictionary->lookup(lowercased(std::string_view(base->word)));
      throughBase = !entries.empty();
    }
    if (entries.empty()) return std::nullopt;
  }
  HoverResult result = wordResult(text, index, *span, language, std::move(entries));
  auto& word = std::get<HoverResult::Word>(result.value);
  word.elided = std::move(elided);
  // With conjugation hidden the base form is still shown when it is what found the entry.
  if (snapshot.conj || throughBase) word.base = std::move(base);
  return result;
}

}  // namespace vesko
