#include "cli/sentence_command.h"

#include <fmt/format.h>

#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "ai/answer_cache.h"
#include "ai/answer_language.h"
#include "ai/provider.h"
#include "ai/sentence_answers.h"
#include "ai/sentence_model.h"
#include "ai/word_lists.h"
#include "cli/ai_context.h"
#include "cli/input.h"
#include "cli/open_store.h"
#include "cli/zh_output.h"
#include "dict/cedict.h"
#include "settings/environment.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

constexpr std::string_view kLanguages[] = {"zh", "zh-Hans", "zh-Hant", "ja", "th",
                                           "fr", "en",      "ru",      "pl"};

bool knownLanguage(std::string_view code) {
  for (auto known : kLanguages)
    if (known == code) return true;
  return false;
}

// The language of a text when the command line does not say: its script decides, Latin text is
// taken for English.
std::string guessedLanguage(std::string_view sample) {
  const auto utf16 = text::fromUtf8(sample).value_or(std::u16string());
  bool han = false;
  for (std::size_t i = 0; i < utf16.size(); i = text::nextCharacter(utf16, i)) {
    const char32_t c = text::codePointAt(utf16, i);
    if ((c >= 0x3040 && c <= 0x30FF) || (c >= 0x31F0 && c <= 0x31FF)) return "ja";
    if (c >= 0x0E00 && c <= 0x0E7F) return "th";
    if (c >= 0x0400 && c <= 0x04FF) return "ru";
    if (text::isHan(c)) han = true;
  }
  return han ? "zh" : "en";
}

// The name a language is given in French in the prompts and the translation lines.
std::string frenchName(std::string_view code) {
  if (code == "ja") return "japonais";
  if (code == "zh") return answerLanguageName("zh-Hans");
  return answerLanguageName(code);
}

std::optional<std::string> optionalText(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return text;
}

json nullable(const std::optional<std::string>& text) {
  return text ? json(*text) : json(nullptr);
}

json glossJson(const std::optional<Gloss>& gloss) {
  if (!gloss) return nullptr;
  return {{"text", gloss->text}, {"meaning", gloss->meaning}};
}

json listJson(const std::vector<ListedWord>& words) {
  json out = json::array();
  for (const auto& word : words)
    out.push_back({{"word", word.word}, {"reading", word.reading}, {"meaning", word.meaning}});
  return out;
}

// A "⚠️ " answer goes to stderr with exit 2, as `vesko ask` does.
bool reportedMessage(const std::string& answer, int& exitCode) {
  if (!answer.starts_with(kWarningPrefix)) return false;
  std::cerr << answer << '\n';
  exitCode = 2;
  return true;
}

std::expected<std::string, Failure> languageOption(const std::string& given,
                                                   const std::string& text) {
  if (given.empty()) return guessedLanguage(text);
  if (!knownLanguage(given))
    return std::unexpected(Failure{fmt::format(
        "unknown language \"{}\" (zh, zh-Hans, zh-Hant, ja, th, fr, en, ru, pl)", given)});
  return given;
}

SentenceSelection selectionOf(const std::string& text, const std::string& code) {
  SentenceSelection selection;
  selection.text = text;
  selection.traditional = code == "zh-Hant";
  selection.languageCode = code.starts_with("zh") ? "zh" : code;
  return selection;
}

std::string askOnce(AIContext& context, SentenceSelection selection, SentenceSetup setup,
                    SentenceAction action) {
  AITitles titles(context.loc(), setup.answerLanguage);
  SentenceModel model(std::move(selection), std::move(setup), std::move(titles), context.ask(),
                      context.cache());
  model.open(action);
  model.wait(action);
  return model.answer(action);
}

struct TranslateOptions {
  std::string text, line, to, lang;
  bool json = false;
};

std::vector<std::string> splitList(const std::string& list) {
  std::vector<std::string> out;
  std::size_t start = 0;
  while (start <= list.size()) {
    auto end = list.find(',', start);
    std::string item = trimmed(list.substr(start, end - start));
    if (!item.empty()) out.push_back(item);
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return out;
}

int runTranslate(const TranslateOptions& options, AIContext& context) {
  auto lang = languageOption(options.lang, options.text);
  if (!lang) return fail(lang.error());
  std::vector<std::string> targets = splitList(options.to);
  for (const auto& target : targets)
    if (!answerLanguageRow(target) && target != "ja")
      return fail(Failure{fmt::format("unknown target language \"{}\"", target)});
  const std::string answerLanguage = context.answerLanguage();
  if (targets.empty())
    targets.push_back(answerLanguage == *lang ? (*lang == "en" ? "fr" : "en") : answerLanguage);
  SentenceSelection selection = selectionOf(options.text, *lang);
  selection.line = optionalText(options.line);
  SentenceSetup setup = context.setup(targets);
  const AITitles titles(context.loc(), setup.answerLanguage);
  const std::string answer =
      askOnce(context, std::move(selection), std::move(setup), SentenceAction::translate);
  int exitCode = 0;
  if (reportedMessage(answer, exitCode)) return exitCode;

  // Each target's French name, then its name in the answer language.
  std::vector<std::string> names;
  for (const auto& target : targets) {
    names.push_back(frenchName(target));
    names.push_back(context.loc().t(frenchName(target), answerLanguage));
  }
  auto codeNamed = [&](const std::string& name) {
    for (std::size_t i = 0; i < names.size(); ++i)
      if (names[i] == name) return targets[i / 2];
    return name;
  };
  const auto read = parseTranslation(answer, names, titles);
  if (!read) return fail(Failure{"the answer was empty"});
  if (options.json) {
    json translations = json::array(), parts = json::array();
    for (const auto& line : read->translations)
      translations.push_back({{"lang", codeNamed(line.language)}, {"text", line.text}});
    for (const auto& part : read->parts)
      parts.push_back({{"piece", part.text}, {"meaning", part.meaning}});
    std::cout << dump(json{{"text", answer},
                           {"translations", translations},
                           {"nuance", nullable(read->nuance)},
                           {"parts", parts},
                           {"expression", glossJson(read->expression)},
                           {"partOf", nullable(read->partOf)},
                           {"other", read->other}})
              << '\n';
    return 0;
  }
  if (read->partOf) std::cout << "⚠︎ Fait partie de : " << *read->partOf << '\n';
  for (const auto& line : read->translations)
    std::cout << line.language << " : " << line.text << '\n';
  for (const auto& line : read->other) std::cout << line << '\n';
  if (read->nuance) std::cout << titles[AILabel::nuance] << " : " << *read->nuance << '\n';
  if (!read->parts.empty()) {
    std::cout << context.loc().t("Plus petits morceaux") << '\n';
    for (const auto& part : read->parts)
      std::cout << "  " << part.text << " = " << part.meaning << '\n';
  }
  if (read->expression)
    std::cout << titles[AILabel::expression] << " : " << read->expression->text << " = "
              << read->expression->meaning << '\n';
  return 0;
}

struct AnalyseOptions {
  std::string text, sentence, lang;
  bool json = false;
};

int runAnalyse(const AnalyseOptions& options, AIContext& context) {
  auto lang = languageOption(options.lang, options.text);
  if (!lang) return fail(lang.error());
  SentenceSelection selection = selectionOf(options.text, *lang);
  selection.sentence = optionalText(options.sentence);
  SentenceSetup setup = context.setup({});
  const AITitles titles(context.loc(), setup.answerLanguage);
  const std::string answer =
      askOnce(context, std::move(selection), std::move(setup), SentenceAction::analyse);
  int exitCode = 0;
  if (reportedMessage(answer, exitCode)) return exitCode;
  if (!options.json) {
    std::cout << answer << '\n';
    return 0;
  }
  const auto read = parseAnalysis(answer, titles);
  if (!read) return fail(Failure{"the answer was empty"});
  json words = json::array();
  for (const auto& word : read->words)
    words.push_back({{"word", word.word}, {"meaning", word.meaning}, {"nature", word.nature}});
  std::cout << dump(json{{"text", answer},
                         {"doubt", nullable(read->doubt)},
                         {"structure", nullable(read->structure)},
                         {"words", words},
                         {"grammar", nullable(read->grammar)},
                         {"expression", glossJson(read->expression)},
                         {"other", read->other}})
            << '\n';
  return 0;
}

struct CorrectOptions {
  std::string text, lang;
  bool json = false;
};

int runCorrect(const CorrectOptions& options, AIContext& context) {
  auto lang = languageOption(options.lang, options.text);
  if (!lang) return fail(lang.error());
  const std::string answer = askOnce(context, selectionOf(options.text, *lang), context.setup({}),
                                     SentenceAction::correct);
  int exitCode = 0;
  if (reportedMessage(answer, exitCode)) return exitCode;
  const auto read = parseCorrection(answer, options.text);
  if (!read) return fail(Failure{"the answer was empty"});
  if (options.json) {
    std::cout << dump(json{{"text", answer},
                           {"corrected", read->corrected},
                           {"unchanged", read->unchanged},
                           {"grammar", read->grammar}})
              << '\n';
    return 0;
  }
  std::cout << read->corrected << (read->unchanged ? " ✓" : "") << '\n';
  if (!read->grammar.empty()) std::cout << '\n' << read->grammar << '\n';
  return 0;
}

struct SynonymOptions {
  std::string word, lang, sentence;
  bool json = false;
};

constexpr int kSynonymTokens = 300;
constexpr int kConceptTokens = 500;
constexpr int kThemeTokens = 600;
constexpr std::size_t kThemeBatch = 40;  // elements per question: short numbered answers

int runSynonyms(const SynonymOptions& options, AIContext& context) {
  auto lang = languageOption(options.lang, options.word);
  if (!lang) return fail(lang.error());
  const std::string answerLanguage = context.answerLanguage();
  SynonymRequest request{options.word, *lang, optionalText(options.sentence),
                         answerLanguageName(answerLanguage)};
  const std::string answer = context.ask()
                                 .ask(answerLanguage, teacherSystemText(answerLanguage),
                                      synonymPrompt(request), kSynonymTokens)
                                 .get()
                                 .text;
  int exitCode = 0;
  if (reportedMessage(answer, exitCode)) return exitCode;
  const auto read = parseSynonyms(answer);
  if (!read) {
    std::cerr << context.loc().t("L'IA n'a pas pu répondre.") << '\n';
    return 2;
  }
  if (options.json) {
    std::cout << dump(json{{"word", options.word},
                           {"near", listJson(read->near)},
                           {"opposites", listJson(read->opposites)}})
              << '\n';
    return 0;
  }
  auto print = [](std::string_view mark, const std::vector<ListedWord>& words) {
    for (const auto& word : words)
      std::cout << mark << ' ' << word.word
                << (word.reading.empty() ? "" : " (" + word.reading + ")") << " = " << word.meaning
                << '\n';
  };
  print("≈", read->near);
  print("≠", read->opposites);
  return 0;
}

struct ConceptOptions {
  std::string word, lang;
  bool json = false;
};

int runConcept(const ConceptOptions& options, AIContext& context) {
  auto lang = languageOption(options.lang, options.word);
  if (!lang) return fail(lang.error());
  const std::string answerLanguage = context.answerLanguage();
  const std::string user =
      "Explique en 2 ou 3 lignes courtes le concept « " + options.word + " » (" +
      frenchName(*lang) + "), sans introduction ni question." +
      conceptWordsLine(options.word, *lang, answerLanguageName(answerLanguage));
  const std::string answer =
      context.ask()
          .ask(answerLanguage, teacherSystemText(answerLanguage), user, kConceptTokens)
          .get()
          .text;
  int exitCode = 0;
  if (reportedMessage(answer, exitCode)) return exitCode;
  ConceptWordsRow row;
  row.words = parseConceptWords(answer).value_or(std::vector<ListedWord>{});
  row.lang = *lang;
  row.context = options.word;
  row.k = *lang + ":" + options.word;
  const std::string explanation = withoutConceptWords(answer);
  if (options.json) {
    std::cout << dump(json{{"text", explanation},
                           {"words", listJson(row.words)},
                           {"lang", row.lang},
                           {"context", row.context},
                           {"k", row.k}})
              << '\n';
    return 0;
  }
  std::cout << explanation << '\n';
  for (const auto& word : row.words)
    std::cout << "📚 " << word.word << (word.reading.empty() ? "" : " (" + word.reading + ")")
              << " = " << word.meaning << '\n';
  return 0;
}

struct ThemeOptions {
  bool all = false;
  bool json = false;
};

int runThemes(const ThemeOptions& options, Settings& settings, const Folders& folders,
              const Clock& clock, AIContext& context) {
  OpenStore open(folders, settings, clock);
  WordStore& store = open.store();
  std::vector<std::string> themes(std::begin(kThemeNames), std::end(kThemeNames));
  std::vector<std::pair<std::string, std::string>> waiting;  // id, element sent
  for (const auto& word : store.words())
    if (options.all || !word.theme) waiting.emplace_back(word.id, word.word);
  int classified = 0;
  for (std::size_t start = 0; start < waiting.size(); start += kThemeBatch) {
    const std::size_t end = std::min(waiting.size(), start + kThemeBatch);
    std::vector<std::string> elements;
    for (std::size_t i = start; i < end; ++i) elements.push_back(waiting[i].second);
    const AIAnswer answer = context.ask()
                                .ask(context.answerLanguage(), std::string(kThemeSystem),
                                     themePrompt(themes, elements), kThemeTokens)
                                .get();
    int exitCode = 0;
    if (reportedMessage(answer.text, exitCode)) return exitCode;
    const ThemeReading read = parseThemes(answer.text, themes, elements.size());
    if (!read.readable) {
      context.journal().log("thèmes : réponse IA illisible");
      continue;
    }
    for (std::size_t i = 0; i < read.themes.size(); ++i) {
      if (!read.themes[i]) continue;
      if (store.change(waiting[start + i].first,
                       [&](SavedWord& word) { word.theme = *read.themes[i]; }))
        ++classified;
    }
  }
  int exitCode = 0;
  if (open.saved(exitCode) != 0) return exitCode;
  if (options.json) {
    json words = json::array();
    for (const auto& word : store.words())
      words.push_back({{"word", word.word},
                       {"lang", word.lang},
                       {"theme", word.theme ? json(*word.theme) : json(nullptr)}});
    std::cout << dump(json{{"classified", classified}, {"words", words}}) << '\n';
    return 0;
  }
  std::cout << fmt::format("{} of {} words classified", classified, waiting.size()) << '\n';
  for (const auto& word : store.words())
    if (word.theme) std::cout << word.word << " : " << *word.theme << '\n';
  return 0;
}

}  // namespace

void addSentenceCommands(CLI::App& app, Settings& settings, const Folders& folders,
                         const Clock& clock, int& exitCode) {
  // One context per run, made only when a command of this family runs.
  auto context = std::make_shared<std::unique_ptr<AIContext>>();
  auto made = [context, &settings, &folders, &clock]() -> AIContext& {
    if (!*context) *context = std::make_unique<AIContext>(settings, folders, clock);
    return **context;
  };

  auto translate = std::make_shared<TranslateOptions>();
  auto* command = app.add_subcommand("translate", "translate a text into the learner's languages");
  command->add_option("TEXT", translate->text, "the text")->required();
  command->add_option("--line", translate->line, "the longer line the text is a piece of");
  command->add_option("--to", translate->to, "target languages, comma-separated (en,zh-Hant,…)");
  command->add_option("--lang", translate->lang, "the text's language (guessed from its script)");
  command->add_flag("--json", translate->json, "JSON output");
  command->callback([=, &exitCode] { exitCode = runTranslate(*translate, made()); });

  auto analyse = std::make_shared<AnalyseOptions>();
  command = app.add_subcommand("analyse", "take a text apart for a learner");
  command->add_option("TEXT", analyse->text, "the text")->required();
  command->add_option("--sentence", analyse->sentence, "the sentence the text is part of");
  command->add_option("--lang", analyse->lang, "the text's language (guessed from its script)");
  command->add_flag("--json", analyse->json, "JSON output");
  command->callback([=, &exitCode] { exitCode = runAnalyse(*analyse, made()); });

  auto correct = std::make_shared<CorrectOptions>();
  command = app.add_subcommand("correct", "correct a sentence the learner wrote");
  command->add_option("TEXT", correct->text, "the sentence")->required();
  command->add_option("--lang", correct->lang, "the sentence's language")->required();
  command->add_flag("--json", correct->json, "JSON output");
  command->callback([=, &exitCode] { exitCode = runCorrect(*correct, made()); });

  auto synonyms = std::make_shared<SynonymOptions>();
  command = app.add_subcommand("synonyms", "near words and opposites of a word");
  command->add_option("WORD", synonyms->word, "the word")->required();
  command->add_option("--lang", synonyms->lang, "the word's language")->required();
  command->add_option("--sentence", synonyms->sentence, "the sentence the word was met in");
  command->add_flag("--json", synonyms->json, "JSON output");
  command->callback([=, &exitCode] { exitCode = runSynonyms(*synonyms, made()); });

  auto conceptOptions = std::make_shared<ConceptOptions>();
  command = app.add_subcommand("concept", "a concept explained, with related words to keep");
  command->add_option("WORD", conceptOptions->word, "the word")->required();
  command->add_option("--lang", conceptOptions->lang, "the word's language")->required();
  command->add_flag("--json", conceptOptions->json, "JSON output");
  command->callback([=, &exitCode] { exitCode = runConcept(*conceptOptions, made()); });

  auto themes = std::make_shared<ThemeOptions>();
  command = app.add_subcommand("themes", "sort the kept words into themes");
  command->add_flag("--all", themes->all, "classify again the words that have a theme");
  command->add_flag("--json", themes->json, "JSON output");
  command->callback([=, &settings, &folders, &clock, &exitCode] {
    exitCode = runThemes(*themes, settings, folders, clock, made());
  });
}

}  // namespace vesko::cli
