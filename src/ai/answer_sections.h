#pragma once
// An AI answer cut into the titled sections it was asked for ("Sens : …", "Expression : …"), so
// that each can be shown under its heading. The titles are looked for in the answer language;
// anything else the model wrote stays in the section it follows. Pure functions; any thread.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ai/ai_label.h"

namespace vesko {

struct AnswerSection {
  std::optional<AILabel> label;  // nothing: the text before the first title, or a whole message
  std::string text;              // after the title's colon, continuation lines joined by "\n"

  friend bool operator==(const AnswerSection&, const AnswerSection&) = default;
};

// The line's title when the text before its first colon (":" or "：") is one, once trimmed and
// stripped of brackets and emphasis; and the rest of the line after that colon.
struct TitledLine {
  AILabel label;
  std::string_view rest;
};
std::optional<TitledLine> titledLine(std::string_view line, const AITitles& titles);

// The sections in answer order. A "⚠️ " message comes back whole as one untitled section, never
// parsed; an answer without any known title is one untitled section. Empty sections are dropped.
std::vector<AnswerSection> parseSections(std::string_view answer, const AITitles& titles);

}  // namespace vesko
