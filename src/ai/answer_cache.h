#pragma once
// The answers already given to the actions on a selected text, so that reopening the same text
// asks nothing: kept in one JSON file of the data folder, keyed by action, text, answer language,
// provider and model. "⚠️ " messages are never kept. The file is written whole and atomically;
// an unreadable one is set aside and the cache starts empty. Safe from any thread (one mutex); two
// processes sharing the file each keep their own last write.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "settings/clock.h"

namespace vesko {

struct AnswerKey {
  std::string action;  // "traduction", "redemander", "corriger", "décortiquer phrase"…
  std::string text;
  std::string language;  // the answer language
  std::string provider;  // "claude", "local"…
  std::string model;     // empty when the provider has no model setting
  bool operator==(const AnswerKey&) const = default;
};

class AnswerCache {
 public:
  static constexpr std::size_t kMaxAnswers = 2000;  // the oldest go first
  static constexpr const char* kFileName = "reponses-ia.json";

  // `log` receives one line when the file had to be set aside. The clock names the set-aside file.
  AnswerCache(std::filesystem::path file, const Clock& clock,
              std::function<void(std::string)> log = {}, std::size_t maxAnswers = kMaxAnswers);
  AnswerCache(const AnswerCache&) = delete;
  AnswerCache& operator=(const AnswerCache&) = delete;

  std::optional<std::string> find(const AnswerKey& key) const;
  // False, and nothing kept, for a "⚠️ " message or an empty answer.
  bool store(const AnswerKey& key, std::string answer);
  void forget(const AnswerKey& key);

 private:
  struct Entry {
    AnswerKey key;
    std::string answer;
  };
  void load();
  void save() const;  // mutex_ held

  std::filesystem::path file_;
  const Clock& clock_;
  std::function<void(std::string)> log_;
  std::size_t maxAnswers_;
  mutable std::mutex mutex_;
  std::vector<Entry> entries_;  // oldest first; guarded by mutex_
};

}  // namespace vesko
