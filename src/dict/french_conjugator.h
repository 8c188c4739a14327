#pragma once
// The infinitive of a conjugated French verb, from Verbiste's verbs and templates: every form of
// every verb is generated once, on first use, and kept in a sorted table from form to the verbs
// and tenses it belongs to ("mangeaient" → "manger", indicatif imparfait). Notes are in French
// ("participe passé de « aller »").
// Immutable once built: safe for concurrent readers (the build runs once, std::call_once).

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/lazy.h"
#include "dict/word_dictionary.h"
#include "dict/word_list.h"

namespace vesko {

class FrenchConjugator final : public Conjugator {
 public:
  FrenchConjugator(std::filesystem::path verbs, std::filesystem::path conjugation);

  // Nothing for an infinitive and for a word that no verb's conjugation produces. A form of
  // several verbs ("suis": être, suivre) is given to the more common one, the other named in the
  // note.
  std::optional<BaseForm> baseForm(std::string_view word) const override;

  // Builds now if not built yet; the reason when the data cannot be read.
  std::optional<std::string> loadError() const;
  std::size_t formCount() const { return table_.get().forms.size(); }
  std::size_t verbCount() const { return table_.get().verbs.size(); }
  // Heap bytes of the table, for the benchmarks.
  std::size_t tableBytes() const;

 private:
  struct Analysis {
    uint16_t verb;   // index into verbs
    uint16_t tenses; // one bit per FrenchTense
  };
  struct Table {
    WordList verbs;                       // infinitives
    std::vector<uint16_t> verbRank;       // per verb: 0 for the most common verbs, else 1
    WordList forms;                       // every conjugated form
    std::vector<uint32_t> analysisStart;  // per form, into analyses (size forms + 1)
    std::vector<Analysis> analyses;
    std::string error;
  };
  static Table build(const std::filesystem::path& verbs, const std::filesystem::path& conjugation);

  std::filesystem::path verbsPath_;
  std::filesystem::path conjugationPath_;
  Lazy<Table> table_;
};

}  // namespace vesko
