#include "cli/zh_command.h"

#include <fmt/format.h>

#include <iostream>
#include <memory>
#include <string>

#include "cli/batch.h"
#include "cli/input.h"
#include "cli/zh_output.h"
#include "dict/pinyin.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

struct Options {
  bool json = false;
  bool batch = false;
  DictionaryFiles files;
  std::string text;
  std::string index;
  std::size_t limit = 50;
  std::string to;
};

void addCommon(CLI::App* command, Options& options) {
  command->add_flag("--json", options.json, "Write JSON");
  command->add_option("--cedict", options.files.cedict, "Dictionary file in the CC-CEDICT layout");
  command->add_option("--unihan", options.files.unihan, "Single-character supplement (TSV)");
}

void print(const nlohmann::json& value) { std::cout << dump(value) << '\n'; }

int lookup(const Options& options) {
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  const CEDict& dict = **dictionary;
  if (options.batch) {
    return runBatch([&](const nlohmann::json& request) -> std::expected<nlohmann::json, Failure> {
      auto word = stringField(request, "word");
      if (!word) return std::unexpected(word.error());
      return entriesJson(dict.lookup(*word));
    });
  }
  auto word = readText(options.text);
  if (!word) return fail(word.error());
  Entries entries = dict.lookup(*word);
  if (options.json) print(entriesJson(entries));
  else if (entries.empty()) std::cout << text::toUtf8(*word) << ": not in the dictionary\n";
  else std::cout << entriesText(entries);
  return 0;
}

int wordAt(const Options& options) {
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  const CEDict& dict = **dictionary;
  if (options.batch) {
    return runBatch([&](const nlohmann::json& request) -> std::expected<nlohmann::json, Failure> {
      auto text = stringField(request, "text");
      if (!text) return std::unexpected(text.error());
      auto index = integerField(request, "index");
      if (!index) return std::unexpected(index.error());
      return wordMatchJson(dict.wordAt(*text, *index));
    });
  }
  auto index = parseInteger(options.index, "--index");
  if (!index) return fail(index.error());
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  auto match = dict.wordAt(*text, static_cast<std::ptrdiff_t>(*index));
  if (options.json) {
    print(wordMatchJson(match));
  } else if (!match) {
    std::cout << "no dictionary word at index " << *index << '\n';
  } else {
    std::cout << text::toUtf8(match->word) << "  (from index " << match->start << ")\n"
              << entriesText(match->entries);
  }
  return 0;
}

int segment(const Options& options) {
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  auto pieces = (*dictionary)->segment(*text);
  if (options.json) {
    nlohmann::json out = nlohmann::json::array();
    for (auto piece : pieces) out.push_back(text::toUtf8(piece));
    print(out);
  } else {
    std::string line;
    for (auto piece : pieces) {
      if (!line.empty()) line += " / ";
      line += text::toUtf8(piece);
    }
    std::cout << line << '\n';
  }
  return 0;
}

int words(const Options& options) {
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  auto found = (*dictionary)->dictionaryWords(*text, options.limit);
  if (options.json) {
    nlohmann::json out = nlohmann::json::array();
    for (const auto& word : found)
      out.push_back({{"word", text::toUtf8(word.word)}, {"entries", entriesJson(word.entries)}});
    print(out);
  } else {
    std::cout << wordsText(found);
  }
  return 0;
}

int convert(const Options& options) {
  if (options.to != "traditional" && options.to != "simplified")
    return fail({fmt::format("--to must be traditional or simplified, not \"{}\"", options.to)});
  auto dictionary = loadDictionary(options.files);
  if (!dictionary) return fail(dictionary.error());
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  std::string converted = text::toUtf8((*dictionary)->convert(*text, options.to == "traditional"));
  if (options.json) print(converted);
  else std::cout << converted << '\n';
  return 0;
}

int pinyin(const Options& options) {
  auto text = readText(options.text);
  if (!text) return fail(text.error());
  const std::string numbered = text::toUtf8(*text);
  if (options.json) {
    print(pinyinJson(numbered));
  } else {
    std::string tones;
    for (int tone : Pinyin::tones(numbered)) tones += fmt::format("{}{}", tones.empty() ? "" : " ", tone);
    std::cout << Pinyin::marked(numbered) << "  (tones " << tones << ")\n";
  }
  return 0;
}

}  // namespace

void addZhCommands(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<Options>();
  CLI::App* zh = app.add_subcommand("zh", "Chinese dictionary: lookups, segmentation, pinyin");
  zh->require_subcommand(1);

  auto textArgument = [&](CLI::App* command, const char* help) {
    command->add_option("TEXT", options->text, help)->required();
  };

  CLI::App* lookupCommand = zh->add_subcommand("lookup", "Entries of exactly this word");
  addCommon(lookupCommand, *options);
  lookupCommand->add_flag("--batch", options->batch, "Read {\"word\"} JSON lines from stdin");
  lookupCommand->add_option("WORD", options->text, "The word, or - for standard input");
  lookupCommand->callback([options, &exitCode, lookupCommand] {
    if (!options->batch && lookupCommand->count("WORD") == 0) {
      exitCode = fail({"lookup needs a WORD (or --batch)"});
      return;
    }
    exitCode = lookup(*options);
  });

  CLI::App* wordAtCommand = zh->add_subcommand("word-at", "The dictionary word at a UTF-16 index");
  addCommon(wordAtCommand, *options);
  wordAtCommand->add_flag("--batch", options->batch, "Read {\"text\",\"index\"} JSON lines from stdin");
  wordAtCommand->add_option("--index", options->index, "UTF-16 index of the character");
  wordAtCommand->add_option("TEXT", options->text, "The text, or - for standard input");
  wordAtCommand->callback([options, &exitCode, wordAtCommand] {
    if (!options->batch &&
        (wordAtCommand->count("TEXT") == 0 || wordAtCommand->count("--index") == 0)) {
      exitCode = fail({"word-at needs --index N and a TEXT (or --batch)"});
      return;
    }
    exitCode = wordAt(*options);
  });

  CLI::App* segmentCommand = zh->add_subcommand("segment", "Cut a text into dictionary words");
  addCommon(segmentCommand, *options);
  textArgument(segmentCommand, "The text, or - for standard input");
  segmentCommand->callback([options, &exitCode] { exitCode = segment(*options); });

  CLI::App* wordsCommand = zh->add_subcommand("words", "The distinct dictionary words of a text");
  addCommon(wordsCommand, *options);
  wordsCommand->add_option("--limit", options->limit, "At most this many words (default 50)");
  textArgument(wordsCommand, "The text, or - for standard input");
  wordsCommand->callback([options, &exitCode] { exitCode = words(*options); });

  CLI::App* convertCommand = zh->add_subcommand("convert", "Simplified ↔ traditional, character by character");
  addCommon(convertCommand, *options);
  convertCommand->add_option("--to", options->to, "traditional or simplified")->required();
  textArgument(convertCommand, "The text, or - for standard input");
  convertCommand->callback([options, &exitCode] { exitCode = convert(*options); });

  CLI::App* pinyinCommand = zh->add_subcommand("pinyin", "Tone marks, tones and colours of numbered pinyin");
  pinyinCommand->add_flag("--json", options->json, "Write JSON");
  textArgument(pinyinCommand, "Numbered pinyin such as \"ni3 hao3\", or - for standard input");
  pinyinCommand->callback([options, &exitCode] { exitCode = pinyin(*options); });
}

}  // namespace vesko::cli
