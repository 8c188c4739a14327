#include "ai/explanation.h"

#include "ai/answer_language.h"
#include "ai/cloud_ai.h"
#include "ai/explain_prompts.h"
#include "settings/loc.h"

namespace vesko {

Question ExplanationRequest::question() const {
  return Question{system, wrapForAnswerLanguage(answerLanguage, system, user), maxTokens};
}

ExplanationRequest explanationRequest(const ExplainQuestion& question,
                                      std::string_view answerLanguage, const AITitles& titles,
                                      AIProvider provider,
                                      const std::optional<std::string>& strongerModel) {
  ExplanationRequest request;
  request.answerLanguage = std::string(answerLanguageCode(answerLanguage));
  if (question.chengyu) {
    request.system = chineseTeacherSystemText(request.answerLanguage);
    request.user = chengyuPrompt(question.word, question.sentence, titles);
    request.maxTokens = kChengyuBudget;
  } else {
    request.system = teacherSystemText(request.answerLanguage);
    request.user = wordPrompt(question.word, question.sentence, question.sourceLanguage, titles);
    request.maxTokens = kWordBudget;
  }
  if (question.wrong) {
    request.user += retrySuffix(question.wrong->previousAnswer, question.wrong->remark);
    if (provider != AIProvider::apple) request.model = strongerModel;
  }
  return request;
}

Explainer::Explainer(CloudAI& ai, const Loc& loc) : ai_(ai), loc_(loc) {}

ExplanationRequest Explainer::request(const ExplainQuestion& question,
                                      std::optional<std::string> answerLanguage) const {
  std::string language = answerLanguage ? *answerLanguage : vesko::answerLanguage(loc_);
  language = std::string(answerLanguageCode(language));
  const AITitles titles(loc_, language);
  const AIProvider provider = ai_.effectiveProvider();
  // Only a second try needs the stronger model: the first one spares the learner its price.
  std::optional<std::string> stronger;
  if (question.wrong && provider != AIProvider::apple) stronger = ai_.strongerClaudeModel();
  return explanationRequest(question, language, titles, provider, stronger);
}

std::future<AIAnswer> Explainer::explain(const ExplanationRequest& request) const {
  return LanguageAsk(ai_).ask(request.answerLanguage, request.system, request.user,
                              request.maxTokens, request.model);
}

AIReply Explainer::answer(const ExplanationRequest& request) const {
  return ai_.answer(request.question(), request.model);
}

}  // namespace vesko
