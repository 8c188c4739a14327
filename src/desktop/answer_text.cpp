#include "desktop/answer_text.h"

namespace vesko::desktop {

QString answerHtml(std::string_view text) {
  const QString escaped =
      QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toHtmlEscaped();
  QString out;
  bool bold = false;
  for (qsizetype i = 0; i < escaped.size(); ++i) {
    if (escaped[i] == u'*' && i + 1 < escaped.size() && escaped[i + 1] == u'*') {
      out += bold ? QStringLiteral("</b>") : QStringLiteral("<b>");
      bold = !bold;
      ++i;
    } else if (escaped[i] == u'\n') {
      out += QStringLiteral("<br>");
    } else {
      out += escaped[i];
    }
  }
  if (bold) out += QStringLiteral("</b>");
  return out;
}

QString sectionsHtml(const std::vector<AnswerSection>& sections, const AITitles& titles) {
  QString out;
  for (const auto& section : sections) {
    if (!out.isEmpty()) out += QStringLiteral("<br>");
    if (section.label)
      out += QStringLiteral("<b>%1</b><br>")
                 .arg(QString::fromStdString(titles[*section.label]).toHtmlEscaped());
    out += answerHtml(section.text);
  }
  return out;
}

}  // namespace vesko::desktop
