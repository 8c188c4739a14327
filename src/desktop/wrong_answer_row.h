#pragma once
// "Erreur ? Redemander" under an AI answer in the bubble: the first press opens the remark field
// "Qu'est-ce qui ne va pas ? (facultatif)" beside a "Redemander" button; sending hands the remark
// (possibly empty) to the owner, which asks again. Owned by the panel that shows the answer.
// Thread contract: main thread only.

#include <QWidget>

class QLineEdit;
class QPushButton;

namespace vesko {
class Loc;
}

namespace vesko::desktop {

class WrongAnswerRow final : public QWidget {
  Q_OBJECT
 public:
  WrongAnswerRow(const Loc& loc, QWidget* parent);

  void retranslate();
  // Back to the single button, the field emptied (a new answer, a new word).
  void reset();
  QLineEdit* remarkField() const { return remark_; }

 signals:
  // The remark field opened (true: the window must take the keyboard) or closed.
  void typing(bool on);
  void asked(const QString& remark);

 private:
  void send();

  const Loc& loc_;
  QPushButton* wrong_;
  QLineEdit* remark_;
  QPushButton* again_;
};

}  // namespace vesko::desktop
