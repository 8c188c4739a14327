#include "desktop/wrong_answer_row.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "settings/loc.h"

namespace vesko::desktop {

WrongAnswerRow::WrongAnswerRow(const Loc& loc, QWidget* parent)
    : QWidget(parent),
      loc_(loc),
      wrong_(new QPushButton(this)),
      remark_(new QLineEdit(this)),
      again_(new QPushButton(this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(wrong_);
  layout->addWidget(remark_, 1);
  layout->addWidget(again_);
  wrong_->setObjectName(QStringLiteral("wrongButton"));
  remark_->setObjectName(QStringLiteral("remarkField"));
  again_->setObjectName(QStringLiteral("askAgainButton"));
  wrong_->setFocusPolicy(Qt::NoFocus);
  again_->setFocusPolicy(Qt::NoFocus);
  wrong_->setFlat(true);
  connect(wrong_, &QPushButton::clicked, this, [this] {
    wrong_->hide();
    remark_->show();
    again_->show();
    emit typing(true);
    remark_->setFocus();
  });
  connect(again_, &QPushButton::clicked, this, &WrongAnswerRow::send);
  connect(remark_, &QLineEdit::returnPressed, this, &WrongAnswerRow::send);
  retranslate();
  reset();
}

void WrongAnswerRow::retranslate() {
  wrong_->setText(QString::fromStdString(loc_.t("Erreur ? Redemander")));
  remark_->setPlaceholderText(
      QString::fromStdString(loc_.t("Qu'est-ce qui ne va pas ? (facultatif)")));
  remark_->setAccessibleName(remark_->placeholderText());
  again_->setText(QString::fromStdString(loc_.t("Redemander")));
}

void WrongAnswerRow::reset() {
  const bool wasOpen = remark_->isVisibleTo(this);
  remark_->clear();
  remark_->hide();
  again_->hide();
  wrong_->show();
  if (wasOpen) emit typing(false);
}

void WrongAnswerRow::send() {
  const QString remark = remark_->text().trimmed();
  reset();
  emit asked(remark);
}

}  // namespace vesko::desktop
