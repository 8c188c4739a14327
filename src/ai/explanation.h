#pragma once
// The explanation of one word by a language model: which prompt, system text, token budget and
// model, then the question through the language-enforcing ask. `explanationRequest` is a pure
// function; `Explainer` is shared, holds references only and is safe from any thread as CloudAI
// is. The CloudAI and the Loc must outlive it.

#include <future>
#include <optional>
#include <string>

#include "ai/ai_answer.h"
#include "ai/ai_label.h"
#include "ai/provider.h"
#include "ai/wire_protocol.h"

namespace vesko {

class CloudAI;
class Loc;
struct AIReply;

// The learner's "wrong" on the previous answer, and what the learner typed about it.
struct WrongAnswer {
  std::string previousAnswer;
  std::string remark;  // may be empty
};

struct ExplainQuestion {
  std::string word;
  std::optional<std::string> sentence;  // nothing: the word was read alone
  std::string sourceLanguage;           // named in French ("anglais"); empty when unknown
  bool chengyu = false;                 // recognised by the Chinese dictionary (isChengyu)
  std::optional<WrongAnswer> wrong;
};

inline constexpr int kChengyuBudget = 700;
inline constexpr int kWordBudget = 420;

struct ExplanationRequest {
  std::string answerLanguage;
  std::string system;
  std::string user;  // before the answer-language wrapping
  int maxTokens = 0;
  std::optional<std::string> model;  // the stronger Claude model on a second try

  // The question as it is sent: the user text wrapped for the answer language.
  Question question() const;
};

// `provider`: the one that will answer. The on-device model keeps its own model; a cloud service
// or the relay gets `strongerModel` on a second try.
ExplanationRequest explanationRequest(const ExplainQuestion& question,
                                      std::string_view answerLanguage, const AITitles& titles,
                                      AIProvider provider,
                                      const std::optional<std::string>& strongerModel);

class Explainer {
 public:
  Explainer(CloudAI& ai, const Loc& loc);

  // The request for the learner's answer language and the provider that will answer.
  ExplanationRequest request(const ExplainQuestion& question,
                             std::optional<std::string> answerLanguage = std::nullopt) const;
  // In the background.
  std::future<AIAnswer> explain(const ExplanationRequest& request) const;
  // On the calling thread, with who answered.
  AIReply answer(const ExplanationRequest& request) const;

 private:
  CloudAI& ai_;
  const Loc& loc_;
};

}  // namespace vesko
