#pragma once
// AI answers as the bubble's rich text: escaped, "**" pairs in bold, lines kept, and titled
// sections with their title in bold. Stateless; main thread (QString only).

#include <QString>
#include <string_view>
#include <vector>

#include "ai/answer_sections.h"

namespace vesko::desktop {

QString answerHtml(std::string_view text);
QString sectionsHtml(const std::vector<AnswerSection>& sections, const AITitles& titles);

}  // namespace vesko::desktop
