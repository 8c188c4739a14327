#pragma once
// Every settings key the product reads, with its type and default: the one place a default is
// written. A key that ends in "." names a family ("defLang." covers defLang.zh, defLang.ja…).
// Constant data; any thread.

#include <optional>
#include <span>
#include <string_view>

namespace vesko {

enum class SettingKind { boolean, integer, real, text, record };

struct SettingKey {
  std::string_view key;
  SettingKind kind;
  double number = 0;       // the default of boolean (0 or 1), integer and real keys
  std::string_view text;   // the default of text keys
  std::string_view about;  // one line for `vesko config list`
};

namespace setting_rows {
constexpr SettingKey flag(std::string_view key, bool value, std::string_view about) {
  return {key, SettingKind::boolean, value ? 1.0 : 0.0, {}, about};
}
constexpr SettingKey integer(std::string_view key, int value, std::string_view about) {
  return {key, SettingKind::integer, static_cast<double>(value), {}, about};
}
constexpr SettingKey real(std::string_view key, double value, std::string_view about) {
  return {key, SettingKind::real, value, {}, about};
}
constexpr SettingKey text(std::string_view key, std::string_view value, std::string_view about) {
  return {key, SettingKind::text, 0, value, about};
}
constexpr SettingKey record(std::string_view key, std::string_view about) {
  return {key, SettingKind::record, 0, {}, about};
}
}  // namespace setting_rows

// Reading modes (mode.*): 0 read on simple hover, 1 only while the trigger key is held, 2 not
// studied. A new learner reads Chinese on hover and has switched nothing else on yet.
// clang-format off
inline constexpr SettingKey kSettingKeys[] = {
  setting_rows::real("delay", 0.1, "rest of the pointer before a read, in seconds"),
  setting_rows::integer("modifier", 4, "trigger key: 1 Control, 2 Shift, 3 Super, other Alt"),
  setting_rows::integer("mode.zh", 0, "reading mode for Chinese: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.ja", 2, "reading mode for Japanese: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.th", 2, "reading mode for Thai: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.fr", 2, "reading mode for French: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.en", 2, "reading mode for English: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.ru", 2, "reading mode for Russian: 0 hover, 1 with the key held, 2 off"),
  setting_rows::integer("mode.pl", 2, "reading mode for Polish: 0 hover, 1 with the key held, 2 off"),
  setting_rows::text("dicts", "cedict", "enabled dictionaries, comma-separated"),
  setting_rows::flag("conj", true, "show conjugation and grammar notes"),
  setting_rows::text("prefLatin", "en", "language that wins a Latin-script word when French and English are both studied"),
  setting_rows::text("prefHan", "zh", "language that wins Han-only text when Chinese and Japanese are both studied"),
  setting_rows::text("uiLang", "auto", "interface language: auto, fr, en, zh, zh-Hant, th, ru, pl"),
  setting_rows::text("defLang.", "auto", "language of definitions per studied language: orig, auto or a code"),
  setting_rows::integer("aiProvider", 0, "AI provider: 0 local, 1 Claude, 2 ChatGPT, 3 DeepSeek, 4 Vesko"),
  setting_rows::integer("aiBackup", 0, "backup AI provider: 1 Claude, 2 ChatGPT, 3 DeepSeek, other none"),
  setting_rows::flag("aiBackupInChina", false, "in a Chinese time zone, ask the backup before Claude or ChatGPT"),
  setting_rows::text("claudeModel", "claude-haiku-4-5-20251001", "Claude model"),
  setting_rows::text("openaiModel", "gpt-4o-mini", "ChatGPT model"),
  setting_rows::text("deepseekModel", "deepseek-flash", "DeepSeek model"),
  setting_rows::text("localModelURL", "http://127.0.0.1:11434/v1", "base URL of the local model server (OpenAI chat-completions protocol)"),
  setting_rows::text("localModel", "", "model of the local server; empty: the first it lists"),
  setting_rows::text("claudeHost", "https://api.anthropic.com", "Anthropic API host"),
  setting_rows::text("openaiHost", "https://api.openai.com", "OpenAI API host"),
  setting_rows::text("deepseekHost", "https://api.deepseek.com", "DeepSeek API host"),
  setting_rows::text("relayHost", "", "Vesko web service host for the relay; empty: none"),
  setting_rows::flag("debugLog", false, "write the diagnostic log to debug.log"),
  setting_rows::text("review.oldDay", "", "day of review.oldCount (yyyy-MM-dd)"),
  setting_rows::integer("review.oldCount", 0, "old cards graded that day"),
  setting_rows::text("review.newDay", "", "day of review.newCount (yyyy-MM-dd)"),
  setting_rows::integer("review.newCount", 0, "new cards graded that day"),
  setting_rows::record("aiu.d.", "AI usage of one day (aiu.d.yyyy-MM-dd): calls, in, out, usd"),
  setting_rows::record("aiu.m.", "AI usage of one month (aiu.m.yyyy-MM): calls, in, out, usd"),
  // Kept words sent to Anki
  setting_rows::text("ankiConnectURL", "http://127.0.0.1:8765", "address of Anki's AnkiConnect add-on, for vesko anki sync"),
  setting_rows::text("ankiDeck", "Vesko", "Anki deck that vesko anki sync fills"),
};
// clang-format on

// The row for `key`: its own, else the family whose prefix it extends; nothing for an unknown key.
constexpr const SettingKey* findSettingKey(std::string_view key) {
  const SettingKey* family = nullptr;
  for (const auto& row : kSettingKeys) {
    if (row.key == key && !row.key.ends_with('.')) return &row;
    if (row.key.ends_with('.') && key.size() > row.key.size() && key.starts_with(row.key))
      family = &row;
  }
  return family;
}

constexpr bool isFamily(const SettingKey& row) {
  return row.key.ends_with('.');
}

}  // namespace vesko
