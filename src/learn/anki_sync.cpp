#include "learn/anki_sync.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "learn/word_export.h"

namespace vesko {
namespace {

using nlohmann::json;

constexpr int kAnkiConnectVersion = 6;
// AnkiConnect's replies are small; anything much larger is not AnkiConnect.
constexpr std::size_t kMaxReplyBytes = 16u << 20;

struct Received {
  std::string body;
  bool tooLarge = false;
};

extern "C" std::size_t receive(char* data, std::size_t size, std::size_t count, void* user) {
  auto* received = static_cast<Received*>(user);
  const std::size_t bytes = size * count;
  if (received->body.size() + bytes > kMaxReplyBytes) {
    received->tooLarge = true;
    return 0;
  }
  received->body.append(data, bytes);
  return bytes;
}

extern "C" int progress(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  const auto* target = static_cast<const AnkiTarget*>(user);
  return target->stopped && target->stopped() ? 1 : 0;  // non-zero aborts the transfer
}

// One POST of a JSON body to AnkiConnect, through libcurl.
class AnkiConnection {
 public:
  explicit AnkiConnection(const AnkiTarget& target) : target_(target), curl_(curl_easy_init()) {}
  ~AnkiConnection() {
    if (curl_) curl_easy_cleanup(curl_);
  }
  AnkiConnection(const AnkiConnection&) = delete;
  AnkiConnection& operator=(const AnkiConnection&) = delete;

  // The request's `result`, or why there is none.
  std::expected<json, AnkiFailure> call(const std::string& action, json params = json::object()) {
    if (!curl_) return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "libcurl"});
    if (target_.stopped && target_.stopped())
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::stopped, "stopped"});
    json request = {{"action", action}, {"version", kAnkiConnectVersion}};
    if (!params.empty()) request["params"] = std::move(params);
    const std::string body = request.dump(-1, ' ', false, json::error_handler_t::replace);

    Received received;
    std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)> headers(
        curl_slist_append(nullptr, "Content-Type: application/json"), curl_slist_free_all);
    curl_easy_reset(curl_);
    curl_easy_setopt(curl_, CURLOPT_URL, target_.url.c_str());
    curl_easy_setopt(curl_, CURLOPT_POST, 1L);
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDS, body.c_str());
    curl_easy_setopt(curl_, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(curl_, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, receive);
    curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &received);
    curl_easy_setopt(curl_, CURLOPT_TIMEOUT_MS, static_cast<long>(target_.timeout.count()));
    curl_easy_setopt(curl_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl_, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl_, CURLOPT_XFERINFOFUNCTION, progress);
    curl_easy_setopt(curl_, CURLOPT_XFERINFODATA, &target_);
    curl_easy_setopt(curl_, CURLOPT_PROXY, "");  // AnkiConnect is local: never through a proxy
    const CURLcode code = curl_easy_perform(curl_);
    if (code == CURLE_ABORTED_BY_CALLBACK)
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::stopped, "stopped"});
    if (code == CURLE_COULDNT_CONNECT || code == CURLE_COULDNT_RESOLVE_HOST)
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::notRunning, curl_easy_strerror(code)});
    if (received.tooLarge)
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "reply too large"});
    if (code != CURLE_OK)
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, curl_easy_strerror(code)});
    long status = 0;
    curl_easy_getinfo(curl_, CURLINFO_RESPONSE_CODE, &status);
    if (status != 200)
      return std::unexpected(
          AnkiFailure{AnkiFailure::Kind::badReply, "HTTP status " + std::to_string(status)});

    json reply = json::parse(received.body, nullptr, false);
    if (reply.is_discarded() || !reply.is_object() || !reply.contains("result") ||
        !reply.contains("error"))
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "not an AnkiConnect reply"});
    if (!reply["error"].is_null()) {
      const json& error = reply["error"];
      return std::unexpected(AnkiFailure{
          AnkiFailure::Kind::refused,
          error.is_string() ? error.get<std::string>()
                            : error.dump(-1, ' ', false, json::error_handler_t::replace)});
    }
    return std::move(reply["result"]);
  }

 private:
  const AnkiTarget& target_;
  CURL* curl_;
};

// Anki's search syntax inside double quotes: \ and " are escaped, and so are the wildcards * and _
// so that they match themselves.
std::string searchText(std::string_view text) {
  std::string escaped;
  for (char c : text) {
    if (c == '\\' || c == '"' || c == '*' || c == '_') escaped += '\\';
    escaped += c;
  }
  return escaped;
}

}  // namespace

AnkiNote ankiNote(const SavedWord& word) {
  std::string back;
  auto add = [&back](const std::string& part) {
    if (part.empty()) return;
    if (!back.empty()) back += "<br>";
    back += part;
  };
  add(escapeHtml(word.pinyin));
  add(escapeHtml(word.definition));
  // The sentence apart from the reading and definition, by an empty line.
  if (!word.context.empty())
    add((back.empty() ? "" : "<br>") + boldSentence(word.context, word.word));
  return {escapeHtml(word.word), back};
}

std::expected<AnkiSyncReport, AnkiFailure> syncToAnki(const std::vector<SavedWord>& words,
                                                      const AnkiTarget& target) {
  static const bool curlReady = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
  if (!curlReady) return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "libcurl"});
  AnkiConnection anki(target);
  AnkiSyncReport report;

  auto decks = anki.call("deckNames");
  if (!decks) return std::unexpected(decks.error());
  if (!decks->is_array())
    return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "deckNames: not a list"});
  if (std::find(decks->begin(), decks->end(), json(target.deck)) == decks->end()) {
    auto created = anki.call("createDeck", {{"deck", target.deck}});
    if (!created) return std::unexpected(created.error());
    report.deckCreated = true;
  }

  json notes = json::array();
  std::set<std::string> sent;  // two records of one spelling (two languages) make one note
  for (const auto& word : words) {
    AnkiNote note = ankiNote(word);
    if (note.front.empty() || !sent.insert(note.front).second) {
      ++report.skipped;
      continue;
    }
    auto found =
        anki.call("findNotes", {{"query", "deck:\"" + searchText(target.deck) +
                                              "\" \"Front:" + searchText(note.front) + "\""}});
    if (!found) return std::unexpected(found.error());
    if (!found->is_array())
      return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "findNotes: not a list"});
    if (!found->empty()) {
      ++report.skipped;
      continue;
    }
    notes.push_back({{"deckName", target.deck},
                     {"modelName", "Basic"},
                     {"fields", {{"Front", note.front}, {"Back", note.back}}},
                     {"options", {{"allowDuplicate", false}, {"duplicateScope", "deck"}}},
                     {"tags", json::array({"vesko", word.lang})}});
  }
  if (notes.empty()) return report;
  const std::size_t count = notes.size();
  auto added = anki.call("addNotes", {{"notes", std::move(notes)}});
  if (!added) return std::unexpected(added.error());
  if (!added->is_array() || added->size() != count)
    return std::unexpected(AnkiFailure{AnkiFailure::Kind::badReply, "addNotes: not a list"});
  for (const auto& id : *added) {
    // AnkiConnect gives null for a note it could not add (a duplicate it found itself).
    if (id.is_null())
      ++report.skipped;
    else
      ++report.added;
  }
  return report;
}

}  // namespace vesko
