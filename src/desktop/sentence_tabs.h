#pragma once
// The bubble's tabs on the word's sentence: "Traduire", "Décortiquer", "Corriger" (a
// SentenceModel over the sentence) and "Synonymes et contraires" (near words and opposites of the
// word), each with "Erreur ? Redemander". A tab asks when it is first opened, not before. Who
// answers is found on the bubble's background threads (it may probe the local model server);
// answers are polled on the main thread. Questions still running when the sentence changes are
// waited for there, never on the GUI thread. Owned by the bubble. Thread contract: main thread
// only.

#include <QTabWidget>
#include <array>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <string>

#include "ai/sentence_model.h"
#include "ai/word_lists.h"
#include "desktop/desktop_context.h"

class QLabel;
class QTimer;

namespace vesko::desktop {

class Background;
class WrongAnswerRow;

class SentenceTabs final : public QTabWidget {
  Q_OBJECT
 public:
  static constexpr int kTabs = 4;
  static constexpr int kSynonymsTab = 3;

  SentenceTabs(DesktopContext& context, Background& background, QWidget* parent);
  ~SentenceTabs() override;

  // A new sentence: every tab is emptied, nothing is asked yet.
  void setSentence(SentenceSelection selection, SynonymRequest synonyms);
  // The tabs were shown: the current tab asks, if it has not yet.
  void start();
  void retranslate();
  // Whether the tab `index` has asked its question.
  bool opened(int index) const { return pages_[static_cast<std::size_t>(index)].opened; }
  QLabel* answerLabel(int index) const { return pages_[static_cast<std::size_t>(index)].text; }

 signals:
  void typing(bool on);
  void contentChanged();

 private:
  struct Page {
    QLabel* text = nullptr;
    WrongAnswerRow* wrong = nullptr;
    bool opened = false;
    bool wrongNotice = false;
  };
  void open(int index);
  void askSynonyms(std::optional<std::string> retry);
  void markWrong(int index, const QString& remark);
  void poll();
  void showAnswer(int index);
  void showLoading(int index);
  // Hands running questions to the background threads, which wait for them there.
  void dropQuestions();

  DesktopContext& context_;
  Background& background_;
  QTimer* timer_;
  std::array<Page, kTabs> pages_;
  SentenceSelection selection_;
  SynonymRequest synonymRequest_;
  std::uint64_t generation_ = 0;
  bool setupAsked_ = false;
  std::shared_ptr<SentenceModel> model_;
  std::shared_ptr<std::future<AIAnswer>> synonyms_;
  std::string synonymAnswer_;
  std::string answerLanguage_ = "fr";
};

}  // namespace vesko::desktop
