#pragma once
// The smaller AI tasks that answer with lists of words: synonyms and opposites of a word, the
// related words ("📚") that close a concept explanation, and the classification of kept words
// into themes. Each has its prompt and the reader of the line format that prompt imposes. A text
// beginning with "⚠️ " gives nothing. Pure functions; any thread.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// One item of a word list: "漂亮 (piàoliang) = joli".
struct ListedWord {
  std::string word;
  std::string reading;  // pinyin or kana, without the parentheses; empty when none
  std::string meaning;
  bool operator==(const ListedWord&) const = default;
};

// Items separated by "; " (or "；"), each "word (reading) = meaning".
std::vector<ListedWord> splitWordList(std::string_view items);

struct SynonymRequest {
  std::string word;
  std::string languageCode;  // "zh", "ja", "fr"…
  std::optional<std::string> sentence;
  std::string answerLanguageName;  // in French
};
std::string synonymPrompt(const SynonymRequest& request);

struct SynonymAnswer {
  std::vector<ListedWord> near;       // the "≈" line
  std::vector<ListedWord> opposites;  // the "≠" line; empty when the answer has none
};
std::optional<SynonymAnswer> parseSynonyms(std::string_view answer);

// The related words a concept explanation ends with, as the learner may keep them.
struct ConceptWordsRow {
  std::vector<ListedWord> words;
  std::string lang;
  std::string context;  // the concept they belong to
  std::string k;        // its key
};

// The line appended to a concept explanation prompt for `word` in `languageCode`.
std::string conceptWordsLine(std::string_view word, std::string_view languageCode,
                             std::string_view answerLanguageName);
// The "📚" line of the answer; nothing when it has none.
std::optional<std::vector<ListedWord>> parseConceptWords(std::string_view answer);
// The answer without its "📚" line, for display above the words to keep.
std::string withoutConceptWords(std::string_view answer);

inline constexpr std::string_view kThemeSystem =
    "Tu ranges du vocabulaire par thème. Réponds au format demandé, sans commentaire.";
inline constexpr std::string_view kOtherTheme = "autre";
// The themes kept words are sorted into.
inline constexpr std::string_view kThemeNames[] = {
    "nourriture", "maison", "famille", "corps et santé", "travail", "école",       "voyage",
    "nature",     "temps",  "argent",  "émotions",       "loisirs", "technologie", "société"};

std::string themePrompt(const std::vector<std::string>& themes,
                        const std::vector<std::string>& elements);

struct ThemeReading {
  // For each element sent, the theme the answer gave it (one of the themes or "autre").
  std::vector<std::optional<std::string>> themes;
  bool readable = false;  // at least one line of the form "number: theme"
};
// Lines numbered outside 1…count, and themes not offered, assign nothing.
ThemeReading parseThemes(std::string_view answer, const std::vector<std::string>& themes,
                         std::size_t count);

}  // namespace vesko
