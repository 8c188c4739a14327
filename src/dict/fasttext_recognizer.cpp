#include "dict/fasttext_recognizer.h"

#include <fasttext/fasttext.h>

#include <algorithm>
#include <exception>
#include <sstream>

namespace vesko {
namespace {

constexpr std::string_view kLabelPrefix = "__label__";

}  // namespace

FastTextRecognizer::FastTextRecognizer(std::filesystem::path model)
    : path_(std::move(model)), model_([this] {
        Model m;
        std::error_code ec;
        if (!std::filesystem::is_regular_file(path_, ec)) {
          m.error = "no language model at " + path_.string();
          return m;
        }
        // fastText reports a bad model by throwing; nothing of it may leave this module.
        try {
          auto ft = std::make_shared<fasttext::FastText>();
          ft->loadModel(path_.string());
          m.fasttext = std::move(ft);
        } catch (const std::exception& e) {
          m.error = "cannot read the language model " + path_.string() + ": " + e.what();
        } catch (...) {
          m.error = "cannot read the language model " + path_.string();
        }
        return m;
      }) {}

FastTextRecognizer::~FastTextRecognizer() = default;

std::optional<std::string> FastTextRecognizer::loadError() const {
  const Model& m = model_.get();
  if (m.fasttext) return std::nullopt;
  return m.error;
}

std::vector<LanguageGuess> FastTextRecognizer::hypotheses(
    std::string_view text, std::span<const std::string_view> candidates,
    std::size_t maximum) const {
  const Model& m = model_.get();
  if (!m.fasttext || candidates.empty() || maximum == 0) return {};

  // fastText reads one line of whitespace-separated tokens; a newline would end the text early.
  std::string line(text);
  std::replace_if(line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  line += '\n';
  std::istringstream in(line);
  std::vector<std::pair<fasttext::real, std::string>> predictions;
  try {
    // Every label, so that a candidate far down the list still gets its probability.
    m.fasttext->predictLine(in, predictions, -1, 0.0);
  } catch (...) {
    return {};
  }

  std::vector<LanguageGuess> guesses;
  double total = 0;
  for (const auto& [probability, label] : predictions) {
    std::string_view code(label);
    if (!code.starts_with(kLabelPrefix)) continue;
    code.remove_prefix(kLabelPrefix.size());
    if (std::find(candidates.begin(), candidates.end(), code) == candidates.end()) continue;
    guesses.push_back({std::string(code), static_cast<double>(probability)});
    total += probability;
  }
  if (total <= 0) return {};
  for (auto& g : guesses) g.probability /= total;
  std::stable_sort(guesses.begin(), guesses.end(),
                   [](const auto& a, const auto& b) { return a.probability > b.probability; });
  if (guesses.size() > maximum) guesses.resize(maximum);
  return guesses;
}

}  // namespace vesko
