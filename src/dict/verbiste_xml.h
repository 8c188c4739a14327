#pragma once
// Reading Verbiste's French data: verbs-fr.xml names each verb's conjugation template, and
// conjugation-fr.xml gives each template's endings per tense and person. A template's name shows
// where its verbs are cut: "aim:er" is the stem "aim" then the ending "er", so "finir" with
// "fin:ir" conjugates as "fin" + the template's endings.
// Plain functions over the XML text (pugixml); no state. Elements that do not fit are skipped.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vesko {

// clang-format off
enum class FrenchTense : uint8_t {
  infinitive, indicativePresent, indicativeImperfect, indicativeFuture, indicativeSimplePast,
  conditionalPresent, subjunctivePresent, subjunctiveImperfect, imperativePresent,
  presentParticiple, pastParticiple,
};
// clang-format on
inline constexpr std::size_t kFrenchTenses = 11;

struct FrenchVerb {
  std::string infinitive;
  std::string templateName;  // "aim:er"
};

struct TemplateEnding {
  FrenchTense tense;
  std::string ending;  // may be empty ("ce" → "ce" for "pla:cer" gives "place"…)
};

struct ConjugationTemplate {
  std::string name;
  std::vector<TemplateEnding> endings;  // every person's every variant, in document order
};

// Nothing when the text is not well-formed XML with the expected root element.
std::optional<std::vector<FrenchVerb>> parseVerbisteVerbs(std::string_view xml);
std::optional<std::vector<ConjugationTemplate>> parseVerbisteTemplates(std::string_view xml);

// The stem of `infinitive` under `templateName`: the infinitive without the ending after the
// colon. Nothing when the template has no colon or the infinitive does not end that way.
std::optional<std::string_view> verbisteStem(std::string_view infinitive,
                                             std::string_view templateName);

}  // namespace vesko
