#include "cli/usage_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ai/models.h"
#include "ai/usage.h"
#include "cli/zh_output.h"
#include "dict/cedict.h"
#include "settings/environment.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

int fail(const std::string& message) {
  std::cerr << "vesko: " << message << '\n';
  return 2;
}

// The interface texts without the Chinese dictionary: every text shown here has a row in the
// traditional table, so the dictionary is never needed to convert one.
struct Texts {
  explicit Texts(const Settings& settings)
      : hant(dictionary), loc(settings, tables, hant, preferredLanguages(processEnvironment())) {}
  LocTables tables;
  CEDict dictionary;
  HantCache hant;
  Loc loc;
};

double field(const SettingRecord& record, const std::string& name) {
  auto it = record.find(name);
  return it == record.end() ? 0 : it->second;
}

// Replies and tokens are whole numbers; the record keeps them as reals.
long long count(const SettingRecord& record, const std::string& name) {
  const double value = field(record, name);
  return std::isfinite(value) && std::abs(value) < 9e18 ? std::llround(value) : 0;
}

json lineJson(const UsageLine& line) {
  json byProvider = json::object();
  for (const auto& [provider, dollars] : line.byProvider)
    byProvider[std::string(providerRow(provider).name)] = dollars;
  return {{"key", line.key},
          {"calls", count(line.totals, "calls")},
          {"in", count(line.totals, "in")},
          {"out", count(line.totals, "out")},
          {"usd", field(line.totals, "usd")},
          {"byProvider", byProvider}};
}

void printUsage(const UsageReport& report, const Loc& loc) {
  std::size_t width = 0;
  for (const auto& line : report.lines) width = std::max(width, text::displayWidth(line.label));
  std::cout << report.title << '\n';
  for (const auto& line : report.lines) {
    std::string shares;
    for (const auto& [provider, dollars] : line.byProvider)
      shares += fmt::format("{}{} {}", shares.empty() ? "" : " · ",
                            loc.t(providerRow(provider).label), costText(dollars));
    std::string shown = "  " + line.label +
                        std::string(width - text::displayWidth(line.label) + 2, ' ') + line.amount;
    if (!shares.empty()) shown += "  (" + shares + ")";
    std::cout << shown << '\n';
  }
  std::cout << report.note << '\n';
  std::size_t nameWidth = 0;
  for (const auto& [provider, page] : report.usagePages)
    nameWidth = std::max(nameWidth, text::displayWidth(loc.t(providerRow(provider).label)));
  for (const auto& [provider, page] : report.usagePages) {
    const std::string name = loc.t(providerRow(provider).label);
    std::cout << "  " << name << std::string(nameWidth - text::displayWidth(name) + 2, ' ') << page
              << '\n';
  }
}

struct UsageOptions {
  bool json = false;
};

struct ModelsOptions {
  std::string provider;
  bool json = false;
};

std::string dateOf(std::int64_t seconds) {
  std::chrono::year_month_day date{std::chrono::floor<std::chrono::days>(
      std::chrono::sys_seconds(std::chrono::seconds(seconds)))};
  return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
}

int listModels(const ModelsOptions& options, Settings& settings, const HttpClient& http,
               const KeyReader& readKey) {
  auto provider = providerNamed(options.provider);
  if (!provider || !usesKey(*provider))
    return fail(fmt::format("models: '{}' has no model list: use claude, openai or deepseek",
                            options.provider));
  auto list = fetchModelList(http, settings, *provider, readKey(*provider));
  if (!list) {
    Texts texts(settings);
    return fail(fmt::format("{} ({})",
                            texts.loc.t("Liste indisponible : vérifie la clé et la connexion."),
                            list.error().detail));
  }
  if (options.json) {
    json out = json::array();
    for (const auto& model : *list) {
      json entry = {{"id", model.id}};
      if (model.created != 0) entry["created"] = model.created;
      out.push_back(std::move(entry));
    }
    std::cout << dump(out) << '\n';
    return 0;
  }
  std::size_t width = 0;
  for (const auto& model : *list) width = std::max(width, model.id.size());
  for (const auto& model : *list) {
    if (model.created == 0)
      std::cout << model.id << '\n';
    else
      std::cout << fmt::format("{:<{}}  {}\n", model.id, width, dateOf(model.created));
  }
  return 0;
}

}  // namespace

void addUsageCommand(CLI::App& app, Settings& settings, const Clock& clock, int& exitCode) {
  auto shared = std::make_shared<UsageOptions>();
  auto* usage = app.add_subcommand(
      "usage", "What the AI replies cost: today, this month and last month (an estimate)");
  usage->add_flag("--json", shared->json, "Write one JSON object");
  usage->callback([shared, &settings, &clock, &exitCode] {
    Texts texts(settings);
    AIUsage counter(settings, clock);
    auto report = counter.report(texts.loc);
    if (shared->json) {
      std::cout << dump({{"today", lineJson(report.lines[0])},
                         {"month", lineJson(report.lines[1])},
                         {"lastMonth", lineJson(report.lines[2])}})
                << '\n';
    } else {
      printUsage(report, texts.loc);
    }
    exitCode = 0;
  });
}

void addModelsCommand(CLI::App& app, Settings& settings, const HttpClient& http, KeyReader readKey,
                      int& exitCode) {
  auto shared = std::make_shared<ModelsOptions>();
  auto* models = app.add_subcommand("models", "A cloud provider's models, newest first");
  models->add_option("PROVIDER", shared->provider, "claude, openai or deepseek")->required();
  models->add_flag("--json", shared->json, "Write a JSON array of {id, created}");
  models->callback([shared, &settings, &http, readKey = std::move(readKey), &exitCode] {
    exitCode = listModels(*shared, settings, http, readKey);
  });
}

}  // namespace vesko::cli
