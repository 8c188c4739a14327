#include "ai/models.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

#include "ai/model_tables.h"

namespace vesko {
namespace {

using nlohmann::json;
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kListTimeout = 15s;
constexpr std::chrono::milliseconds kUpdatedNoticeTime = 2500ms;
constexpr std::chrono::milliseconds kFailureNoticeTime = 1400ms;

const ModelListEndpoint* endpointOf(AIProvider provider) {
  auto it = std::ranges::find(kModelListEndpoints, provider, &ModelListEndpoint::provider);
  return it == std::end(kModelListEndpoints) ? nullptr : &*it;
}

const ModelFallback* fallbackOf(AIProvider provider) {
  auto it = std::ranges::find(kModelFallbacks, provider, &ModelFallback::provider);
  return it == std::end(kModelFallbacks) ? nullptr : &*it;
}

std::string lowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return lower;
}

// Reads `count` digits at `at`, moving past them.
std::optional<int> digits(std::string_view text, std::size_t& at, std::size_t count) {
  if (at + count > text.size()) return std::nullopt;
  int value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    char c = text[at + i];
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  at += count;
  return value;
}

bool skip(std::string_view text, std::size_t& at, char expected) {
  if (at >= text.size() || text[at] != expected) return false;
  ++at;
  return true;
}

std::int64_t createdOf(const json& model) {
  if (auto at = model.find("created_at"); at != model.end() && at->is_string())
    return parseIsoDate(at->get_ref<const std::string&>()).value_or(0);
  if (auto at = model.find("created"); at != model.end() && at->is_number()) {
    double seconds = at->get<double>();
    // Anything beyond a few thousand years is not a date a provider means.
    if (std::isfinite(seconds) && std::abs(seconds) < 1e12)
      return static_cast<std::int64_t>(seconds);
  }
  return 0;
}

}  // namespace

std::optional<std::int64_t> parseIsoDate(std::string_view text) {
  std::size_t at = 0;
  auto year = digits(text, at, 4);
  if (!year || !skip(text, at, '-')) return std::nullopt;
  auto month = digits(text, at, 2);
  if (!month || !skip(text, at, '-')) return std::nullopt;
  auto day = digits(text, at, 2);
  if (!day) return std::nullopt;
  std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(unsigned(*month)),
                                   std::chrono::day(unsigned(*day))};
  if (!date.ok()) return std::nullopt;
  std::int64_t seconds = std::chrono::sys_days(date).time_since_epoch() / std::chrono::seconds(1);
  if (at == text.size()) return seconds;

  if (!skip(text, at, 'T') && !skip(text, at, 't') && !skip(text, at, ' ')) return std::nullopt;
  auto hour = digits(text, at, 2);
  if (!hour || !skip(text, at, ':')) return std::nullopt;
  auto minute = digits(text, at, 2);
  if (!minute) return std::nullopt;
  int second = 0;
  if (skip(text, at, ':')) {
    auto read = digits(text, at, 2);
    if (!read) return std::nullopt;
    second = *read;
  }
  if (*hour > 23 || *minute > 59 || second > 60) return std::nullopt;
  if (skip(text, at, '.') || skip(text, at, ',')) {
    std::size_t start = at;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') ++at;
    if (at == start) return std::nullopt;
  }
  seconds += *hour * 3600 + *minute * 60 + second;
  if (at == text.size() || skip(text, at, 'Z') || skip(text, at, 'z'))
    return at == text.size() ? std::optional(seconds) : std::nullopt;
  int sign = text[at] == '+' ? -1 : text[at] == '-' ? 1 : 0;
  if (sign == 0) return std::nullopt;
  ++at;
  auto offsetHours = digits(text, at, 2);
  if (!offsetHours) return std::nullopt;
  skip(text, at, ':');
  auto offsetMinutes = digits(text, at, 2);
  if (!offsetMinutes || at != text.size() || *offsetHours > 23 || *offsetMinutes > 59)
    return std::nullopt;
  return seconds + sign * (*offsetHours * 3600 + *offsetMinutes * 60);
}

std::expected<std::vector<ListedModel>, ModelListFailure> readModelList(AIProvider provider,
                                                                        long status,
                                                                        std::string_view body) {
  if (status != 200) return std::unexpected(ModelListFailure{fmt::format("HTTP {}", status)});
  json reply = json::parse(body, nullptr, /*allow_exceptions=*/false);
  if (!reply.is_object()) return std::unexpected(ModelListFailure{"réponse illisible"});
  auto data = reply.find("data");
  if (data == reply.end() || !data->is_array())
    return std::unexpected(ModelListFailure{"pas de tableau data"});

  const ModelListEndpoint* endpoint = endpointOf(provider);
  const std::string_view prefix = endpoint ? endpoint->idPrefix : std::string_view();
  std::vector<ListedModel> models;
  for (const auto& model : *data) {
    if (!model.is_object()) continue;
    auto id = model.find("id");
    if (id == model.end() || !id->is_string()) continue;
    const auto& text = id->get_ref<const std::string&>();
    if (text.empty() || !text.starts_with(prefix)) continue;
    models.push_back({text, createdOf(model)});
  }
  std::ranges::stable_sort(models, std::greater{}, &ListedModel::created);
  return models;
}

std::string_view modelFamily(std::string_view id) {
  const std::string lower = lowerAscii(id);
  for (auto family : kModelFamilies)
    if (lower.contains(family)) return family;
  return {};
}

std::optional<std::string> replacementModel(AIProvider provider, std::string_view retired,
                                            std::span<const std::string> list) {
  auto firstOther = [&](auto&& accepts) -> std::optional<std::string> {
    for (const auto& id : list)
      if (id != retired && accepts(id)) return id;
    return std::nullopt;
  };
  if (auto family = modelFamily(retired); !family.empty())
    if (auto same = firstOther([&](const std::string& id) { return modelFamily(id) == family; }))
      return same;
  const ModelFallback* fallback = fallbackOf(provider);
  if (!fallback) return std::nullopt;
  auto near = firstOther([&](const std::string& id) {
    return fallback->byFamily ? modelFamily(id) == fallback->word
                              : lowerAscii(id).contains(fallback->word);
  });
  if (near) return near;
  return firstOther([](const std::string&) { return true; });
}

std::expected<std::vector<ListedModel>, ModelListFailure> fetchModelList(const HttpClient& http,
                                                                         const Settings& settings,
                                                                         AIProvider provider,
                                                                         std::string_view key) {
  const ModelListEndpoint* endpoint = endpointOf(provider);
  if (!endpoint) return std::unexpected(ModelListFailure{"pas de liste pour ce fournisseur"});
  if (key.empty()) return std::unexpected(ModelListFailure{"pas de clé"});

  std::string host = settings.text(endpoint->hostSetting);
  while (host.ends_with('/')) host.pop_back();
  HttpRequest request;
  request.method = "GET";
  request.url = host + std::string(endpoint->path);
  request.headers.emplace_back(endpoint->keyHeader,
                               std::string(endpoint->keyPrefix) + std::string(key));
  if (!endpoint->versionHeader.empty())
    request.headers.emplace_back(endpoint->versionHeader, endpoint->version);
  request.timeout = kListTimeout;

  auto reply = http.send(request);
  if (!reply) return std::unexpected(ModelListFailure{"injoignable : " + reply.error().detail});
  return readModelList(provider, reply->status, reply->body);
}

Models::Models(const HttpClient& http, Settings& settings, const Loc& loc, Log& log)
    : http_(http), settings_(settings), loc_(loc), log_(log) {}

ModelNotice Models::listFailureNotice() const {
  return {loc_.t("Liste indisponible : vérifie la clé et la connexion."), kFailureNoticeTime};
}

Models::Replaced Models::onModelGone(AIProvider provider, std::string_view key) {
  const ModelNotice keepNotice{
      loc_.t("Ce modèle n'existe plus chez le fournisseur : choisis-en un autre dans Réglages → "
             "IA → Modèles."),
      std::nullopt};
  const ProviderRow& row = providerRow(provider);
  if (row.modelKey.empty()) return {std::nullopt, keepNotice};
  const std::string retired = settings_.text(row.modelKey);

  auto list = fetchModelList(http_, settings_, provider, key);
  if (!list) {
    log_.log(fmt::format("IA : liste des modèles de {} indisponible ({})", row.label,
                         list.error().detail));
    return {std::nullopt, keepNotice};
  }
  std::vector<std::string> ids;
  for (auto& model : *list) ids.push_back(std::move(model.id));
  auto chosen = replacementModel(provider, retired, ids);
  if (!chosen) return {std::nullopt, keepNotice};

  bool replaced = false;
  auto stored = settings_.update(row.modelKey, [&](std::optional<SettingValue> current) {
    const auto* text = current ? std::get_if<std::string>(&*current) : nullptr;
    // The learner may have picked another model while the list was on its way.
    const std::string now = text ? *text : std::string(row.defaultModel);
    if (now != retired) return current;
    replaced = true;
    return std::optional<SettingValue>(*chosen);
  });
  if (!stored) {
    log_.log(fmt::format("IA : modèle « {} » retiré, mais les réglages n'ont pas pu être écrits",
                         retired));
    return {std::nullopt, keepNotice};
  }
  if (!replaced) return {std::nullopt, {}};
  log_.log(fmt::format("IA : modèle « {} » retiré → « {} »", retired, *chosen));
  return {chosen, {loc_.t("Modèle IA mis à jour :") + " " + *chosen, kUpdatedNoticeTime}};
}

}  // namespace vesko
