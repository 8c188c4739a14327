#include "cli/settings_command.h"

#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/input.h"
#include "cli/zh_output.h"
#include "dict/cedict.h"
#include "settings/environment.h"
#include "settings/hant_cache.h"
#include "settings/loc.h"
#include "settings/log.h"
#include "text/unicode.h"

namespace vesko::cli {
namespace {

using nlohmann::json;

int fail(const std::string& message) {
  std::cerr << "vesko: " << message << '\n';
  return 2;
}

void print(const json& value) {
  std::cout << dump(value) << '\n';
}

json toJson(const SettingValue& value) {
  return json::parse(settingJson(value));
}

// Texts as they are; everything else as JSON (true, 0.1, {"calls":1.0}).
std::string shown(const SettingValue& value) {
  if (const auto* text = std::get_if<std::string>(&value)) return text->empty() ? "\"\"" : *text;
  return settingJson(value);
}

std::string errorText(SettingsError error, const std::filesystem::path& file) {
  switch (error) {
    case SettingsError::unknownKey:
      return "unknown setting";
    case SettingsError::wrongType:
      return "the value has the wrong type";
    case SettingsError::unreadable:
      return fmt::format("{} cannot be read, so it is left as it is", file.string());
    case SettingsError::writeFailed:
      return fmt::format("cannot write {}", file.string());
  }
  return "cannot change the setting";
}

const SettingKey* knownKey(const std::string& key, int& exitCode) {
  const SettingKey* row = findSettingKey(key);
  if (!row) exitCode = fail(fmt::format("unknown setting '{}' (see vesko config list)", key));
  return row;
}

struct ConfigOptions {
  std::string key;
  std::string value;
  bool json = false;
};

void addConfig(CLI::App& app, Settings& settings, int& exitCode,
               const std::shared_ptr<ConfigOptions>& shared) {
  ConfigOptions& options = *shared;
  auto* config = app.add_subcommand("config", "Read and change the settings (settings.json)");
  config->require_subcommand(1);

  auto* get = config->add_subcommand("get", "Print a setting's value (its default when unset)");
  get->add_option("KEY", options.key, "Setting key, e.g. uiLang or defLang.zh")->required();
  get->add_flag("--json", options.json, "Write JSON");
  get->callback([&, shared] {
    const SettingKey* row = knownKey(options.key, exitCode);
    if (!row) return;
    auto stored = settings.stored(options.key);
    SettingValue value = stored ? *stored : defaultValue(*row);
    if (options.json)
      print({{"key", options.key}, {"value", toJson(value)}, {"default", !stored}});
    else
      std::cout << shown(value) << '\n';
  });

  auto* set = config->add_subcommand("set", "Store a setting, typed by its default");
  set->add_option("KEY", options.key, "Setting key")->required();
  set->add_option("VALUE", options.value, "New value")->required();
  set->add_flag("--json", options.json, "Write the stored value as JSON");
  set->callback([&, shared] {
    const SettingKey* row = knownKey(options.key, exitCode);
    if (!row) return;
    auto value = parseSettingValue(*row, options.value);
    if (!value) {
      exitCode = fail(fmt::format("{}: {}", options.key, value.error()));
      return;
    }
    if (auto done = settings.set(options.key, *value); !done) {
      exitCode = fail(fmt::format("{}: {}", options.key, errorText(done.error(), settings.file())));
      return;
    }
    if (options.json) print({{"key", options.key}, {"value", toJson(*value)}});
  });

  auto* unset = config->add_subcommand("unset", "Remove a setting, so that its default applies");
  unset->add_option("KEY", options.key, "Setting key")->required();
  unset->callback([&, shared] {
    if (!knownKey(options.key, exitCode)) return;
    if (auto done = settings.remove(options.key); !done)
      exitCode = fail(fmt::format("{}: {}", options.key, errorText(done.error(), settings.file())));
  });

  auto* list = config->add_subcommand("list", "Every setting with its value");
  list->add_flag("--json", options.json, "Write one JSON object");
  list->callback([&, shared] {
    auto stored = settings.storedValues();
    auto storedValue = [&](std::string_view key) -> const SettingValue* {
      auto it =
          std::find_if(stored.begin(), stored.end(), [&](const auto& p) { return p.first == key; });
      return it == stored.end() ? nullptr : &it->second;
    };
    struct Line {
      std::string key;
      SettingValue value;
      bool isDefault;
      std::string_view about;
    };
    std::vector<Line> lines;
    for (const auto& row : kSettingKeys) {
      if (isFamily(row)) {
        for (const auto& [key, value] : stored)
          if (key.starts_with(row.key) && findSettingKey(key) == &row)
            lines.push_back({key, value, false, row.about});
        continue;
      }
      const SettingValue* value = storedValue(row.key);
      lines.push_back(
          {std::string(row.key), value ? *value : defaultValue(row), !value, row.about});
    }
    if (options.json) {
      json out = json::object();
      for (const auto& line : lines) out[line.key] = toJson(line.value);
      print(out);
      return;
    }
    std::size_t width = 0;
    for (const auto& line : lines) width = std::max(width, line.key.size());
    for (const auto& line : lines)
      std::cout << fmt::format("{:<{}}  {}{}\n", line.key, width, shown(line.value),
                               line.isDefault ? "  (default)" : "");
  });
}

struct TrOptions {
  std::string text;
  std::string ui;
  std::string missing;
  bool json = false;
};

// Every French text of the built-in tables, in the order first met.
std::vector<std::string_view> allTexts() {
  std::vector<std::string_view> texts;
  for (auto language : kTableLanguages)
    for (const auto& row : builtInRows(language))
      if (std::find(texts.begin(), texts.end(), row.french) == texts.end())
        texts.push_back(row.french);
  return texts;
}

int listMissing(const TrOptions& options, const LocTables& tables) {
  auto language = tableFor(options.missing);
  if (!language)
    return fail(
        fmt::format("no table for '{}': use en, zh, zh-Hant, pl, ru or th", options.missing));
  std::vector<std::string_view> missing;
  for (auto text : allTexts())
    if (!tables[*language].find(text)) missing.push_back(text);
  if (options.json) {
    print(json(missing));
  } else {
    for (auto text : missing) std::cout << text << '\n';
  }
  return 0;
}

int translate(const TrOptions& options, Settings& settings) {
  auto text = readText(options.text);
  if (!text) return fail(text.error().message);
  std::string french = text::toUtf8(*text);
  if (!options.ui.empty()) settings.overrideForRun("uiLang", options.ui);

  LocTables tables;
  std::unique_ptr<CEDict> dictionary = std::make_unique<CEDict>();
  HantCache hant(*dictionary);
  Loc loc(settings, tables, hant, preferredLanguages(processEnvironment()));
  // The dictionary is needed only for a text the traditional table lacks and the simplified one
  // has; loading it costs more than everything else here, so it is loaded only then. Without it
  // the simplified text is shown.
  std::unique_ptr<CEDict> loadedDictionary;
  std::optional<HantCache> loadedHant;
  std::optional<Loc> loadedLoc;
  const Loc* chosen = &loc;
  if (loc.isTraditional() && !tables[TableLanguage::traditionalChinese].find(french) &&
      tables[TableLanguage::simplifiedChinese].find(french)) {
    if (auto loaded = loadDictionary({})) {
      loadedDictionary = std::move(*loaded);
      loadedHant.emplace(*loadedDictionary);
      loadedLoc.emplace(settings, tables, *loadedHant, preferredLanguages(processEnvironment()));
      chosen = &*loadedLoc;
    }
  }
  std::string translated = chosen->t(french);
  if (options.json)
    print({{"text", french},
           {"translation", translated},
           {"language", chosen->uiLanguage()},
           {"traditional", chosen->isTraditional()}});
  else
    std::cout << translated << '\n';
  return 0;
}

struct LogOptions {
  long long since = 180;
  bool json = false;
};

}  // namespace

void addConfigCommands(CLI::App& app, Settings& settings, int& exitCode) {
  addConfig(app, settings, exitCode, std::make_shared<ConfigOptions>());
}

void addTrCommand(CLI::App& app, Settings& settings, int& exitCode) {
  auto shared = std::make_shared<TrOptions>();
  TrOptions& options = *shared;
  auto* tr =
      app.add_subcommand("tr", "Translate a French interface text into the interface language");
  tr->add_option("TEXT", options.text,
                 "French text as the program shows it (- reads standard input)");
  tr->add_option("--ui", options.ui,
                 "Interface language for this run: auto, fr, en, zh, zh-Hant, th, ru, pl");
  tr->add_option("--missing", options.missing, "List the texts that table LANG has no row for")
      ->option_text("LANG");
  tr->add_flag("--json", options.json, "Write JSON");
  tr->callback([&options, &settings, &exitCode, shared] {
    if (!options.missing.empty()) {
      exitCode = listMissing(options, LocTables{});
    } else if (options.text.empty()) {
      exitCode = fail("tr needs a TEXT or --missing LANG");
    } else {
      exitCode = translate(options, settings);
    }
  });
}

void addLogCommands(CLI::App& app, const Folders& folders, const Clock& clock, int& exitCode) {
  auto shared = std::make_shared<LogOptions>();
  LogOptions& options = *shared;
  auto* log = app.add_subcommand("log", "The diagnostic log (debug.log)");
  log->require_subcommand(1);
  log->add_subcommand("path", "Where debug.log is")->callback([&folders] {
    std::cout << folders.logFile().string() << '\n';
  });
  auto* recent =
      log->add_subcommand("recent", "The lines of debug.log written in the last seconds");
  recent->add_option("--since", options.since, "How many seconds back (default 180)")
      ->check(CLI::Range(0LL, 86'399LL));
  recent->add_flag("--json", options.json, "Write a JSON array of lines");
  recent->callback([&options, &folders, &clock, &exitCode, shared] {
    std::string lines =
        recentFileLines(folders.logFile(), std::chrono::seconds(options.since), clock);
    if (options.json) {
      json out = json::array();
      std::size_t start = 0;
      while (start < lines.size()) {
        auto end = lines.find('\n', start);
        out.push_back(lines.substr(start, end - start));
        if (end == std::string::npos) break;
        start = end + 1;
      }
      print(out);
    } else if (!lines.empty()) {
      std::cout << lines << '\n';
    }
    exitCode = 0;
  });
}

}  // namespace vesko::cli
