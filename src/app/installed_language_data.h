#pragma once
// Every language's dictionaries, headword sets, conjugators and the recogniser, read from the
// files the set-up scripts leave in the resources folder. Each loads the first time it is asked;
// a language whose files are missing has none, so its words are cut but find no entries. Created
// once by whoever runs reads (main, the command line); getters are safe for concurrent callers.

#include <filesystem>
#include <memory>

#include "app/language_data.h"

namespace vesko {

class InstalledLanguageData final : public LanguageData {
 public:
  explicit InstalledLanguageData(const std::filesystem::path& resources);
  ~InstalledLanguageData() override;
  InstalledLanguageData(const InstalledLanguageData&) = delete;
  InstalledLanguageData& operator=(const InstalledLanguageData&) = delete;

  const WordDictionary* dictionary(Language language) const override;
  const HeadwordSet* headwords(Language language) const override;
  const Conjugator* conjugator(Language language) const override;
  const LanguageRecognizer* recognizer() const override;

 private:
  struct Data;
  std::unique_ptr<Data> data_;
};

}  // namespace vesko
