#pragma once
// The state of the three AI actions on one selected text (translate, take apart, correct): per
// action the answer and whether it is loading. Opening an action asks once (or takes the answer
// already kept for that text); marking an answer wrong forgets it, with the terms kept from it,
// and asks again with the learner's remark and a stronger model. "⚠️ " answers are shown, never
// kept. A new selection gets a new model. Thread contract: one owner thread calls every member;
// the questions run on the ask's threads and their answers are taken in by poll() or wait().

#include <array>
#include <functional>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "ai/answer_cache.h"
#include "ai/answer_language.h"
#include "ai/sentence_prompts.h"

namespace vesko {

enum class SentenceAction { translate = 0, analyse = 1, correct = 2 };

// The text the actions work on, with what surrounds it.
struct SentenceSelection {
  std::string text;
  std::string languageCode;             // the text's language: "zh", "ja", "fr"…
  bool traditional = false;             // Chinese written in traditional characters
  std::optional<std::string> line;      // the longer line when the text is a piece of one
  std::optional<std::string> sentence;  // the sentence the text is part of (analysis)
};

// Who answers, in which language, and into which languages a text is translated.
struct SentenceSetup {
  std::string answerLanguage = "fr";     // an answer-language code
  std::vector<std::string> targetCodes;  // "en", "zh-Hant"…
  std::string provider;                  // for the cache key: "claude", "local"…
  std::string model;                     // the learner's model for that provider; may be empty
  // The model override for a second try; nothing keeps the learner's model.
  std::function<std::optional<std::string>()> strongerModel;
  // Removes the words the learner kept from a wrong answer.
  std::function<void(const std::string& answer)> forgetKeptTerms;
};

class SentenceModel {
 public:
  static constexpr int kTranslationTokens = 600;
  static constexpr int kAnalysisTokens = 700;
  static constexpr int kCorrectionTokens = 400;

  // `ask` and `cache` must outlive the model and every answer it waits for. `titles`: in the
  // setup's answer language.
  SentenceModel(SentenceSelection selection, SentenceSetup setup, AITitles titles,
                const LanguageAsk& ask, AnswerCache& cache);
  ~SentenceModel();  // waits for the questions still running
  SentenceModel(const SentenceModel&) = delete;
  SentenceModel& operator=(const SentenceModel&) = delete;

  // The tab of `action` was opened: asks unless an answer is there or on its way.
  void open(SentenceAction action);
  // The learner says the answer is wrong. Nothing happens while it loads or when it has none.
  void markWrong(SentenceAction action, std::string_view remark = {});

  bool loading(SentenceAction action) const { return state(action).pending.valid(); }
  const std::string& answer(SentenceAction action) const { return state(action).answer; }
  // The user text of the last question asked for `action` (before the answer-language wrapping).
  const std::string& lastQuestion(SentenceAction action) const { return state(action).question; }

  // Takes in the answers that have come; returns the actions whose answer changed.
  std::vector<SentenceAction> poll();
  // Blocks until the answer of `action` has come and takes it in.
  void wait(SentenceAction action);

  const SentenceSelection& selection() const { return selection_; }

 private:
  struct ActionState {
    std::string answer;
    std::string question;
    std::string storedUnder;  // the cache action label of the answer shown; empty: not kept
    std::string askedAs;      // the label the running question will be kept under
    std::future<AIAnswer> pending;
  };
  ActionState& state(SentenceAction action) { return states_[static_cast<int>(action)]; }
  const ActionState& state(SentenceAction action) const {
    return states_[static_cast<int>(action)];
  }
  std::string prompt(SentenceAction action) const;
  AnswerKey key(std::string label) const;
  void ask(SentenceAction action, std::string user, std::string label,
           std::optional<std::string> model);
  void takeIn(ActionState& state);

  SentenceSelection selection_;
  SentenceSetup setup_;
  AITitles titles_;
  const LanguageAsk& ask_;
  AnswerCache& cache_;
  std::array<ActionState, 3> states_;
};

// The label the answers of `action` are kept under; a second translation has its own.
std::string_view actionLabel(SentenceAction action, bool retried = false);

}  // namespace vesko
