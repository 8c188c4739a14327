#include "dict/french_conjugator.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <tuple>
#include <unordered_map>

#include "dict/lowercase.h"
#include "dict/verbiste_xml.h"

namespace vesko {
namespace {

// clang-format off
// The note's name of each tense, in the order FrenchTense lists them.
constexpr std::array<std::string_view, kFrenchTenses> kTenseNames = {
    "infinitif",
    "indicatif présent",
    "indicatif imparfait",
    "indicatif futur",
    "indicatif passé simple",
    "conditionnel présent",
    "subjonctif présent",
    "subjonctif imparfait",
    "impératif présent",
    "participe présent",
    "participe passé",
};

// When a form belongs to several verbs, these win: "suis" is read as "être" before "suivre",
// "vis" as "voir" before "vivre".
constexpr std::array<std::string_view, 16> kCommonVerbs = {
    "être", "avoir", "aller", "faire", "pouvoir", "vouloir", "devoir", "savoir",
    "venir", "dire", "voir", "prendre", "mettre", "falloir", "croire", "tenir",
};
// clang-format on

std::optional<std::string> readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream out;
  out << in.rdbuf();
  return std::move(out).str();
}

std::string tenseList(uint16_t tenses) {
  std::vector<std::string_view> names;
  for (std::size_t t = 1; t < kFrenchTenses; ++t) {
    if (tenses & (1u << t)) names.push_back(kTenseNames[t]);
  }
  std::string out;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) out += i + 1 == names.size() ? " ou " : ", ";
    out += names[i];
  }
  return out;
}

}  // namespace

FrenchConjugator::FrenchConjugator(std::filesystem::path verbs, std::filesystem::path conjugation)
    : verbsPath_(std::move(verbs)), conjugationPath_(std::move(conjugation)),
      table_([this] { return build(verbsPath_, conjugationPath_); }) {}

FrenchConjugator::Table FrenchConjugator::build(const std::filesystem::path& verbsPath,
                                                const std::filesystem::path& conjugationPath) {
  Table table;
  const auto verbsXml = readFile(verbsPath);
  const auto conjugationXml = readFile(conjugationPath);
  if (!verbsXml || !conjugationXml) {
    table.error = "cannot read " + (verbsXml ? conjugationPath : verbsPath).string();
    return table;
  }
  auto verbs = parseVerbisteVerbs(*verbsXml);
  auto templates = parseVerbisteTemplates(*conjugationXml);
  if (!verbs || !templates) {
    table.error = "not Verbiste's XML: " + (verbs ? conjugationPath : verbsPath).string();
    return table;
  }

  std::unordered_map<std::string_view, const ConjugationTemplate*> byName;
  for (const auto& t : *templates) byName.emplace(t.name, &t);

  std::vector<std::string> infinitives;
  for (const auto& v : *verbs) infinitives.push_back(v.infinitive);
  table.verbs = WordList(std::move(infinitives));
  // Sixteen bits of verb index: Verbiste has seven thousand verbs.
  if (table.verbs.size() > UINT16_MAX) {
    table.error = "too many verbs in " + verbsPath.string();
    return table;
  }
  table.verbRank.assign(table.verbs.size(), 1);
  for (auto common : kCommonVerbs) {
    const auto at = table.verbs.indexOf(common);
    if (at >= 0) table.verbRank[static_cast<std::size_t>(at)] = 0;
  }

  struct Generated {
    std::string form;
    uint16_t verb;
    uint16_t tenses;
  };
  std::vector<Generated> generated;
  for (const auto& v : *verbs) {
    const auto found = byName.find(v.templateName);
    const auto stem = verbisteStem(v.infinitive, v.templateName);
    if (found == byName.end() || !stem) continue;  // a verb whose template is missing or odd
    const auto verb = static_cast<uint16_t>(table.verbs.indexOf(v.infinitive));
    for (const auto& e : found->second->endings) {
      if (e.tense == FrenchTense::infinitive) continue;
      std::string form = std::string(*stem) + e.ending;
      if (form.empty() || form == v.infinitive) continue;
      generated.push_back({std::move(form), verb, static_cast<uint16_t>(1u << static_cast<unsigned>(e.tense))});
    }
  }
  std::sort(generated.begin(), generated.end(), [](const Generated& a, const Generated& b) {
    return std::tie(a.form, a.verb) < std::tie(b.form, b.verb);
  });

  std::vector<std::string> forms;
  for (std::size_t i = 0; i < generated.size();) {
    forms.push_back(generated[i].form);
    table.analysisStart.push_back(static_cast<uint32_t>(table.analyses.size()));
    std::size_t j = i;
    while (j < generated.size() && generated[j].form == generated[i].form) {
      Analysis a{generated[j].verb, 0};
      while (j < generated.size() && generated[j].form == generated[i].form &&
             generated[j].verb == a.verb) {
        a.tenses |= generated[j].tenses;
        ++j;
      }
      table.analyses.push_back(a);
    }
    i = j;
  }
  table.analysisStart.push_back(static_cast<uint32_t>(table.analyses.size()));
  // The forms were taken in sorted order and are distinct, so WordList keeps their order and
  // form i's analyses stay at analysisStart[i].
  table.forms = WordList(std::move(forms));
  table.analysisStart.shrink_to_fit();
  table.analyses.shrink_to_fit();
  return table;
}

std::optional<std::string> FrenchConjugator::loadError() const {
  const auto& t = table_.get();
  if (t.error.empty()) return std::nullopt;
  return t.error;
}

std::size_t FrenchConjugator::tableBytes() const {
  const auto& t = table_.get();
  return t.verbs.bytes() + t.forms.bytes() + t.verbRank.capacity() * sizeof(uint16_t) +
         t.analysisStart.capacity() * sizeof(uint32_t) + t.analyses.capacity() * sizeof(Analysis);
}

std::optional<BaseForm> FrenchConjugator::baseForm(std::string_view word) const {
  const auto& t = table_.get();
  if (!t.error.empty()) return std::nullopt;
  const std::string lower = lowercased(word);
  if (lower.empty() || t.verbs.contains(lower)) return std::nullopt;
  const auto at = t.forms.indexOf(lower);
  if (at < 0) return std::nullopt;
  const auto index = static_cast<std::size_t>(at);
  std::vector<Analysis> analyses(t.analyses.begin() + t.analysisStart[index],
                                 t.analyses.begin() + t.analysisStart[index + 1]);
  // Common verbs first, then alphabetical (the table's order), for a stable choice.
  std::stable_sort(analyses.begin(), analyses.end(), [&](const Analysis& a, const Analysis& b) {
    return t.verbRank[a.verb] < t.verbRank[b.verb];
  });
  const std::string infinitive(t.verbs.at(analyses[0].verb));
  std::string note = tenseList(analyses[0].tenses) + " de « " + infinitive + " »";
  for (std::size_t i = 1; i < analyses.size(); ++i) {
    note += i == 1 ? " (aussi de « " : ", de « ";
    note += t.verbs.at(analyses[i].verb);
    note += " »";
    if (i + 1 == analyses.size()) note += ")";
  }
  return BaseForm{infinitive, note};
}

}  // namespace vesko
