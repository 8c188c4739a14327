#pragma once
// The languages the language models answer in, and the ask that enforces one of them: every
// prompt is written in French, so the answer language is named three times (system text, a tag in
// front of the user text, an "IMPORTANT" paragraph at its end) or the models drift into French.
// The table is constant data; `LanguageAsk` holds only the ask it was given and is safe from any
// thread when that ask is.

#include <array>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <string_view>

#include "ai/ai_answer.h"

namespace vesko {

class CloudAI;
class Loc;

// One answer language: its code (an interface-language code, Chinese split by script), the tag put
// in front of the user text, the "IMPORTANT" paragraph put at its end, and the two teacher system
// texts written in that language. The French texts name the language in their own sentence; the
// others are closed by "Réponds en …" between `open` and `close` (full-width for Chinese).
struct AnswerLanguageRow {
  std::string_view code;
  std::string_view tag;
  std::string_view important;
  std::string_view teacher;
  std::string_view chineseTeacher;
  std::string_view open;
  std::string_view close;
};

// The rows live in answer_language.cpp; French comes first and is also the fallback.
extern const std::array<AnswerLanguageRow, 7> kAnswerLanguages;

// The row of `code`, or nothing for a code that is not an answer language.
const AnswerLanguageRow* answerLanguageRow(std::string_view code);
// `code` when it is an answer language, else "fr".
std::string_view answerLanguageCode(std::string_view code);

// The answer language for the learner's interface: Chinese by the script the learner reads, "fr",
// "en", "pl", "ru", "th" as they are; any other code gives French, as the interface itself does.
std::string answerLanguage(const Loc& loc);

// The language named in French, as in "Réponds en …": "anglais", "chinois traditionnel (Taïwan)".
std::string answerLanguageName(std::string_view code);
// "Réponds en " + the French name: the marker the wrapping rule looks for in the system text.
std::string answerMarker(std::string_view code);
// The tag and its newline, e.g. "[Answer in English]\n".
std::string answerTag(std::string_view code);
// The "IMPORTANT" paragraph of `code`.
std::string_view importantParagraph(std::string_view code);

// The system text of a general language teacher, of a Chinese teacher (for Chinese words).
std::string teacherSystemText(std::string_view code);
std::string chineseTeacherSystemText(std::string_view code);

// The user text as it is sent: when `system` names the answer language ("Réponds en …"), the tag,
// the user text, a blank line and the "IMPORTANT" paragraph; otherwise `user` unchanged (a system
// text that asks for no language, such as a translator's, must not get them).
std::string wrapForAnswerLanguage(std::string_view code, std::string_view system,
                                  std::string_view user);

// The signature of CloudAI::ask, so that tests can stand in for the entry point.
using AskFunction = std::function<std::future<AIAnswer>(
    std::string system, std::string user, int maxTokens, std::optional<std::string> model)>;

// The ask every explanation, analysis, translation and synonym prompt goes through: it applies the
// wrapping rule of the answer language, then asks. The CloudAI (or the function) must outlive it.
class LanguageAsk {
 public:
  explicit LanguageAsk(CloudAI& ai);
  explicit LanguageAsk(AskFunction ask);

  std::future<AIAnswer> ask(std::string_view answerLanguage, std::string system,
                            std::string_view user, int maxTokens,
                            std::optional<std::string> model = std::nullopt) const;

 private:
  AskFunction ask_;
};

}  // namespace vesko
