#pragma once
// The language recogniser on fastText's lid.176 model: real probabilities for 176 languages, of
// which those of the candidates are kept and scaled to sum to one, as a recogniser told "it is one
// of these" would give them. The model (1 MB) is read on the first call.
// Safe for concurrent callers: fastText's prediction is const and keeps its state per call.

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dict/lazy.h"
#include "dict/word_dictionary.h"

namespace fasttext {
class FastText;
}

namespace vesko {

class FastTextRecognizer final : public LanguageRecognizer {
 public:
  explicit FastTextRecognizer(std::filesystem::path model);
  ~FastTextRecognizer() override;

  // No hypothesis when the model could not be read, the text has no word, or none of the
  // candidates has any probability.
  std::vector<LanguageGuess> hypotheses(std::string_view text,
                                        std::span<const std::string_view> candidates,
                                        std::size_t maximum) const override;

  // Reads the model now if it was not read yet; the reason when it cannot be read.
  std::optional<std::string> loadError() const;

 private:
  struct Model {
    std::shared_ptr<fasttext::FastText> fasttext;  // null when it could not be read
    std::string error;
  };
  std::filesystem::path path_;
  Lazy<Model> model_;
};

}  // namespace vesko
