#include "cli/learn_command.h"

#include <fmt/format.h>

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "cli/open_store.h"
#include "cli/zh_output.h"
#include "dict/cedict.h"
#include "learn/anki_sync.h"
#include "learn/saved_word_json.h"
#include "learn/word_export.h"
#include "learn/word_store.h"
#include "settings/data_safety.h"
#include "settings/environment.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

int fail(const std::string& message) {
  std::cerr << "vesko: " << message << '\n';
  return 2;
}

void print(const json& value) {
  std::cout << dump(value) << '\n';
}

json recordJson(const SavedWord& word) {
  return json::parse(encodeWord(word, false));
}

json notKept(const std::string& word, const std::string& lang) {
  return {{"word", word}, {"lang", lang}, {"kept", false}};
}

std::string times(long long count) {
  return count == 1 ? "once" : fmt::format("{} times", count);
}

struct WordOptions {
  std::string word;
  std::string lang;
  std::string context;
  std::string reading;
  std::string definition;
  std::string source;
  std::string app;
  bool json = false;
};

CLI::App* wordCommand(CLI::App& app, const char* name, const char* about, WordOptions& options) {
  auto* command = app.add_subcommand(name, about);
  command->add_option("WORD", options.word, "The word as written")->required();
  command->add_option("--lang", options.lang, "Language code: zh, ja, th, fr, en, ru, pl")
      ->required();
  command->add_flag("--json", options.json, "Write JSON");
  return command;
}

bool validWord(const WordOptions& options, int& exitCode) {
  if (options.word.empty()) {
    exitCode = fail("the word is empty");
    return false;
  }
  if (options.lang.empty() || options.lang.find_first_of(" \t\n") != std::string::npos) {
    exitCode = fail(fmt::format("'{}' is not a language code", options.lang));
    return false;
  }
  return true;
}

struct ListOptions {
  bool json = false;
  std::string format;
  std::string file;
  std::string deck;
};

}  // namespace

void addLearnCommands(CLI::App& app, const Folders& folders, Settings& settings, const Clock& clock,
                      const ExitSignals& signals, int& exitCode) {
  auto wordOptions = std::make_shared<WordOptions>();
  auto listOptions = std::make_shared<ListOptions>();
  WordOptions& word = *wordOptions;
  ListOptions& list = *listOptions;

  auto* keep = wordCommand(app, "keep", "Keep a word, or keep it once more", word);
  keep->add_option("--context", word.context, "The sentence the word was met in");
  keep->add_option("--reading", word.reading, "Its reading (pinyin, kana…)");
  keep->add_option("--definition", word.definition, "Its definition");
  keep->add_option("--source", word.source, "Where it was met (document or page title)");
  keep->add_option("--app", word.app, "The application it was met in");
  keep->callback([&, wordOptions] {
    if (!validWord(word, exitCode)) return;
    OpenStore open(folders, settings, clock);
    SavedWord fresh;
    fresh.word = word.word;
    fresh.lang = word.lang;
    fresh.pinyin = word.reading;
    fresh.definition = word.definition;
    fresh.context = word.context;
    if (!word.source.empty()) fresh.source = word.source;
    if (!word.app.empty()) fresh.app = word.app;
    KeepResult kept = open.store().keep(std::move(fresh));
    if (open.saved(exitCode) != 0) return;
    if (word.json)
      print(recordJson(kept.word));
    else if (kept.added)
      std::cout << fmt::format("kept {} ({})\n", kept.word.word, kept.word.lang);
    else
      std::cout << fmt::format("kept {} ({}) again: {}\n", kept.word.word, kept.word.lang,
                               times(kept.word.hits.value_or(1)));
  });

  auto* unkeep = wordCommand(app, "unkeep", "Remove a kept word once (one keep less)", word);
  unkeep->callback([&, wordOptions] {
    if (!validWord(word, exitCode)) return;
    OpenStore open(folders, settings, clock);
    auto left = open.store().removeOnce(word.word, word.lang);
    if (open.saved(exitCode) != 0) return;
    if (word.json)
      print(left ? json{{"word", word.word}, {"lang", word.lang}, {"hits", *left}}
                 : notKept(word.word, word.lang));
    else if (!left)
      std::cout << fmt::format("{} ({}) is not kept\n", word.word, word.lang);
    else if (*left == 0)
      std::cout << fmt::format("{} ({}) removed\n", word.word, word.lang);
    else
      std::cout << fmt::format("{} ({}) still kept {}\n", word.word, word.lang, times(*left));
  });

  auto* seen = wordCommand(app, "seen", "Note that a kept word was met again", word);
  seen->callback([&, wordOptions] {
    if (!validWord(word, exitCode)) return;
    OpenStore open(folders, settings, clock);
    auto hits = open.store().markSeen(word.word, word.lang);
    // A command does not wait for the deferred save: it writes before it ends.
    open.store().flush();
    if (open.saved(exitCode) != 0) return;
    if (word.json) {
      print(hits ? json{{"word", word.word}, {"lang", word.lang}, {"hits", *hits}}
                 : notKept(word.word, word.lang));
    } else if (!hits) {
      std::cout << fmt::format("{} ({}) is not kept\n", word.word, word.lang);
    } else {
      auto record = open.store().lookup(word.word, word.lang);
      std::cout << fmt::format("{} ({}): seen {}, kept {}\n", word.word, word.lang,
                               times(record ? record->seen.value_or(0) : 0), times(*hits));
    }
  });

  auto* listCommand = app.add_subcommand("list", "The kept words, newest first");
  listCommand->add_flag("--json", list.json, "Write the list as mots.json stores it");
  listCommand->callback([&, listOptions] {
    OpenStore open(folders, settings, clock);
    const auto& words = open.store().words();
    if (list.json) {
      print(json::parse(encodeWords(words)));
      return;
    }
    for (const auto& saved : words) {
      std::string line = fmt::format("{} [{}]", saved.word, saved.lang);
      if (!saved.pinyin.empty()) line += "  " + saved.pinyin;
      if (!saved.definition.empty()) line += "  " + saved.definition;
      if (saved.hits.value_or(1) > 1) line += fmt::format("  ×{}", *saved.hits);
      std::cout << line << '\n';
    }
  });

  auto* exportCommand =
      app.add_subcommand("export", "Write the kept words as a file Anki imports as notes");
  exportCommand->add_option("--format", list.format, "csv or tsv")
      ->required()
      ->check(CLI::IsMember({"csv", "tsv"}));
  exportCommand->add_option("FILE", list.file, "The file to write (- for standard output)")
      ->required();
  exportCommand->callback([&, listOptions] {
    OpenStore open(folders, settings, clock);
    const auto& words = open.store().words();
    std::string text =
        exportWords(words, list.format == "tsv" ? ExportFormat::tsv : ExportFormat::csv);
    if (list.file == "-") {
      std::cout << text;
      return;
    }
    if (auto written = writeFileAtomically(list.file, text); !written) {
      exitCode = fail(fmt::format("cannot write {}: {}", list.file, written.error().message()));
      return;
    }
    std::cout << fmt::format("{} words written to {}\n", words.size(), list.file);
  });

  auto* anki = app.add_subcommand("anki", "Anki, through its AnkiConnect add-on");
  anki->require_subcommand(1);
  auto* sync = anki->add_subcommand(
      "sync", "Send the kept words Anki does not have yet as notes (type Basic)");
  sync->add_option("--deck", list.deck, "The deck (default: the ankiDeck setting, Vesko)");
  sync->add_flag("--json", list.json, "Write JSON");
  sync->callback([&, listOptions] {
    OpenStore open(folders, settings, clock);
    AnkiTarget target;
    target.url = settings.text("ankiConnectURL");
    target.deck = list.deck.empty() ? settings.text("ankiDeck") : list.deck;
    target.stopped = [&signals] { return signals.caught().has_value(); };
    if (target.deck.empty()) {
      exitCode = fail("the deck name is empty");
      return;
    }
    auto report = syncToAnki(open.store().words(), target);
    if (!report) {
      switch (report.error().kind) {
        case AnkiFailure::Kind::notRunning:
          exitCode = fail(fmt::format(
              "Anki is not running, or its AnkiConnect add-on is missing (nothing answers at {})",
              target.url));
          break;
        case AnkiFailure::Kind::refused:
          exitCode = fail(fmt::format("AnkiConnect refused: {}", report.error().detail));
          break;
        case AnkiFailure::Kind::stopped:
          exitCode = fail("Anki sync interrupted");
          break;
        case AnkiFailure::Kind::badReply:
          exitCode = fail(fmt::format("{} does not answer as AnkiConnect does ({})", target.url,
                                      report.error().detail));
          break;
      }
      return;
    }
    if (list.json)
      print({{"deck", target.deck},
             {"added", report->added},
             {"skipped", report->skipped},
             {"deckCreated", report->deckCreated}});
    else
      std::cout << fmt::format("{} new notes in deck {}, {} already there\n", report->added,
                               target.deck, report->skipped);
  });
}

}  // namespace vesko::cli
