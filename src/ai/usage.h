#pragma once
// AI usage accounting: the tokens each cloud reply reports and their estimated cost in dollars,
// added to one settings record per day ("aiu.d.yyyy-MM-dd") and one per month ("aiu.m.yyyy-MM"),
// in local time, for the "Ce que tu consommes (estimation)" lines. Created once beside the AI
// entry point, which calls `record` for every reply below 400.
// Thread contract: any thread. Each record is changed with Settings::update, one locked
// read-modify-write, so two replies counted at once never lose each other's counts.

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ai/provider.h"
#include "settings/clock.h"
#include "settings/loc.h"
#include "settings/settings.h"

namespace vesko {

// What one reply says it used. The Anthropic names (input_tokens, cache_creation_input_tokens,
// cache_read_input_tokens, output_tokens) and the OpenAI ones (prompt_tokens, completion_tokens)
// are simply added: a reply carries only one family.
struct ReplyUsage {
  double input = 0;
  double output = 0;
  std::string model;  // the reply's `model`, empty when absent
};

// Nothing when the body is not a JSON object or has no `usage` object. A field that is missing,
// not a number, negative or not finite counts 0.
std::optional<ReplyUsage> readReplyUsage(std::string_view replyBody);

// "< 0,01 $" below half a cent, else the amount with two decimals and a decimal comma: "1,25 $".
std::string costText(double dollars);

// "aiu.d.2025-03-09" and "aiu.m.2025-03" for the local date of `t`; `monthsBack` 1 names the
// previous month.
std::string dayKey(const Clock& clock, TimePoint t);
std::string monthKey(const Clock& clock, TimePoint t, int monthsBack = 0);

// The record field that holds `provider`'s share of the cost ("usd.Claude"); empty for the relay.
std::string costField(AIProvider provider);

// One of the three display lines.
struct UsageLine {
  std::string label;  // "IA aujourd'hui", in the interface language
  std::string key;    // the record shown: "aiu.d.2025-03-09"
  SettingRecord totals;
  std::string amount;  // the cost text, or "rien pour l'instant" for an empty record
  std::vector<std::pair<AIProvider, double>> byProvider;  // in the providers' order, non-zero only
};

struct UsageReport {
  std::string title;             // "Ce que tu consommes (estimation)"
  std::vector<UsageLine> lines;  // today, this month, last month
  std::string note;              // how the figures are worked out
  std::vector<std::pair<AIProvider, std::string_view>> usagePages;  // the consoles' usage pages
};

class AIUsage {
 public:
  // `settings` and `clock` must outlive the counter.
  AIUsage(Settings& settings, const Clock& clock);
  AIUsage(const AIUsage&) = delete;
  AIUsage& operator=(const AIUsage&) = delete;

  // Adds one reply of `provider` to today's and this month's records. False when there was
  // nothing to count (the relay, no usage, zero tokens) or a record could not be written.
  bool record(AIProvider provider, std::string_view replyBody);

  // The record stored under `periodKey` (an empty one when none).
  SettingRecord totals(std::string_view periodKey) const;

  // The three lines for now, with every text in the interface language of `loc`.
  UsageReport report(const Loc& loc) const;

 private:
  Settings& settings_;
  const Clock& clock_;
};

}  // namespace vesko
