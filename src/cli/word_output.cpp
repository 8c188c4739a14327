#include "cli/word_output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "app/bubble_content.h"
#include "cli/zh_output.h"
#include "dict/pinyin.h"

namespace vesko::cli {
namespace {

nlohmann::json orNull(const std::optional<std::string>& value) {
  return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
}

// Colour only for a terminal that shows it, and never against the learner's NO_COLOR.
bool colourOn() {
  if (!isatty(STDOUT_FILENO) || std::getenv("NO_COLOR")) return false;
  const char* term = std::getenv("TERM");
  return term && std::string_view(term) != "dumb";
}

std::string colouredPinyin(std::string_view numbered, bool colour) {
  if (!colour) return Pinyin::marked(numbered);
  std::string out;
  for (const auto& syllable : pinyinReading(numbered).syllables) {
    if (!out.empty()) out += ' ';
    if (!syllable.color) {
      out += syllable.text;
      continue;
    }
    const Rgb& rgb = *syllable.color;
    auto byte = [](double v) { return static_cast<int>(std::clamp(v, 0.0, 1.0) * 255.0 + 0.5); };
    out += fmt::format("\x1b[38;2;{};{};{}m{}\x1b[0m", byte(rgb.red), byte(rgb.green),
                       byte(rgb.blue), syllable.text);
  }
  return out;
}

std::string highlighted(const std::string& sentence, const std::string& word, bool colour) {
  const auto range = findWordInSentence(sentence, word);
  if (!range) return sentence;
  const std::string_view s = sentence;
  const std::string_view before = s.substr(0, range->begin);
  const std::string_view found = s.substr(range->begin, range->end - range->begin);
  const std::string_view after = s.substr(range->end);
  if (colour) return fmt::format("{}\x1b[1;4m{}\x1b[0m{}", before, found, after);
  return fmt::format("{}[{}]{}", before, found, after);
}

std::string joined(const std::vector<std::string>& defs) {
  std::string out;
  for (const auto& def : defs) out += (out.empty() ? "" : "; ") + def;
  return out;
}

}  // namespace

std::expected<Snapshot, Failure> snapshotOf(const std::vector<std::string>& langs,
                                            const std::string& prefLatin,
                                            const std::string& prefHan, bool conj) {
  Snapshot snapshot;
  for (const auto& code : langs) {
    auto language = languageFromCode(code);
    if (!language)
      return std::unexpected(
          Failure{fmt::format("unknown language \"{}\" (zh ja th fr en ru pl)", code)});
    switch (*language) {
      case Language::zh:
        snapshot.zh = true;
        break;
      case Language::ja:
        snapshot.ja = true;
        break;
      case Language::th:
        snapshot.th = true;
        break;
      case Language::fr:
        snapshot.fr = true;
        break;
      case Language::en:
        snapshot.en = true;
        break;
      case Language::ru:
        snapshot.ru = true;
        break;
      case Language::pl:
        snapshot.pl = true;
        break;
    }
  }
  if (prefLatin != "fr" && prefLatin != "en")
    return std::unexpected(
        Failure{fmt::format("the Latin preference must be fr or en, not \"{}\"", prefLatin)});
  if (prefHan != "zh" && prefHan != "ja")
    return std::unexpected(
        Failure{fmt::format("the Han preference must be zh or ja, not \"{}\"", prefHan)});
  snapshot.prefLatin = prefLatin;
  snapshot.prefHan = prefHan;
  snapshot.conj = conj;
  return snapshot;
}

std::vector<std::string> splitCodes(std::string_view list) {
  std::vector<std::string> codes;
  while (!list.empty()) {
    auto comma = list.find(',');
    std::string_view code = list.substr(0, comma);
    while (!code.empty() && code.front() == ' ') code.remove_prefix(1);
    while (!code.empty() && code.back() == ' ') code.remove_suffix(1);
    if (!code.empty()) codes.emplace_back(code);
    list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
  }
  return codes;
}

std::vector<std::string> studiedCodes(const Settings& settings) {
  constexpr int kNotStudied = 2;
  std::vector<std::string> codes;
  for (const auto& code : kAllLanguages)
    if (settings.integer("mode." + code) != kNotStudied) codes.push_back(code);
  return codes;
}

std::expected<Snapshot, Failure> snapshotFor(const std::string& langsOption,
                                             const Settings& settings) {
  return snapshotOf(langsOption.empty() ? studiedCodes(settings) : splitCodes(langsOption),
                    settings.text("prefLatin"), settings.text("prefHan"), settings.flag("conj"));
}

nlohmann::json resultJson(const std::optional<HoverResult>& result,
                          const SkippedLanguage& skipped) {
  if (!result) {
    auto language = skipped.get();
    return {
        {"kind", "none"},
        {"skipped", language ? nlohmann::json(languageCode(*language)) : nlohmann::json(nullptr)}};
  }
  if (const auto* hit = result->chinese()) {
    nlohmann::json entries = nlohmann::json::array();
    for (const auto& entry : hit->entries) entries.push_back(entryJson(entry));
    return {{"kind", "chinese"},
            {"word", hit->word},
            {"start", hit->start},
            {"entries", std::move(entries)},
            {"sentence", hit->sentence}};
  }
  const auto& word = *result->word();
  nlohmann::json entries = nlohmann::json::array();
  for (const auto& entry : word.entries)
    entries.push_back(
        {{"headword", entry.headword}, {"reading", entry.reading}, {"defs", entry.defs}});
  std::optional<std::string> base, note;
  if (word.base) {
    base = word.base->word;
    if (!word.base->note.empty()) note = word.base->note;
  }
  return {{"kind", "word"},
          {"word", word.word},
          {"lang", languageCode(word.language)},
          {"start", word.start},
          {"base", orNull(base)},
          {"note", orNull(note)},
          {"elided", orNull(word.elided)},
          {"entries", std::move(entries)},
          {"sentence", word.sentence}};
}

std::string resultCard(const std::optional<HoverResult>& result, const SkippedLanguage& skipped) {
  const bool colour = colourOn();
  if (!result) {
    auto language = skipped.get();
    if (language)
      return fmt::format("nothing to read: the word is {} and that language is not studied\n",
                         languageCode(*language));
    return "nothing to read at that index\n";
  }
  std::string out;
  if (const auto* hit = result->chinese()) {
    out += hit->word + "  (zh)\n";
    for (const auto& entry : hit->entries) {
      std::string headwords = entry.simp;
      if (entry.trad != entry.simp) headwords += " (" + entry.trad + ")";
      out += "  " + headwords + "  " + colouredPinyin(entry.pinyin, colour) + "  " +
             joined(entry.defs) + "\n";
    }
    out += "  " + highlighted(hit->sentence, hit->word, colour) + "\n";
    return out;
  }
  const auto& word = *result->word();
  out += word.word + "  (" + std::string(languageCode(word.language)) + ")";
  if (word.elided) out += "  elided: " + *word.elided;
  if (word.base) out += word.base->note.empty() ? "  → " + word.base->word : "  " + word.base->note;
  out += "\n";
  if (word.entries.empty()) out += "  (no dictionary entry)\n";
  for (const auto& entry : word.entries) {
    out += "  " + entry.headword;
    if (!entry.reading.empty()) out += "  " + entry.reading;
    out += "  " + joined(entry.defs) + "\n";
  }
  out += "  " + highlighted(word.sentence, word.word, colour) + "\n";
  return out;
}

}  // namespace vesko::cli
