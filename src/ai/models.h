#pragma once
// The cloud providers' model lists: fetching a list with the learner's key, newest first, and
// replacing a stored model the provider says no longer exists by the nearest one of its family.
// Created once beside the AI entry point; the caller reads the key from the secret store and
// passes it in, so that it never lands in a setting or a log line.
// Thread contract: any thread; the HTTP client, the settings, the texts and the log it is given
// are safe from any thread, and `Models` keeps no state of its own.

#include <chrono>
#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ai/http.h"
#include "ai/provider.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "settings/settings.h"

namespace vesko {

struct ListedModel {
  std::string id;
  std::int64_t created = 0;  // seconds since 1970; 0 when the list does not say
};

struct ModelListFailure {
  // For the diagnostic log ("HTTP 401", "pas de tableau data"); never holds the key.
  std::string detail;
};

// A text for the learner and how long it stays; no duration means until the learner moves on.
struct ModelNotice {
  std::string text;
  std::optional<std::chrono::milliseconds> shownFor;
};

// The list in a reply of the provider's list endpoint: the elements of `data` with a non-empty
// string `id`, filtered for the provider, newest first (`created_at` as an ISO 8601 date or
// `created` in seconds; equal times keep the provider's order). A status other than 200 or a body
// without a `data` array is a failure.
std::expected<std::vector<ListedModel>, ModelListFailure> readModelList(AIProvider provider,
                                                                        long status,
                                                                        std::string_view body);

// The first word of the families table that the lower-cased id contains; empty for none.
std::string_view modelFamily(std::string_view id);

// The model that takes the place of `retired`, from `list` (newest first): the first other id of
// the same family, else the provider's fallback, else the first other id; nothing for an empty
// list and for providers without a fallback.
std::optional<std::string> replacementModel(AIProvider provider, std::string_view retired,
                                            std::span<const std::string> list);

// Seconds since 1970 of "2025-02-19T00:00:00Z" (fractions and ±hh:mm offsets allowed, the time
// optional); nothing when the text is not such a date.
std::optional<std::int64_t> parseIsoDate(std::string_view text);

// `provider`'s models from its list endpoint under the base URL of its host setting
// (`claudeHost`…), newest first. Blocks for the exchange (15 s at most). No request is sent
// without a key or for a provider that has no list (the local model, the relay).
std::expected<std::vector<ListedModel>, ModelListFailure> fetchModelList(const HttpClient& http,
                                                                         const Settings& settings,
                                                                         AIProvider provider,
                                                                         std::string_view key);

class Models {
 public:
  // Everything given must outlive the object.
  Models(const HttpClient& http, Settings& settings, const Loc& loc, Log& log);
  Models(const Models&) = delete;
  Models& operator=(const Models&) = delete;

  // What the model field shows for 1.4 s when a list could not be fetched.
  ModelNotice listFailureNotice() const;

  struct Replaced {
    std::optional<std::string> model;  // the new model, when one was stored
    ModelNotice notice;
  };
  // An answer said that the provider's stored model no longer exists: fetch the list, store the
  // replacement in the provider's model setting and log it. Without a replacement, or when the
  // list cannot be fetched, the stored model stays and the notice asks the learner to choose one.
  // A model the learner changed meanwhile is left alone (no notice).
  Replaced onModelGone(AIProvider provider, std::string_view key);

 private:
  const HttpClient& http_;
  Settings& settings_;
  const Loc& loc_;
  Log& log_;
};

}  // namespace vesko
