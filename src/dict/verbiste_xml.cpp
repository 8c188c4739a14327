#include "dict/verbiste_xml.h"

#include <pugixml.hpp>

#include <array>

namespace vesko {
namespace {

// Where each tense sits in a template: mood element, then tense element.
struct TensePath {
  const char* mood;
  const char* tense;
  FrenchTense code;
};
// clang-format off
constexpr std::array<TensePath, kFrenchTenses> kTensePaths = {{
    {"infinitive",  "infinitive-present", FrenchTense::infinitive},
    {"indicative",  "present",            FrenchTense::indicativePresent},
    {"indicative",  "imperfect",          FrenchTense::indicativeImperfect},
    {"indicative",  "future",             FrenchTense::indicativeFuture},
    {"indicative",  "simple-past",        FrenchTense::indicativeSimplePast},
    {"conditional", "present",            FrenchTense::conditionalPresent},
    {"subjunctive", "present",            FrenchTense::subjunctivePresent},
    {"subjunctive", "imperfect",          FrenchTense::subjunctiveImperfect},
    {"imperative",  "imperative-present", FrenchTense::imperativePresent},
    {"participle",  "present-participle", FrenchTense::presentParticiple},
    {"participle",  "past-participle",    FrenchTense::pastParticiple},
}};
// clang-format on

std::optional<pugi::xml_document> parse(std::string_view xml) {
  pugi::xml_document doc;
  // The files declare their structure in an internal DOCTYPE; pugixml skips it.
  const auto result = doc.load_buffer(xml.data(), xml.size(), pugi::parse_default,
                                      pugi::encoding_utf8);
  if (!result) return std::nullopt;
  return doc;
}

std::string trimmed(const char* text) {
  std::string_view s(text);
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t' || s.front() == '\n' || s.front() == '\r'))
    s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\n' || s.back() == '\r'))
    s.remove_suffix(1);
  return std::string(s);
}

}  // namespace

std::optional<std::vector<FrenchVerb>> parseVerbisteVerbs(std::string_view xml) {
  auto doc = parse(xml);
  if (!doc) return std::nullopt;
  const auto root = doc->child("verbs-fr");
  if (!root) return std::nullopt;
  std::vector<FrenchVerb> verbs;
  for (const auto& v : root.children("v")) {
    FrenchVerb verb{trimmed(v.child("i").text().get()), trimmed(v.child("t").text().get())};
    if (verb.infinitive.empty() || verb.templateName.empty()) continue;
    verbs.push_back(std::move(verb));
  }
  return verbs;
}

std::optional<std::vector<ConjugationTemplate>> parseVerbisteTemplates(std::string_view xml) {
  auto doc = parse(xml);
  if (!doc) return std::nullopt;
  const auto root = doc->child("conjugation-fr");
  if (!root) return std::nullopt;
  std::vector<ConjugationTemplate> templates;
  for (const auto& t : root.children("template")) {
    ConjugationTemplate result{trimmed(t.attribute("name").value()), {}};
    if (result.name.empty()) continue;
    for (const auto& path : kTensePaths) {
      for (const auto& p : t.child(path.mood).child(path.tense).children("p")) {
        // An empty <p> is a person the verb lacks ("il faut" has no "je"); several <i> are
        // variants ("je paye", "je paie").
        for (const auto& i : p.children("i")) {
          result.endings.push_back({path.code, trimmed(i.text().get())});
        }
      }
    }
    templates.push_back(std::move(result));
  }
  return templates;
}

std::optional<std::string_view> verbisteStem(std::string_view infinitive,
                                             std::string_view templateName) {
  const auto colon = templateName.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  const std::string_view ending = templateName.substr(colon + 1);
  if (!infinitive.ends_with(ending)) return std::nullopt;
  return infinitive.substr(0, infinitive.size() - ending.size());
}

}  // namespace vesko
