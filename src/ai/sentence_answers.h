#pragma once
// Reads the answers of the translation, analysis and correction prompts back into records: the
// line formats those prompts impose, and nothing else is assumed. A text beginning with "⚠️ " is
// a message for the learner and gives nothing. Pure functions; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ai/ai_label.h"

namespace vesko {

// "X = Y" read as its two sides; `meaning` empty when the line has no " = ".
struct Gloss {
  std::string text;
  std::string meaning;
  bool operator==(const Gloss&) const = default;
};

struct TranslationLine {
  std::string language;  // the name of `languageNames` the line's head matched
  std::string text;      // with the ** ** marks kept
  bool operator==(const TranslationLine&) const = default;
};

struct TranslationAnswer {
  std::vector<TranslationLine> translations;
  std::optional<std::string> nuance;
  std::vector<Gloss> parts;  // the smallest pieces, one by one
  std::optional<Gloss> expression;
  std::optional<std::string> partOf;  // "⚠︎ Fait partie de : …"
  std::vector<std::string> other;     // lines none of the above
};

// `languageNames`: every name a translation line may start with (the requested languages in
// French and in the answer language), compared without case and brackets.
std::optional<TranslationAnswer> parseTranslation(std::string_view answer,
                                                  const std::vector<std::string>& languageNames,
                                                  const AITitles& titles);

struct AnalysisWord {
  std::string word;
  std::string meaning;
  std::string nature;
  bool operator==(const AnalysisWord&) const = default;
};

struct AnalysisAnswer {
  std::optional<std::string> doubt;  // the "🤔 …" line
  std::optional<std::string> structure;
  std::vector<AnalysisWord> words;
  std::optional<std::string> grammar;  // with its continuation lines
  std::optional<Gloss> expression;
  std::vector<std::string> other;
};
std::optional<AnalysisAnswer> parseAnalysis(std::string_view answer, const AITitles& titles);

struct CorrectionAnswer {
  std::string corrected;   // the first line, without its "✓"
  bool unchanged = false;  // marked "✓", or equal to the learner's sentence but for punctuation
  std::string grammar;
};
std::optional<CorrectionAnswer> parseCorrection(std::string_view answer,
                                                std::string_view learnerSentence);

// The text without the characters a corrected sentence may gain or lose at its ends.
std::string withoutEndPunctuation(std::string_view sentence);

// The head of a line (before the first ":" or "："), trimmed and without brackets, and the rest.
struct HeadedLine {
  std::string head;
  std::string rest;
};
std::optional<HeadedLine> splitHead(std::string_view line);
// "X = Y" or "X：Y"-less "X = Y" into its sides.
Gloss splitGloss(std::string_view text);

}  // namespace vesko
