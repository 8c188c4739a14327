#include "ai/answer_cache.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "ai/ai_answer.h"
#include "settings/data_safety.h"

namespace vesko {

using nlohmann::json;

AnswerCache::AnswerCache(std::filesystem::path file, const Clock& clock,
                         std::function<void(std::string)> log, std::size_t maxAnswers)
    : file_(std::move(file)), clock_(clock), log_(std::move(log)), maxAnswers_(maxAnswers) {
  load();
}

void AnswerCache::load() {
  std::ifstream in(file_, std::ios::binary);
  if (!in) return;  // none yet
  const std::string content{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  in.close();
  try {
    const json document = json::parse(content);
    if (!document.is_array()) throw json::type_error::create(302, "not an array", nullptr);
    for (const auto& item : document) {
      Entry entry{{item.at("action").get<std::string>(), item.at("text").get<std::string>(),
                   item.at("lang").get<std::string>(), item.at("provider").get<std::string>(),
                   item.value("model", std::string())},
                  item.at("answer").get<std::string>()};
      if (entry.answer.starts_with(kWarningPrefix)) continue;
      entries_.push_back(std::move(entry));
    }
  } catch (const json::exception&) {
    entries_.clear();
    auto aside = setAside(file_, clock_);
    if (log_)
      log_(aside ? "réponses IA : fichier illisible, mis de côté sous " + aside->filename().string()
                 : "réponses IA : fichier illisible, impossible de le mettre de côté");
  }
}

std::optional<std::string> AnswerCache::find(const AnswerKey& key) const {
  std::lock_guard lock(mutex_);
  for (auto it = entries_.rbegin(); it != entries_.rend(); ++it)
    if (it->key == key) return it->answer;
  return std::nullopt;
}

bool AnswerCache::store(const AnswerKey& key, std::string answer) {
  if (answer.empty() || answer.starts_with(kWarningPrefix)) return false;
  std::lock_guard lock(mutex_);
  std::erase_if(entries_, [&](const Entry& entry) { return entry.key == key; });
  entries_.push_back({key, std::move(answer)});
  if (entries_.size() > maxAnswers_)
    entries_.erase(entries_.begin(),
                   entries_.begin() + static_cast<std::ptrdiff_t>(entries_.size() - maxAnswers_));
  save();
  return true;
}

void AnswerCache::forget(const AnswerKey& key) {
  std::lock_guard lock(mutex_);
  if (std::erase_if(entries_, [&](const Entry& entry) { return entry.key == key; }) > 0) save();
}

void AnswerCache::save() const {
  json document = json::array();
  for (const auto& entry : entries_)
    document.push_back({{"action", entry.key.action},
                        {"text", entry.key.text},
                        {"lang", entry.key.language},
                        {"provider", entry.key.provider},
                        {"model", entry.key.model},
                        {"answer", entry.answer}});
  // A failed write keeps the answers in memory; the next one tries again.
  auto written =
      writeFileAtomically(file_, document.dump(1, ' ', false, json::error_handler_t::replace));
  if (!written && log_)
    log_("réponses IA : écriture impossible (" + written.error().message() + ")");
}

}  // namespace vesko
