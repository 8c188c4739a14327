#pragma once
// The bubble's explanation of the word by the language model: a button, "…" while the answer
// comes, then the answer's sections under their titles, and "Erreur ? Redemander" to ask again
// with the learner's remark. Building the question and asking run on the bubble's background
// threads; answers from an earlier word are dropped. Owned by the bubble. Thread contract: main
// thread only.

#include <QWidget>
#include <cstdint>
#include <optional>
#include <string>

#include "ai/explanation.h"
#include "desktop/desktop_context.h"

class QLabel;
class QPushButton;

namespace vesko::desktop {

class Background;
class WrongAnswerRow;

class ExplanationPanel final : public QWidget {
  Q_OBJECT
 public:
  ExplanationPanel(DesktopContext& context, Background& background, QWidget* parent);

  // A new word: what was shown goes, nothing is asked until the learner presses the button.
  void setWord(ExplainQuestion question);
  void retranslate();
  // The answer shown, or empty.
  const std::string& answer() const { return answer_; }
  QPushButton* explainButton() const { return explain_; }
  WrongAnswerRow* wrongRow() const { return wrong_; }

 signals:
  void typing(bool on);
  void contentChanged();  // the panel changed size

 private:
  void ask(std::optional<WrongAnswer> wrong);
  void showAnswer(const std::string& text, const std::string& answerLanguage);

  DesktopContext& context_;
  Background& background_;
  QPushButton* explain_;
  QLabel* text_;
  WrongAnswerRow* wrong_;
  ExplainQuestion question_;
  std::uint64_t generation_ = 0;  // raised at every new word and question
  bool loading_ = false;
  std::string answer_;
  std::string answerLanguage_;
  bool wrongNotice_ = false;  // the "La réponse est fausse" line shows above the new answer
};

}  // namespace vesko::desktop
