#pragma once
// The user texts of the three actions on a selected text: translate it into the learner's
// languages, take it apart, correct a sentence the learner wrote. Pure functions of their
// arguments; the section titles come in already written in the answer language (AITitles).
// Any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ai/ai_label.h"

namespace vesko {

// The text's language named in French for the translation prompt: Chinese says mandarin and its
// script. `code` is a language code ("zh", "ja", "fr"…); `traditional` matters for Chinese only.
std::string translationSourceName(std::string_view code, bool traditional);
// The same for the analysis prompt, where the script alone is enough for Chinese.
std::string analysisSourceName(std::string_view code, bool traditional);

struct TranslationRequest {
  std::string text;
  std::string sourceCode;  // "zh", "ja", "fr"…
  bool traditional = false;
  std::vector<std::string> targets;      // target languages named in French ("anglais")
  std::vector<std::string> targetCodes;  // the same as codes, for the Chinese usage lines
  std::string answerLanguageName;        // in French ("français")
  std::optional<std::string> line;       // the longer line when the text is a piece of it
};
std::string translationPrompt(const TranslationRequest& request, const AITitles& titles);

struct AnalysisRequest {
  std::string text;
  std::string sourceCode;
  bool traditional = false;
  std::string answerLanguageName;
  std::optional<std::string> sentence;  // the sentence the text is a part of
};
std::string analysisPrompt(const AnalysisRequest& request, const AITitles& titles);

// `languageName`: the sentence's language named in French.
std::string correctionPrompt(std::string_view sentence, std::string_view languageName,
                             std::string_view answerLanguageName);

}  // namespace vesko
