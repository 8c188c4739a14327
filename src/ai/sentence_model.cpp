#include "ai/sentence_model.h"

#include <chrono>

#include "ai/explain_prompts.h"

namespace vesko {
namespace {

std::string frenchName(std::string_view code) {
  return code == "ja" ? "japonais" : answerLanguageName(code);
}

}  // namespace

std::string_view actionLabel(SentenceAction action, bool retried) {
  switch (action) {
    case SentenceAction::translate:
      return retried ? "redemander" : "traduction";
    case SentenceAction::analyse:
      return "décortiquer phrase";
    case SentenceAction::correct:
      return "corriger";
  }
  return "traduction";
}

SentenceModel::SentenceModel(SentenceSelection selection, SentenceSetup setup, AITitles titles,
                             const LanguageAsk& ask, AnswerCache& cache)
    : selection_(std::move(selection)),
      setup_(std::move(setup)),
      titles_(std::move(titles)),
      ask_(ask),
      cache_(cache) {}

SentenceModel::~SentenceModel() {
  for (auto& state : states_)
    if (state.pending.valid()) state.pending.wait();
}

std::string SentenceModel::prompt(SentenceAction action) const {
  const std::string answerName = answerLanguageName(setup_.answerLanguage);
  switch (action) {
    case SentenceAction::translate: {
      TranslationRequest request;
      request.text = selection_.text;
      request.sourceCode = selection_.languageCode;
      request.traditional = selection_.traditional;
      for (const auto& code : setup_.targetCodes) request.targets.push_back(frenchName(code));
      request.targetCodes = setup_.targetCodes;
      request.answerLanguageName = answerName;
      request.line = selection_.line;
      return translationPrompt(request, titles_);
    }
    case SentenceAction::analyse: {
      AnalysisRequest request;
      request.text = selection_.text;
      request.sourceCode = selection_.languageCode;
      request.traditional = selection_.traditional;
      request.answerLanguageName = answerName;
      request.sentence = selection_.sentence;
      return analysisPrompt(request, titles_);
    }
    case SentenceAction::correct:
      return correctionPrompt(selection_.text,
                              analysisSourceName(selection_.languageCode, selection_.traditional),
                              answerName);
  }
  return {};
}

AnswerKey SentenceModel::key(std::string label) const {
  return {std::move(label), selection_.text, setup_.answerLanguage, setup_.provider, setup_.model};
}

void SentenceModel::open(SentenceAction action) {
  ActionState& current = state(action);
  if (current.pending.valid() || !current.answer.empty()) return;
  const bool translation = action == SentenceAction::translate;
  // A translation asked again replaced the first one: it is the one to show.
  for (bool retried : {false, true}) {
    if (retried && !translation) break;
    const std::string label(actionLabel(action, retried));
    if (auto kept = cache_.find(key(label))) {
      current.answer = std::move(*kept);
      current.storedUnder = label;
      return;
    }
  }
  ask(action, prompt(action), std::string(actionLabel(action)), std::nullopt);
}

void SentenceModel::markWrong(SentenceAction action, std::string_view remark) {
  ActionState& current = state(action);
  if (current.pending.valid() || current.answer.empty()) return;
  const std::string previous = current.answer;
  if (!current.storedUnder.empty()) cache_.forget(key(current.storedUnder));
  if (setup_.forgetKeptTerms && !previous.starts_with(kWarningPrefix))
    setup_.forgetKeptTerms(previous);
  current.storedUnder.clear();
  std::optional<std::string> stronger;
  if (setup_.strongerModel) stronger = setup_.strongerModel();
  ask(action, prompt(action) + retrySuffix(previous, remark),
      std::string(actionLabel(action, true)), std::move(stronger));
}

void SentenceModel::ask(SentenceAction action, std::string user, std::string label,
                        std::optional<std::string> model) {
  ActionState& current = state(action);
  current.question = std::move(user);
  current.askedAs = std::move(label);
  const int tokens = action == SentenceAction::translate ? kTranslationTokens
                     : action == SentenceAction::analyse ? kAnalysisTokens
                                                         : kCorrectionTokens;
  current.pending = ask_.ask(setup_.answerLanguage, teacherSystemText(setup_.answerLanguage),
                             current.question, tokens, std::move(model));
}

void SentenceModel::takeIn(ActionState& current) {
  AIAnswer reply = current.pending.get();
  current.answer = std::move(reply.text);
  current.storedUnder.clear();
  if (cache_.store(key(current.askedAs), current.answer)) current.storedUnder = current.askedAs;
}

std::vector<SentenceAction> SentenceModel::poll() {
  std::vector<SentenceAction> changed;
  for (int i = 0; i < static_cast<int>(states_.size()); ++i) {
    ActionState& current = states_[i];
    if (!current.pending.valid() ||
        current.pending.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
      continue;
    takeIn(current);
    changed.push_back(static_cast<SentenceAction>(i));
  }
  return changed;
}

void SentenceModel::wait(SentenceAction action) {
  ActionState& current = state(action);
  if (current.pending.valid()) takeIn(current);
}

}  // namespace vesko
