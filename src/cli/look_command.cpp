#include "cli/look_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "app/installed_language_data.h"
#include "app/language_data.h"
#include "app/sentence.h"
#include "app/word_chooser.h"
#include "cli/batch.h"
#include "cli/input.h"
#include "cli/zh_output.h"
#include "dict/pinyin.h"
#include "settings/resources.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

// The dictionaries of the languages other than Chinese (which has the CEDict), from the
// installed resources; each loads the first time a word of its language is looked up.
std::unique_ptr<LanguageData> languageData() {
  return std::make_unique<InstalledLanguageData>(Resources::folder());
}

struct Options {
  bool json = false;
  bool batch = false;
  bool noConj = false;
  DictionaryFiles files;
  std::string langs;
  std::string prefLatin = "fr";
  std::string prefHan = "zh";
  std::string text;
  std::string index;
};

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

const std::vector<std::string> kAllLanguages = {"zh", "ja", "th", "fr", "en", "ru", "pl"};

nlohmann::json orNull(const std::optional<std::string>& value) {
  return value ? nlohmann::json(*value) : nlohmann::json(nullptr);
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

// Colour only for a terminal that shows it, and never against the learner's NO_COLOR.
bool colourOn() {
  if (!isatty(STDOUT_FILENO) || std::getenv("NO_COLOR")) return false;
  const char* term = std::getenv("TERM");
  return term && std::string_view(term) != "dumb";
}

std::string colouredPinyin(std::string_view numbered, bool colour) {
  if (!colour) return Pinyin::marked(numbered);
  std::string out;
  std::istringstream words{std::string(numbered)};
  std::string syllable;
  while (words >> syllable) {
    if (!out.empty()) out += ' ';
    auto tones = Pinyin::tones(syllable);
    auto rgb = tones.empty() ? std::nullopt : Pinyin::toneColor(tones.front());
    if (!rgb) {
      out += Pinyin::marked(syllable);
      continue;
    }
    auto byte = [](double v) { return static_cast<int>(std::clamp(v, 0.0, 1.0) * 255.0 + 0.5); };
    out += fmt::format("\x1b[38;2;{};{};{}m{}\x1b[0m", byte(rgb->red), byte(rgb->green),
                       byte(rgb->blue), Pinyin::marked(syllable));
  }
  return out;
}

std::string highlighted(const std::string& sentence, const std::string& word, bool colour) {
  auto sentence16 = text::fromUtf8(sentence).value_or(u"");
  auto word16 = text::fromUtf8(word).value_or(u"");
  std::size_t at = findCaseless(sentence16, word16);
  if (at == std::u16string::npos) return sentence;
  std::u16string_view s = sentence16;
  const std::string before = text::toUtf8(s.substr(0, at));
  const std::string found = text::toUtf8(s.substr(at, word16.size()));
  const std::string after = text::toUtf8(s.substr(at + word16.size()));
  if (colour) return before + "\x1b[1;4m" + found + "\x1b[0m" + after;
  return before + "[" + found + "]" + after;
}

std::string joined(const std::vector<std::string>& defs) {
  std::string out;
  for (const auto& def : defs) out += (out.empty() ? "" : "; ") + def;
  return out;
}

std::string card(const std::optional<HoverResult>& result, const SkippedLanguage& skipped) {
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

std::expected<std::vector<std::string>, Failure> requestLangs(const nlohmann::json& request) {
  auto it = request.find("langs");
  if (it == request.end()) return kAllLanguages;
  if (it->is_string()) return splitCodes(it->get_ref<const std::string&>());
  if (it->is_array()) {
    std::vector<std::string> codes;
    for (const auto& code : *it) {
      if (!code.is_string()) return std::unexpected(Failure{"\"langs\" must hold language codes"});
      codes.push_back(code.get<std::string>());
    }
    return codes;
  }
  return std::unexpected(Failure{"\"langs\" must be a string or a list of language codes"});
}

std::expected<std::string, Failure> requestString(const nlohmann::json& request, const char* name,
                                                  const std::string& fallback) {
  auto it = request.find(name);
  if (it == request.end()) return fallback;
  if (!it->is_string())
    return std::unexpected(Failure{fmt::format("\"{}\" must be a string", name)});
  return it->get<std::string>();
}

int look(const Options& options) {
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  auto data = languageData();
  SkippedLanguage skipped;
  WordChooser chooser(**dictionary, *data, skipped);
  auto read = [&](std::u16string_view text, std::ptrdiff_t index, const Snapshot& snapshot) {
    skipped.clear();
    return chooser.read(text, index, snapshot);
  };

  if (options.batch) {
    return runBatch([&](const nlohmann::json& request) -> std::expected<nlohmann::json, Failure> {
      auto text = stringField(request, "text");
      if (!text) return std::unexpected(text.error());
      auto index = integerField(request, "index");
      if (!index) return std::unexpected(index.error());
      auto langs = requestLangs(request);
      if (!langs) return std::unexpected(langs.error());
      auto prefLatin = requestString(request, "prefLatin", options.prefLatin);
      if (!prefLatin) return std::unexpected(prefLatin.error());
      auto prefHan = requestString(request, "prefHan", options.prefHan);
      if (!prefHan) return std::unexpected(prefHan.error());
      auto snapshot = snapshotOf(*langs, *prefLatin, *prefHan, !options.noConj);
      if (!snapshot) return std::unexpected(snapshot.error());
      return resultJson(read(*text, *index, *snapshot), skipped);
    });
  }
  auto index = parseInteger(options.index, "--index");
  if (!index) return fail(index.error());
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  auto snapshot = snapshotOf(options.langs.empty() ? kAllLanguages : splitCodes(options.langs),
                             options.prefLatin, options.prefHan, !options.noConj);
  if (!snapshot) return fail(snapshot.error());
  auto result = read(*text, static_cast<std::ptrdiff_t>(*index), *snapshot);
  if (options.json)
    std::cout << dump(resultJson(result, skipped)) << '\n';
  else
    std::cout << card(result, skipped);
  return 0;
}

}  // namespace

void addLookCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* command =
      app.add_subcommand("look", "The word at a UTF-16 index, in any studied language");
  command->add_flag("--json", options->json, "Write JSON");
  command->add_flag("--batch", options->batch,
                    "Read {\"text\",\"index\"} JSON lines from stdin (optionally \"langs\", "
                    "\"prefLatin\", \"prefHan\")");
  command->add_option("--langs", options->langs,
                      "Studied languages, e.g. zh,ja,th,fr,en,ru,pl (default: all)");
  command->add_option("--pref-latin", options->prefLatin,
                      "fr or en: wins a Latin word when both are studied");
  command->add_option("--pref-han", options->prefHan,
                      "zh or ja: wins Han-only text when both are studied");
  command->add_flag("--no-conj", options->noConj, "Do not show conjugation");
  command->add_option("--cedict", options->files.cedict, "Dictionary file in the CC-CEDICT layout");
  command->add_option("--unihan", options->files.unihan, "Single-character supplement (TSV)");
  command->add_option("--index", options->index, "UTF-16 index of the character under the pointer");
  command->add_option("TEXT", options->text, "The text, or - for standard input");
  command->callback([options, &exitCode, command] {
    if (!options->batch && (command->count("TEXT") == 0 || command->count("--index") == 0)) {
      exitCode = fail({"look needs --index N and a TEXT (or --batch)"});
      return;
    }
    exitCode = look(*options);
  });
}

}  // namespace vesko::cli
