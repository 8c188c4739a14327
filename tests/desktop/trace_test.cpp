// The event trace: one JSON object a line, each with "event" and "t" beside its own fields,
// broken UTF-8 replaced rather than thrown on, and nothing written while off.

#include "desktop/trace.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/temp_dir.h"

namespace vesko::desktop {
namespace {

std::vector<nlohmann::json> linesOf(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<nlohmann::json> lines;
  std::string line;
  while (std::getline(in, line)) lines.push_back(nlohmann::json::parse(line));
  return lines;
}

long long nowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

TEST(TraceTest, WritesOneObjectALineWithEventAndTime) {
  testing::TempDir dir;
  const auto file = dir.path() / "trace.jsonl";
  const long long before = nowMs();
  {
    Trace trace(file);
    ASSERT_TRUE(trace.on());
    trace.event("ready", {{"ms", 120}});
    trace.event("toggle", {{"on", false}});
    trace.event("bubble", {{"word", "学习"}, {"lang", "zh"}, {"source", "accessibility"}});
    // Fields that are not an object are dropped, the event still written.
    trace.event("loaded", nlohmann::json::array({1, 2}));
  }
  const long long after = nowMs();
  const auto lines = linesOf(file);
  ASSERT_EQ(lines.size(), 4u);
  const char* events[] = {"ready", "toggle", "bubble", "loaded"};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    SCOPED_TRACE(events[i]);
    EXPECT_EQ(lines[i].at("event"), events[i]);
    const long long t = lines[i].at("t").get<long long>();
    EXPECT_GE(t, before);
    EXPECT_LE(t, after);
  }
  EXPECT_EQ(lines[0].at("ms"), 120);
  EXPECT_EQ(lines[1].at("on"), false);
  EXPECT_EQ(lines[2].at("word"), "学习");
  EXPECT_EQ(lines[3].size(), 2u);  // event and t only
}

TEST(TraceTest, ReplacesBrokenUtf8) {
  testing::TempDir dir;
  const auto file = dir.path() / "trace.jsonl";
  {
    Trace trace(file);
    // A word cut in the middle of a character, as a recognised line may give.
    trace.event("bubble", {{"word", std::string("学\xE4\xB9")}, {"lang", "zh"}});
  }
  const auto lines = linesOf(file);
  ASSERT_EQ(lines.size(), 1u);
  const std::string word = lines[0].at("word");
  EXPECT_TRUE(word.starts_with("学")) << word;
  EXPECT_NE(word.find("\xEF\xBF\xBD"), std::string::npos) << "U+FFFD in place of the broken bytes";
}

TEST(TraceTest, AppendsToAnExistingTrace) {
  testing::TempDir dir;
  const auto file = dir.write("trace.jsonl", "{\"event\":\"ready\",\"t\":1}\n");
  {
    Trace trace(file);
    trace.event("toggle", {{"on", true}});
  }
  const auto lines = linesOf(file);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[1].at("event"), "toggle");
}

TEST(TraceTest, OffWritesNothing) {
  testing::TempDir dir;
  Trace off(std::nullopt);
  EXPECT_FALSE(off.on());
  off.event("ready");
  Trace unwritable(dir.path() / "missing-folder" / "trace.jsonl");
  EXPECT_FALSE(unwritable.on());
  unwritable.event("ready");
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "missing-folder"));
}

}  // namespace
}  // namespace vesko::desktop
