#pragma once
// The titled sections of an AI answer and their titles in one answer language. The French title
// is the key into the interface-text tables, which give the title the model is told to write and
// the parser looks for. `AITitles` is a plain value, built once per question; any thread.

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vesko {

class Loc;

enum class AILabel {
  structure,
  expression,
  terms,
  origin,
  grammar,
  nuance,
  literal,
  meaning,
  characters,
  family,
  here,
  example,
  phrase,
  word,
  parts,
};

struct AILabelRow {
  AILabel label;
  std::string_view name;    // in JSON output: "structure", "literal", …
  std::string_view french;  // the title in French, key of the interface-text tables
};

// clang-format off
inline constexpr std::array<AILabelRow, 15> kAILabels{{
  {AILabel::structure,  "structure",  "Structure"},
  {AILabel::expression, "expression", "Expression"},
  {AILabel::terms,      "terms",      "Termes"},
  {AILabel::origin,     "origin",     "Origine"},
  {AILabel::grammar,    "grammar",    "Grammaire"},
  {AILabel::nuance,     "nuance",     "Nuance"},
  {AILabel::literal,    "literal",    "Sens littéral"},
  {AILabel::meaning,    "meaning",    "Sens"},
  {AILabel::characters, "characters", "Caractères"},
  {AILabel::family,     "family",     "Famille"},
  {AILabel::here,       "here",       "Ici"},
  {AILabel::example,    "example",    "Exemple"},
  {AILabel::phrase,     "phrase",     "Phrase"},
  {AILabel::word,       "word",       "Mot"},
  {AILabel::parts,      "parts",      "Morceaux"},
}};
// clang-format on

inline const AILabelRow& aiLabelRow(AILabel label) {
  return kAILabels[static_cast<std::size_t>(label)];
}

// The fifteen titles in one answer language.
class AITitles {
 public:
  AITitles(const Loc& loc, std::string_view answerLanguage);

  const std::string& operator[](AILabel label) const {
    return titles_[static_cast<std::size_t>(label)];
  }
  // The label whose title is `title`, compared without regard to ASCII case ("sens" is Sens).
  std::optional<AILabel> labelTitled(std::string_view title) const;

 private:
  std::array<std::string, kAILabels.size()> titles_;
};

}  // namespace vesko
