#include "cli/explain_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <iostream>
#include <iterator>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "ai/ai_label.h"
#include "ai/answer_language.h"
#include "ai/answer_sections.h"
#include "ai/explanation.h"
#include "cli/ai_context.h"
#include "cli/input.h"
#include "cli/zh_output.h"
#include "dict/chengyu.h"
#include "settings/loc.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

struct ExplainOptions {
  std::string word;
  std::string sentence;
  std::string language;
  std::string remark;
  std::optional<std::string> wrong;  // set when --wrong was given: the remark, possibly empty
  std::string previous;
  std::string cedict;
  bool json = false;
};

bool hasKana(std::u16string_view text) {
  return std::ranges::any_of(text, [](char16_t c) { return c >= 0x3040 && c <= 0x30FF; });
}

// The word's language as the prompt names it, when the script tells; empty otherwise.
std::string sourceLanguage(std::u16string_view word) {
  if (hasKana(word)) return "japonais";
  for (std::size_t i = 0; i < word.size(); i = text::nextCharacter(word, i))
    if (text::isHanAt(word, i)) return "chinois";
  return {};
}

// Whether the Chinese dictionary calls the word an idiom. Only a word of four Chinese characters
// can be one, so the dictionary is loaded for those only; without it the word is explained as a
// word, with a note on stderr.
bool chengyu(std::u16string_view word, const std::string& cedict) {
  if (text::characterCount(word) != 4 || !text::isHanAt(word, 0)) return false;
  auto dictionary = loadDictionary(DictionaryFiles{cedict, {}});
  if (!dictionary) {
    std::cerr << "vesko: " << dictionary.error().message << "; explained as a plain word\n";
    return false;
  }
  return isChengyu(**dictionary, word);
}

std::expected<std::string, Failure> previousAnswer(const ExplainOptions& options) {
  std::string previous = options.previous;
  if (previous.empty() || previous == "-") {
    if (previous.empty() && isatty(STDIN_FILENO))
      return std::unexpected(Failure{
          "--wrong needs the answer it corrects: --previous TEXT, or piped on standard input"});
    previous.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  }
  previous = trimmed(previous);
  if (previous.empty()) return std::unexpected(Failure{"the previous answer is empty"});
  return previous;
}

json sectionsJson(const std::vector<AnswerSection>& sections, const AITitles& titles) {
  json list = json::array();
  for (const auto& section : sections) {
    json item{{"title", nullptr}, {"label", nullptr}, {"text", section.text}};
    if (section.label) {
      item["title"] = titles[*section.label];
      item["label"] = aiLabelRow(*section.label).name;
    }
    list.push_back(std::move(item));
  }
  return list;
}

// A title on its own line, its text under it indented; an untitled section as it is.
std::string sectionsText(const std::vector<AnswerSection>& sections, const AITitles& titles) {
  std::string out;
  for (const auto& section : sections) {
    if (!out.empty()) out += '\n';
    if (!section.label) {
      out += section.text;
      out += '\n';
      continue;
    }
    out += titles[*section.label];
    out += '\n';
    std::size_t start = 0;
    while (start <= section.text.size()) {
      std::size_t end = section.text.find('\n', start);
      if (end == std::string::npos) end = section.text.size();
      out += "  ";
      out += std::string_view(section.text).substr(start, end - start);
      out += '\n';
      start = end + 1;
    }
  }
  return out;
}

int runExplain(const ExplainOptions& options, Settings& settings, const Folders& folders,
               const Clock& clock) {
  auto word16 = text::fromUtf8(options.word);
  if (!word16 || trimmed(options.word).empty())
    return fail(Failure{"WORD must be a word in UTF-8"});
  if (!options.sentence.empty() && !text::isValidUtf8(options.sentence))
    return fail(Failure{"--sentence must be UTF-8"});
  if (!options.language.empty() && !answerLanguageRow(options.language))
    return fail(
        Failure{fmt::format("unknown answer language \"{}\" (fr, en, pl, ru, th, zh-Hans, "
                            "zh-Hant)",
                            options.language)});
  ExplainQuestion question;
  question.word = trimmed(options.word);
  if (!trimmed(options.sentence).empty()) question.sentence = options.sentence;
  question.sourceLanguage = sourceLanguage(*word16);
  if (options.wrong) {
    auto previous = previousAnswer(options);
    if (!previous) return fail(previous.error());
    question.wrong = WrongAnswer{*previous, *options.wrong};
  }
  question.chengyu = chengyu(*text::fromUtf8(question.word), options.cedict);

  AIContext context(settings, folders, clock);
  const Loc& loc = context.loc();
  const Explainer& explainer = context.services().explainer();

  const ExplanationRequest request = explainer.request(
      question, options.language.empty() ? std::nullopt : std::optional(options.language));
  const AIReply reply = explainer.answer(request);
  const AIAnswer& answer = reply.answer;
  // The service retired the model: the next question goes to its successor, if the list has one.
  if (answer.modelGone) context.replaceGoneModel(reply.provider);

  if (answer.isMessage()) {
    // A failure told to the learner: shown as it is, never read as sections.
    if (options.json)
      std::cout << dump(json{{"text", answer.text},
                             {"unreachable", answer.unreachable},
                             {"modelGone", answer.modelGone}})
                << '\n';
    else
      std::cout << answer.text << '\n';
    return 2;
  }
  const AITitles titles(loc, request.answerLanguage);
  const auto sections = parseSections(answer.text, titles);
  if (options.json) {
    std::cout << dump(json{{"word", question.word},
                           {"language", request.answerLanguage},
                           {"chengyu", question.chengyu},
                           {"sections", sectionsJson(sections, titles)},
                           {"text", answer.text},
                           {"provider", std::string(providerRow(reply.provider).name)}})
              << '\n';
  } else {
    std::cout << sectionsText(sections, titles);
  }
  return 0;
}

}  // namespace

void addExplainCommand(CLI::App& app, Settings& settings, const Folders& folders,
                       const Clock& clock, int& exitCode) {
  auto options = std::make_shared<ExplainOptions>();
  auto* explain =
      app.add_subcommand("explain", "Ask the language model to explain a word, as the bubble does");
  explain->add_option("WORD", options->word, "The word (a chengyu gets its own explanation)")
      ->required();
  explain->add_option("--sentence", options->sentence, "The sentence the word was read in");
  explain->add_option("--lang", options->language,
                      "Answer language: fr, en, pl, ru, th, zh-Hans, zh-Hant (default: the "
                      "interface's)");
  auto* wrong = explain
                    ->add_option("--wrong", options->remark,
                                 "The previous answer was wrong: ask again with a stronger model, "
                                 "with an optional remark")
                    ->expected(0, 1);
  explain->add_option("--previous", options->previous,
                      "With --wrong: the answer that was wrong (\"-\" or absent: standard input)");
  explain->add_option("--cedict", options->cedict,
                      "Dictionary file in the CC-CEDICT layout (to recognise chengyu)");
  explain->add_flag("--json", options->json,
                    "Write {word, language, chengyu, sections: [{title, label, text}], text, "
                    "provider}");
  explain->callback([options, wrong, &settings, &folders, &clock, &exitCode] {
    if (wrong->count() > 0) options->wrong = options->remark;
    exitCode = runExplain(*options, settings, folders, clock);
  });
}

}  // namespace vesko::cli
