#pragma once
// The user texts that ask a language model about one word: in its sentence, alone, or as a
// chengyu; the second try after a wrong answer; the Chinese usage lines; the re-translation of a
// stored explanation. The prompts are written in French whatever the answer language; the section
// titles they impose come already translated (AITitles). Pure functions; any thread.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "ai/ai_label.h"

namespace vesko {

// The lines that ask for spoken, natural Chinese, then Taiwan usage when `targets` holds "zh-Hant"
// and mainland usage when it holds "zh-Hans", in that order. Empty when no target is Chinese.
std::string chineseUsageLines(std::span<const std::string> targets);

// " Si le mot entre 【 】 n'a pas vraiment de sens …": the model says when the marked word is a
// misreading rather than inventing a meaning for it.
std::string doubtClause();
// " Termine TOUJOURS par une ligne « Expression : … = … » …" with the title in the answer language.
std::string expressionLine(const AITitles& titles);
// " Écris ces titres exactement comme indiqué …".
std::string titlesLine();

// `sentence` with the first `word` in it marked 【word】; nothing when the word is not in it.
std::optional<std::string> markedSentence(std::string_view sentence, std::string_view word);

// The word in its sentence, or read alone when `sentence` is nothing or blank. `sourceLanguage`
// is the text's language named in French ("anglais"), or empty when unknown.
std::string wordPrompt(std::string_view word, const std::optional<std::string>& sentence,
                       std::string_view sourceLanguage, const AITitles& titles);

// A four-character idiom: its characters one by one, its literal and real meanings, its meaning
// in `sentence` (when there is one) and an example.
std::string chengyuPrompt(std::string_view chengyu, const std::optional<std::string>& sentence,
                          const AITitles& titles);

// Appended to the user text of a second try after the learner marked `previousAnswer` wrong;
// `remark` is what the learner typed, possibly empty.
std::string retrySuffix(std::string_view previousAnswer, std::string_view remark);

// The re-translation of a stored explanation into the answer language `target`.
inline constexpr std::string_view kRewriteSystemText =
    "Tu es un traducteur précis. Réponds uniquement par le texte demandé, sans commentaire.";
std::string rewritePrompt(std::string_view explanation, std::string_view target);

}  // namespace vesko
