#pragma once
// Dictionaries and conjugators that load the first time they are asked: a learner who never reads
// Russian never pays for the Russian dictionary. The first call from any thread loads (the others
// wait for it); a load that fails leaves an empty dictionary that finds nothing, and `error` says
// why. Safe for concurrent callers; created at start-up and owned by whoever wires the languages.

#include <expected>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dict/lazy.h"
#include "dict/word_dictionary.h"

namespace vesko {

namespace lazy_detail {

// Loads a T once, on first use; a failed load keeps its reason.
template <typename T>
class Once {
 public:
  using Loaded = std::expected<std::unique_ptr<T>, std::string>;
  using Loader = std::function<Loaded()>;
  explicit Once(Loader loader) : loaded_(std::move(loader)) {}

  const T* get() const {
    const Loaded& loaded = loaded_.get();
    return loaded ? loaded->get() : nullptr;
  }
  // After a first use: why the load failed.
  std::optional<std::string> error() const {
    const Loaded& loaded = loaded_.get();
    return loaded ? std::nullopt : std::optional<std::string>(loaded.error());
  }

 private:
  Lazy<Loaded> loaded_;
};

}  // namespace lazy_detail

// Its headwords are the language's headword set too.
class LazyDictionary final : public WordDictionary, public HeadwordSet {
 public:
  using Loader = lazy_detail::Once<WordDictionary>::Loader;
  explicit LazyDictionary(Loader loader) : dictionary_(std::move(loader)) {}

  std::vector<WordEntry> lookup(std::string_view lowercased) const override {
    const WordDictionary* d = dictionary_.get();
    return d ? d->lookup(lowercased) : std::vector<WordEntry>{};
  }
  bool contains(std::string_view lowercased) const override {
    const WordDictionary* d = dictionary_.get();
    return d && d->contains(lowercased);
  }
  // Loads now (at start-up on a background thread, say); false when the load failed.
  bool load() const { return dictionary_.get() != nullptr; }
  std::optional<std::string> error() const { return dictionary_.error(); }

 private:
  lazy_detail::Once<WordDictionary> dictionary_;
};

class LazyConjugator final : public Conjugator {
 public:
  using Loader = lazy_detail::Once<Conjugator>::Loader;
  explicit LazyConjugator(Loader loader) : conjugator_(std::move(loader)) {}

  std::optional<BaseForm> baseForm(std::string_view word) const override {
    const Conjugator* c = conjugator_.get();
    return c ? c->baseForm(word) : std::nullopt;
  }
  bool load() const { return conjugator_.get() != nullptr; }
  std::optional<std::string> error() const { return conjugator_.error(); }

 private:
  lazy_detail::Once<Conjugator> conjugator_;
};

}  // namespace vesko
