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
#include "cli/word_output.h"
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
    std::cout << resultCard(result, skipped);
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
