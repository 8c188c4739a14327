#include "ai/usage.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <nlohmann/json.hpp>

#include "ai/price.h"
#include "ai/usage_table.h"

namespace vesko {
namespace {

using nlohmann::json;

// A token count as the reply gives it; anything a real reply would not hold counts 0, so a
// hostile reply cannot lower or poison the totals.
double tokens(const json& usage, const char* field) {
  auto it = usage.find(field);
  if (it == usage.end() || !it->is_number()) return 0;
  double value = it->get<double>();
  return std::isfinite(value) && value > 0 ? value : 0;
}

std::chrono::year_month_day localDate(const Clock& clock, TimePoint t) {
  auto seconds = std::chrono::floor<std::chrono::seconds>(t);
  auto local = seconds + clock.utcOffset(t);
  return std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(local));
}

const UsageAccount* accountOf(AIProvider provider) {
  auto it = std::ranges::find(kUsageAccounts, provider, &UsageAccount::provider);
  return it == std::end(kUsageAccounts) ? nullptr : &*it;
}

void add(SettingRecord& record, const std::string& field, double amount) {
  record[field] += amount;
}

}  // namespace

std::optional<ReplyUsage> readReplyUsage(std::string_view replyBody) {
  json reply = json::parse(replyBody, nullptr, /*allow_exceptions=*/false);
  if (!reply.is_object()) return std::nullopt;
  auto usage = reply.find("usage");
  if (usage == reply.end() || !usage->is_object()) return std::nullopt;
  ReplyUsage read;
  read.input = tokens(*usage, "input_tokens") + tokens(*usage, "cache_creation_input_tokens") +
               tokens(*usage, "cache_read_input_tokens") + tokens(*usage, "prompt_tokens");
  read.output = tokens(*usage, "output_tokens") + tokens(*usage, "completion_tokens");
  if (auto model = reply.find("model"); model != reply.end() && model->is_string())
    read.model = model->get<std::string>();
  return read;
}

std::string costText(double dollars) {
  if (!(dollars >= 0.005)) return "< 0,01 $";
  std::string text = fmt::format("{:.2f} $", dollars);
  std::ranges::replace(text, '.', ',');
  return text;
}

std::string dayKey(const Clock& clock, TimePoint t) {
  auto date = localDate(clock, t);
  return fmt::format("aiu.d.{:04}-{:02}-{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
}

std::string monthKey(const Clock& clock, TimePoint t, int monthsBack) {
  auto date = localDate(clock, t);
  auto month = std::chrono::year_month(date.year(), date.month()) - std::chrono::months(monthsBack);
  return fmt::format("aiu.m.{:04}-{:02}", static_cast<int>(month.year()),
                     static_cast<unsigned>(month.month()));
}

std::string costField(AIProvider provider) {
  const UsageAccount* account = accountOf(provider);
  return account ? "usd." + std::string(account->costName) : std::string();
}

AIUsage::AIUsage(Settings& settings, const Clock& clock) : settings_(settings), clock_(clock) {}

bool AIUsage::record(AIProvider provider, std::string_view replyBody) {
  // The relay's replies are paid by the product, not by the learner's key.
  if (provider == AIProvider::vesko) return false;
  auto usage = readReplyUsage(replyBody);
  if (!usage || usage->input + usage->output == 0) return false;
  const Price rate = price(provider, usage->model);
  const double cost = (usage->input * rate.input + usage->output * rate.output) / 1'000'000;
  if (!std::isfinite(usage->input + usage->output) || !std::isfinite(cost)) return false;

  const std::string field = costField(provider);
  // One instant for both keys, so that a reply at midnight on the last day of a month is not
  // counted in one month's day and the next month's total.
  const TimePoint now = clock_.now();
  bool stored = true;
  for (const auto& key : {dayKey(clock_, now), monthKey(clock_, now)}) {
    auto done = settings_.update(key, [&](std::optional<SettingValue> current) {
      SettingRecord record;
      if (current)
        if (auto* old = std::get_if<SettingRecord>(&*current)) record = *old;
      add(record, "calls", 1);
      add(record, "in", usage->input);
      add(record, "out", usage->output);
      add(record, "usd", cost);
      add(record, field, cost);
      return std::optional<SettingValue>(std::move(record));
    });
    stored = stored && done.has_value();
  }
  return stored;
}

SettingRecord AIUsage::totals(std::string_view periodKey) const {
  return settings_.record(periodKey);
}

UsageReport AIUsage::report(const Loc& loc) const {
  const TimePoint now = clock_.now();
  UsageReport report;
  report.title = loc.t("Ce que tu consommes (estimation)");
  const std::pair<std::string, std::string> periods[] = {
      {loc.t("IA aujourd'hui"), dayKey(clock_, now)},
      {loc.t("IA ce mois-ci"), monthKey(clock_, now)},
      {loc.t("IA le mois dernier"), monthKey(clock_, now, 1)},
  };
  for (const auto& [label, key] : periods) {
    UsageLine line{label, key, totals(key), {}, {}};
    auto calls = line.totals.find("calls");
    const bool empty = calls == line.totals.end() || !(calls->second > 0);
    auto usd = line.totals.find("usd");
    line.amount =
        empty ? loc.t("rien pour l'instant") : costText(usd == line.totals.end() ? 0 : usd->second);
    for (const auto& account : kUsageAccounts) {
      auto share = line.totals.find(costField(account.provider));
      if (share != line.totals.end() && share->second > 0)
        line.byProvider.emplace_back(account.provider, share->second);
    }
    report.lines.push_back(std::move(line));
  }
  report.note = loc.t(
      "Calculé avec les prix publics des fournisseurs, à partir de ce que chaque réponse indique. "
      "Le chiffre exact est sur leur site.");
  for (const auto& account : kUsageAccounts)
    if (!account.usagePage.empty())
      report.usagePages.emplace_back(account.provider, account.usagePage);
  return report;
}

}  // namespace vesko
