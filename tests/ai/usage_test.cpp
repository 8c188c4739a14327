#include "ai/usage.h"

#include <gtest/gtest.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>

#include "ai/price.h"
#include "dict/cedict.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

TEST(UsageTest, ReplyUsageAddsBothFamiliesOfFields) {
  struct Row {
    const char* body;
    bool found;
    double input;
    double output;
    const char* model;
  };
  const Row rows[] = {
      {R"({"model":"gpt-4o-mini","usage":{"prompt_tokens":1000,"completion_tokens":500}})", true,
       1000, 500, "gpt-4o-mini"},
      // Claude: the cache tokens are input tokens.
      {R"({"model":"claude-haiku-4-5","usage":{"input_tokens":10,"cache_creation_input_tokens":200,
          "cache_read_input_tokens":3000,"output_tokens":40}})",
       true, 3210, 40, "claude-haiku-4-5"},
      {R"({"usage":{"input_tokens":7}})", true, 7, 0, ""},
      {R"({"usage":{}})", true, 0, 0, ""},
      // Odd fields count 0 rather than lowering or poisoning the totals.
      {R"({"model":5,"usage":{"input_tokens":"12","output_tokens":true,"prompt_tokens":null,
          "completion_tokens":-40,"cache_read_input_tokens":-1e300}})",
       true, 0, 0, ""},
      // Beyond a double: the reader refuses the whole body.
      {R"({"usage":{"input_tokens":1e400,"output_tokens":5}})", false, 0, 0, ""},
      {R"({"usage":{"input_tokens":2.5,"output_tokens":[1]}})", true, 2.5, 0, ""},
      {R"({"model":"x"})", false, 0, 0, ""},
      {R"({"usage":[1,2]})", false, 0, 0, ""},
      {R"({"usage":"many"})", false, 0, 0, ""},
      {R"([{"usage":{"input_tokens":1}}])", false, 0, 0, ""},
      {"not json at all", false, 0, 0, ""},
      {R"({"usage":{"input_tokens":1)", false, 0, 0, ""},
      {"", false, 0, 0, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.body);
    auto usage = readReplyUsage(row.body);
    ASSERT_EQ(usage.has_value(), row.found);
    if (!usage) continue;
    EXPECT_DOUBLE_EQ(usage->input, row.input);
    EXPECT_DOUBLE_EQ(usage->output, row.output);
    EXPECT_EQ(usage->model, row.model);
  }
}

TEST(UsageTest, CostTextHasACommaAndHidesFractionsOfACent) {
  struct Row {
    double dollars;
    const char* text;
  };
  const Row rows[] = {
      {0, "< 0,01 $"},        {0.0012, "< 0,01 $"},
      {0.00499, "< 0,01 $"},  {0.006, "0,01 $"},
      {0.0149, "0,01 $"},     {1.5, "1,50 $"},
      {12.345678, "12,35 $"}, {1234.5, "1234,50 $"},
      {-3, "< 0,01 $"},       {std::nan(""), "< 0,01 $"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.dollars);
    EXPECT_EQ(costText(row.dollars), row.text);
  }
}

TEST(UsageTest, PeriodKeysFollowLocalTime) {
  struct Row {
    std::chrono::sys_seconds at;
    std::chrono::seconds offset;
    const char* day;
    const char* month;
    const char* previousMonth;
  };
  const Row rows[] = {
      {sys_days{std::chrono::year{2025} / 3 / 9} + 14h, 0s, "aiu.d.2025-03-09", "aiu.m.2025-03",
       "aiu.m.2025-02"},
      // 23:30 UTC on 31 December is already 1 January in Shanghai.
      {sys_days{std::chrono::year{2025} / 12 / 31} + 23h + 30min, 8h, "aiu.d.2026-01-01",
       "aiu.m.2026-01", "aiu.m.2025-12"},
      // 02:00 UTC on 1 March is still February in New York.
      {sys_days{std::chrono::year{2024} / 3 / 1} + 2h, -5h, "aiu.d.2024-02-29", "aiu.m.2024-02",
       "aiu.m.2024-01"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.day);
    testing::FakeClock clock(row.offset);
    EXPECT_EQ(dayKey(clock, row.at), row.day);
    EXPECT_EQ(monthKey(clock, row.at), row.month);
    EXPECT_EQ(monthKey(clock, row.at, 1), row.previousMonth);
  }
}

struct UsageFixture {
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "settings.json", clock};
  AIUsage usage{settings, clock};

  double field(const std::string& key, const std::string& name) const {
    auto record = usage.totals(key);
    auto it = record.find(name);
    return it == record.end() ? 0 : it->second;
  }
};

TEST(UsageTest, RecordsAddToTheDayAndTheMonth) {
  UsageFixture f;
  const auto today = dayKey(f.clock, f.clock.now());
  const auto month = monthKey(f.clock, f.clock.now());
  // The worked example: 1000 + 500 tokens of gpt-4o-mini cost 0.0012 dollars.
  EXPECT_TRUE(f.usage.record(AIProvider::openai,
                             R"({"model":"gpt-4o-mini","usage":{"prompt_tokens":1000,
                                 "completion_tokens":500}})"));
  EXPECT_DOUBLE_EQ(f.field(today, "usd"), 0.0012);
  EXPECT_EQ(costText(f.field(today, "usd")), "< 0,01 $");

  // Cache tokens are charged at the input price: 3000 × 1 + 100 × 5 per million for Haiku 4.5.
  EXPECT_TRUE(f.usage.record(AIProvider::claude,
                             R"({"model":"claude-haiku-4-5-20251001","usage":{"input_tokens":500,
                                 "cache_read_input_tokens":2500,"output_tokens":100}})"));
  for (const auto& key : {today, month}) {
    SCOPED_TRACE(key);
    EXPECT_DOUBLE_EQ(f.field(key, "calls"), 2);
    EXPECT_DOUBLE_EQ(f.field(key, "in"), 4000);
    EXPECT_DOUBLE_EQ(f.field(key, "out"), 600);
    EXPECT_DOUBLE_EQ(f.field(key, "usd.ChatGPT"), 0.0012);
    EXPECT_DOUBLE_EQ(f.field(key, "usd.Claude"), 0.0035);
    EXPECT_DOUBLE_EQ(f.field(key, "usd"), 0.0047);
  }
  EXPECT_EQ(costField(AIProvider::deepseek), "usd.DeepSeek");
  EXPECT_EQ(costField(AIProvider::apple), "usd.Apple");
}

TEST(UsageTest, NothingIsCountedWithoutTokensOrForTheRelay) {
  UsageFixture f;
  const char* counted = R"({"model":"deepseek-flash","usage":{"prompt_tokens":10}})";
  EXPECT_FALSE(f.usage.record(AIProvider::vesko, counted));
  EXPECT_FALSE(f.usage.record(AIProvider::deepseek, R"({"model":"deepseek-flash"})"));
  EXPECT_FALSE(f.usage.record(AIProvider::deepseek, R"({"usage":{"prompt_tokens":0}})"));
  EXPECT_FALSE(f.usage.record(AIProvider::deepseek, "<html>502 Bad Gateway</html>"));
  EXPECT_FALSE(f.usage.record(AIProvider::deepseek,
                              R"({"usage":{"prompt_tokens":1e308,"completion_tokens":1e308}})"));
  EXPECT_TRUE(f.usage.totals(dayKey(f.clock, f.clock.now())).empty());
  EXPECT_TRUE(f.settings.storedValues().empty());

  // The local model is counted, at no cost.
  EXPECT_TRUE(f.usage.record(AIProvider::apple, counted));
  EXPECT_DOUBLE_EQ(f.field(dayKey(f.clock, f.clock.now()), "calls"), 1);
  EXPECT_DOUBLE_EQ(f.field(dayKey(f.clock, f.clock.now()), "usd"), 0);
}

TEST(UsageTest, ANewDayAndANewMonthStartNewRecords) {
  UsageFixture f;
  const char* reply = R"({"model":"deepseek-flash","usage":{"prompt_tokens":1000000}})";
  f.clock.set(sys_days{std::chrono::year{2025} / 1 / 31} + 23h + 59min);
  ASSERT_TRUE(f.usage.record(AIProvider::deepseek, reply));
  f.clock.advance(2min);
  ASSERT_TRUE(f.usage.record(AIProvider::deepseek, reply));
  ASSERT_TRUE(f.usage.record(AIProvider::deepseek, reply));
  EXPECT_DOUBLE_EQ(f.field("aiu.d.2025-01-31", "calls"), 1);
  EXPECT_DOUBLE_EQ(f.field("aiu.d.2025-02-01", "calls"), 2);
  EXPECT_DOUBLE_EQ(f.field("aiu.m.2025-01", "usd"), 0.3);
  EXPECT_DOUBLE_EQ(f.field("aiu.m.2025-02", "usd"), 0.6);
  // Records are never pruned.
  EXPECT_TRUE(f.settings.stored("aiu.d.2025-01-31"));
}

TEST(UsageTest, AnOddStoredRecordIsAddedTo) {
  UsageFixture f;
  const auto today = dayKey(f.clock, f.clock.now());
  // A record another version wrote, with a field this one does not know.
  ASSERT_TRUE(f.settings.set(today, SettingRecord{{"calls", 4}, {"usd", 1}, {"usd.Other", 2}}));
  ASSERT_TRUE(f.usage.record(AIProvider::openai, R"({"model":"gpt-4.1","usage":{
      "prompt_tokens":1000000,"completion_tokens":1000000}})"));
  EXPECT_DOUBLE_EQ(f.field(today, "calls"), 5);
  EXPECT_DOUBLE_EQ(f.field(today, "usd"), 11);
  EXPECT_DOUBLE_EQ(f.field(today, "usd.Other"), 2);
  EXPECT_DOUBLE_EQ(f.field(today, "in"), 1000000);
}

TEST(UsageTest, ReportShowsTodayThisMonthAndLastMonth) {
  UsageFixture f;
  CEDict dictionary;
  HantCache hant(dictionary);
  LocTables tables;
  Loc french(f.settings, tables, hant, {"fr-FR"});

  f.clock.set(sys_days{std::chrono::year{2025} / 3 / 31} + 12h);
  ASSERT_TRUE(f.usage.record(AIProvider::claude, R"({"model":"claude-opus-4-1","usage":{
      "input_tokens":1000000,"output_tokens":10000}})"));
  f.clock.set(sys_days{std::chrono::year{2025} / 4 / 1} + 12h);
  ASSERT_TRUE(f.usage.record(AIProvider::deepseek, R"({"model":"deepseek-flash","usage":{
      "prompt_tokens":1000}})"));

  auto report = f.usage.report(french);
  EXPECT_EQ(report.title, "Ce que tu consommes (estimation)");
  ASSERT_EQ(report.lines.size(), 3u);
  EXPECT_EQ(report.lines[0].label, "IA aujourd'hui");
  EXPECT_EQ(report.lines[0].key, "aiu.d.2025-04-01");
  EXPECT_EQ(report.lines[0].amount, "< 0,01 $");
  ASSERT_EQ(report.lines[0].byProvider.size(), 1u);
  EXPECT_EQ(report.lines[0].byProvider[0].first, AIProvider::deepseek);
  EXPECT_EQ(report.lines[1].label, "IA ce mois-ci");
  EXPECT_EQ(report.lines[1].key, "aiu.m.2025-04");
  EXPECT_EQ(report.lines[2].label, "IA le mois dernier");
  EXPECT_EQ(report.lines[2].key, "aiu.m.2025-03");
  EXPECT_EQ(report.lines[2].amount, "5,25 $");
  ASSERT_EQ(report.usagePages.size(), 3u);
  for (const auto& [provider, page] : report.usagePages) {
    SCOPED_TRACE(page);
    EXPECT_TRUE(page.starts_with("https://")) << page;
    EXPECT_TRUE(page.ends_with("/usage")) << page;
  }

  // A month without replies, in English.
  f.clock.set(sys_days{std::chrono::year{2025} / 6 / 1});
  f.settings.overrideForRun("uiLang", std::string("en"));
  auto later = f.usage.report(french);
  EXPECT_EQ(later.lines[1].label, "AI this month");
  EXPECT_EQ(later.lines[1].amount, "nothing yet");
  EXPECT_TRUE(later.lines[1].byProvider.empty());
  EXPECT_NE(later.note.find("public prices"), std::string::npos);
}

}  // namespace
}  // namespace vesko
