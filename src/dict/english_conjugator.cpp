#include "dict/english_conjugator.h"

#include <array>
#include <string>

#include "dict/lowercase.h"

namespace vesko {
namespace {

// What a form was read as; each has its note.
enum class FormKind { plural, verbForm, thirdPerson, past, gerund, comparative, superlative, irregular };

// clang-format off
struct NoteText { FormKind kind; std::string_view before; };
constexpr std::array<NoteText, 8> kNotes = {{
    {FormKind::plural,      "pluriel de « "},
    {FormKind::verbForm,    "forme conjuguée de « "},
    {FormKind::thirdPerson, "3e personne du singulier de « "},
    {FormKind::past,        "passé ou participe passé de « "},
    {FormKind::gerund,      "participe présent ou gérondif de « "},
    {FormKind::comparative, "comparatif de « "},
    {FormKind::superlative, "superlatif de « "},
    {FormKind::irregular,   "forme irrégulière de « "},
}};

// WordNet's detachment rules (morphy): an ending, what replaces it, and what the form then is.
struct Detachment { PartOfSpeech pos; std::string_view ending; std::string_view replacement; FormKind kind; };
constexpr std::array<Detachment, 20> kDetachments = {{
    {PartOfSpeech::verb,      "ies",  "y",  FormKind::thirdPerson},
    {PartOfSpeech::verb,      "es",   "e",  FormKind::thirdPerson},
    {PartOfSpeech::verb,      "es",   "",   FormKind::thirdPerson},
    {PartOfSpeech::verb,      "s",    "",   FormKind::thirdPerson},
    {PartOfSpeech::verb,      "ed",   "e",  FormKind::past},
    {PartOfSpeech::verb,      "ed",   "",   FormKind::past},
    {PartOfSpeech::verb,      "ing",  "e",  FormKind::gerund},
    {PartOfSpeech::verb,      "ing",  "",   FormKind::gerund},
    {PartOfSpeech::noun,      "ses",  "s",  FormKind::plural},
    {PartOfSpeech::noun,      "xes",  "x",  FormKind::plural},
    {PartOfSpeech::noun,      "zes",  "z",  FormKind::plural},
    {PartOfSpeech::noun,      "ches", "ch", FormKind::plural},
    {PartOfSpeech::noun,      "shes", "sh", FormKind::plural},
    {PartOfSpeech::noun,      "men",  "man", FormKind::plural},
    {PartOfSpeech::noun,      "ies",  "y",  FormKind::plural},
    {PartOfSpeech::noun,      "s",    "",   FormKind::plural},
    {PartOfSpeech::adjective, "est",  "",   FormKind::superlative},
    {PartOfSpeech::adjective, "est",  "e",  FormKind::superlative},
    {PartOfSpeech::adjective, "er",   "",   FormKind::comparative},
    {PartOfSpeech::adjective, "er",   "e",  FormKind::comparative},
}};

// Verbs first: "leaves" is read as "leave" before "leaf", "has" as "have" before "ha".
constexpr std::array<PartOfSpeech, 4> kOrder = {
    PartOfSpeech::verb, PartOfSpeech::noun, PartOfSpeech::adjective, PartOfSpeech::adverb};
// clang-format on

std::string note(FormKind kind, std::string_view base) {
  for (const auto& n : kNotes) {
    if (n.kind == kind) return std::string(n.before) + std::string(base) + " »";
  }
  return {};
}

FormKind irregularKind(PartOfSpeech pos, std::string_view form) {
  switch (pos) {
    case PartOfSpeech::noun:
      return FormKind::plural;
    case PartOfSpeech::adjective:
    case PartOfSpeech::adverb:
      // "better", "best", "worse", "worst", "farther": the ending tells which degree.
      if (form.ends_with("st")) return FormKind::superlative;
      if (form.ends_with("er") || form == "worse" || form == "less" || form == "more")
        return FormKind::comparative;
      return FormKind::irregular;
    case PartOfSpeech::verb:
      return FormKind::verbForm;
  }
  return FormKind::irregular;
}

bool isConsonant(char c) {
  return c >= 'a' && c <= 'z' && c != 'a' && c != 'e' && c != 'i' && c != 'o' && c != 'u';
}

}  // namespace

std::optional<BaseForm> EnglishConjugator::baseForm(std::string_view word) const {
  const std::string lower = lowercased(word);
  if (lower.empty()) return std::nullopt;

  for (PartOfSpeech pos : kOrder) {
    for (const auto& base : wordnet_.exceptions(lower, pos)) {
      if (base != lower && wordnet_.hasLemma(base, pos))
        return BaseForm{base, note(irregularKind(pos, lower), base)};
    }
  }
  for (PartOfSpeech pos : kOrder) {
    // A form that is a lemma of this part of speech is read as itself: "glasses", "us" (US).
    if (wordnet_.hasLemma(lower, pos)) continue;
    for (const auto& rule : kDetachments) {
      // "men" → "man" leaves no stem but a base; "s" → "" leaves nothing.
      if (rule.pos != pos || !lower.ends_with(rule.ending) ||
          lower.size() - rule.ending.size() + rule.replacement.size() == 0)
        continue;
      const std::string stem = lower.substr(0, lower.size() - rule.ending.size());
      std::string base = stem + std::string(rule.replacement);
      if (wordnet_.hasLemma(base, pos)) return BaseForm{base, note(rule.kind, base)};
      // "running", "stopped", "bigger": the consonant doubled before the ending goes too.
      if (rule.replacement.empty() && stem.size() >= 3 && stem.back() == stem[stem.size() - 2] &&
          isConsonant(stem.back())) {
        base = stem.substr(0, stem.size() - 1);
        if (wordnet_.hasLemma(base, pos)) return BaseForm{base, note(rule.kind, base)};
      }
    }
  }
  return std::nullopt;
}

}  // namespace vesko
