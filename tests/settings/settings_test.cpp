#include "settings/settings.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "settings/data_safety.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using testing::FakeClock;
using testing::TempDir;

std::string readAll(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

TEST(SettingsTest, DefaultsComeFromTheKeyTable) {
  TempDir dir;
  FakeClock clock;
  Settings settings(dir.path() / "config" / "settings.json", clock);
  EXPECT_DOUBLE_EQ(settings.real("delay"), 0.1);
  EXPECT_EQ(settings.integer("modifier"), 4);
  EXPECT_EQ(settings.text("uiLang"), "auto");
  EXPECT_EQ(settings.text("defLang.zh"), "auto");  // a family member takes its family's default
  EXPECT_EQ(settings.integer("aiProvider"), 0);
  EXPECT_FALSE(settings.flag("aiBackupInChina"));
  EXPECT_EQ(settings.text("claudeModel"), "claude-haiku-4-5-20251001");
  EXPECT_EQ(settings.text("openaiModel"), "gpt-4o-mini");
  EXPECT_EQ(settings.text("deepseekModel"), "deepseek-flash");
  EXPECT_EQ(settings.integer("review.oldCount"), 0);
  EXPECT_TRUE(settings.record("aiu.d.2025-03-09").empty());
  EXPECT_FALSE(settings.stored("delay"));
  // Reading creates nothing on disk.
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "config"));
}

TEST(SettingsTest, KeyTableRowsAreWellFormed) {
  std::set<std::string_view> keys;
  for (const auto& row : kSettingKeys) {
    SCOPED_TRACE(row.key);
    EXPECT_TRUE(keys.insert(row.key).second) << "duplicate key";
    EXPECT_FALSE(row.about.empty());
    EXPECT_EQ(findSettingKey(isFamily(row) ? std::string(row.key) + "x" : std::string(row.key)),
              &row);
    if (row.kind == SettingKind::boolean) {
      EXPECT_TRUE(row.number == 0 || row.number == 1);
    }
  }
  EXPECT_EQ(findSettingKey("defLang."), nullptr);  // a family's prefix alone names no setting
  EXPECT_EQ(findSettingKey("nonsense"), nullptr);
}

// A value of the wrong type in the file (an older version, a hand edit) reads as the default.
TEST(SettingsTest, StoredValuesOfAnotherTypeGiveTheDefault) {
  TempDir dir;
  FakeClock clock;
  auto file = dir.write("settings.json", R"({
    "delay": "fast", "modifier": 2.0, "conj": 0, "uiLang": 7, "aiBackupInChina": true,
    "aiu.d.2025-03-09": {"calls": 2, "in": 100, "note": "kept aside"}, "futureKey": [1, 2]
  })");
  Settings settings(file, clock);
  EXPECT_DOUBLE_EQ(settings.real("delay"), 0.1);
  EXPECT_EQ(settings.integer("modifier"), 2);
  EXPECT_FALSE(settings.flag("conj"));
  EXPECT_EQ(settings.text("uiLang"), "auto");
  EXPECT_TRUE(settings.flag("aiBackupInChina"));
  EXPECT_EQ(settings.record("aiu.d.2025-03-09"), (SettingRecord{{"calls", 2}, {"in", 100}}));

  // A write keeps what this version does not read.
  ASSERT_TRUE(settings.set("delay", 0.3));
  auto written = nlohmann::json::parse(readAll(file));
  EXPECT_EQ(written["futureKey"], nlohmann::json::parse("[1,2]"));
  EXPECT_EQ(written["delay"], 0.3);
}

TEST(SettingsTest, WritesAreSortedPrettyAndSeenAtTheNextRead) {
  TempDir dir;
  FakeClock clock;
  auto file = dir.path() / "config" / "settings.json";
  Settings settings(file, clock);
  ASSERT_TRUE(settings.set("uiLang", std::string("zh-Hant")));
  EXPECT_EQ(settings.text("uiLang"), "zh-Hant");
  ASSERT_TRUE(settings.set("delay", 1LL));  // a whole number for a real key is widened
  EXPECT_DOUBLE_EQ(settings.real("delay"), 1.0);
  ASSERT_TRUE(settings.set("aiu.m.2025-03", SettingRecord{{"usd", 0.5}, {"calls", 3}}));
  EXPECT_EQ(readAll(file),
            "{\n"
            "  \"aiu.m.2025-03\": {\n"
            "    \"calls\": 3.0,\n"
            "    \"usd\": 0.5\n"
            "  },\n"
            "  \"delay\": 1.0,\n"
            "  \"uiLang\": \"zh-Hant\"\n"
            "}\n");
  ASSERT_TRUE(settings.remove("uiLang"));
  EXPECT_EQ(settings.text("uiLang"), "auto");
  // Only the file and its lock are left: the temporary file was renamed.
  EXPECT_EQ(filesIn(file.parent_path()),
            (std::vector<std::string>{"settings.json", "settings.json.lock"}));

  Settings reopened(file, clock);
  EXPECT_DOUBLE_EQ(reopened.real("delay"), 1.0);
  EXPECT_FALSE(reopened.stored("uiLang"));
}

TEST(SettingsTest, RefusesUnknownKeysAndWrongTypes) {
  TempDir dir;
  FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  EXPECT_EQ(settings.set("nonsense", true).error(), SettingsError::unknownKey);
  EXPECT_EQ(settings.set("debugLog", std::string("yes")).error(), SettingsError::wrongType);
  EXPECT_EQ(settings.set("modifier", 2.5).error(), SettingsError::wrongType);
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "settings.json"));
}

TEST(SettingsTest, ParsesCommandLineValuesByTheKeysType) {
  struct Row {
    const char* key;
    const char* text;
    std::optional<SettingValue> expected;  // nothing: refused
  };
  const Row rows[] = {
      {"debugLog", "true", true},
      {"debugLog", "OFF", false},
      {"debugLog", "1", true},
      {"debugLog", "maybe", std::nullopt},
      {"modifier", "2", 2LL},
      {"modifier", "-1", -1LL},
      {"modifier", "2.5", std::nullopt},
      {"modifier", "", std::nullopt},
      {"delay", "0.25", 0.25},
      {"delay", "3", 3.0},
      {"delay", "nan", std::nullopt},
      {"delay", "0.1s", std::nullopt},
      {"uiLang", "zh-Hant", std::string("zh-Hant")},
      {"review.oldDay", "", std::string()},
      {"aiu.d.2025-03-09", R"({"calls": 1, "usd": 0.002})",
       SettingRecord{{"calls", 1}, {"usd", 0.002}}},
      {"aiu.d.2025-03-09", R"({"calls": "one"})", std::nullopt},
      {"aiu.d.2025-03-09", "[1]", std::nullopt},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.key) + " = " + row.text);
    auto parsed = parseSettingValue(*findSettingKey(row.key), row.text);
    if (row.expected) {
      ASSERT_TRUE(parsed) << parsed.error();
      EXPECT_EQ(*parsed, *row.expected);
    } else {
      EXPECT_FALSE(parsed);
    }
  }
}

TEST(SettingsTest, UndecodableFileIsSetAsideAndNeverOverwritten) {
  const char* contents[] = {"{\"delay\": 0.3,", "[1, 2]", "", "\xff\xfe{}"};
  for (const char* content : contents) {
    SCOPED_TRACE(content);
    TempDir dir;
    FakeClock clock;
    auto file = dir.write("settings.json", content);
    Settings settings(file, clock);
    auto kept = dir.path() / "settings.broken-2025-03-09-1432.json";
    EXPECT_EQ(settings.setAsideFile(), kept);
    EXPECT_EQ(readAll(kept), content);
    EXPECT_DOUBLE_EQ(settings.real("delay"), 0.1);
    ASSERT_TRUE(settings.set("delay", 0.5));
    EXPECT_EQ(readAll(kept), content);
    EXPECT_DOUBLE_EQ(Settings(file, clock).real("delay"), 0.5);
  }
}

TEST(SettingsTest, SetAsideInTheSameMinuteKeepsBothCopies) {
  TempDir dir;
  FakeClock clock;
  auto first = dir.write("mots.json", "first");
  auto kept = setAside(first, clock);
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->filename(), "mots.broken-2025-03-09-1432.json");
  dir.write("mots.json", "second");
  auto again = setAside(first, clock);
  ASSERT_TRUE(again);
  EXPECT_EQ(again->filename(), "mots.broken-2025-03-09-1432-2.json");
  EXPECT_EQ(readAll(*kept), "first");
  EXPECT_EQ(readAll(*again), "second");
  EXPECT_FALSE(std::filesystem::exists(first));
}

TEST(SettingsTest, SetAsideStampIsLocalTime) {
  TempDir dir;
  FakeClock clock(std::chrono::hours(8));  // 14:32 UTC is 22:32 in Taipei
  auto kept = setAside(dir.write("settings.json", "x"), clock);
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->filename(), "settings.broken-2025-03-09-2232.json");
}

TEST(SettingsTest, RunOverridesAreReadButNeverWritten) {
  TempDir dir;
  FakeClock clock;
  auto file = dir.path() / "settings.json";
  Settings settings(file, clock);
  settings.overrideForRun("uiLang", std::string("en"));
  ASSERT_TRUE(settings.set("delay", 0.2));
  EXPECT_EQ(settings.text("uiLang"), "en");
  EXPECT_EQ(nlohmann::json::parse(readAll(file)), nlohmann::json::parse(R"({"delay":0.2})"));
}

// The command line wrote while the app was running: the app's next write keeps that key, and a
// reload shows it without a write.
TEST(SettingsTest, AnotherWritersChangeIsKeptAndCanBeReloaded) {
  TempDir dir;
  FakeClock clock;
  auto file = dir.path() / "settings.json";
  Settings app(file, clock);
  ASSERT_TRUE(app.set("delay", 0.2));
  {
    Settings commandLine(file, clock);
    ASSERT_TRUE(commandLine.set("uiLang", std::string("pl")));
  }
  EXPECT_EQ(app.text("uiLang"), "auto");  // not yet reloaded
  EXPECT_TRUE(app.reloadIfChanged());
  EXPECT_EQ(app.text("uiLang"), "pl");
  EXPECT_FALSE(app.reloadIfChanged());

  {
    Settings commandLine(file, clock);
    ASSERT_TRUE(commandLine.set("modifier", 1LL));
  }
  ASSERT_TRUE(app.set("debugLog", true));
  Settings check(file, clock);
  EXPECT_EQ(check.integer("modifier"), 1);
  EXPECT_EQ(check.text("uiLang"), "pl");
  EXPECT_TRUE(check.flag("debugLog"));
  EXPECT_DOUBLE_EQ(check.real("delay"), 0.2);
}

TEST(SettingsTest, UpdateReadsTheCurrentValue) {
  TempDir dir;
  FakeClock clock;
  Settings settings(dir.path() / "settings.json", clock);
  auto addOne = [](std::optional<SettingValue> current) -> std::optional<SettingValue> {
    return (current ? std::get<long long>(*current) : 0) + 1;
  };
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(settings.update("review.newCount", addOne));
  EXPECT_EQ(settings.integer("review.newCount"), 3);
  ASSERT_TRUE(settings.update("review.newCount", [](auto) { return std::nullopt; }));
  EXPECT_FALSE(settings.stored("review.newCount"));
}

// Two processes, each with its own store on the same file, write 200 keys apiece at the same
// time: the file ends with all 400, because each write re-reads under the lock.
TEST(SettingsTest, TwoProcessesLoseNoneOfEachOthersWrites) {
  TempDir dir;
  auto file = dir.path() / "config" / "settings.json";
  constexpr int kKeysEach = 200;
  std::vector<pid_t> children;
  for (char writer : {'a', 'b'}) {
    pid_t pid = fork();
    ASSERT_GE(pid, 0);
    if (pid == 0) {
      FakeClock clock;
      Settings settings(file, clock);
      int failures = 0;
      for (int i = 0; i < kKeysEach; ++i)
        if (!settings.set("defLang." + std::string(1, writer) + std::to_string(i),
                          std::string("x")))
          ++failures;
      _exit(failures == 0 ? 0 : 1);
    }
    children.push_back(pid);
  }
  for (pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }
  FakeClock clock;
  Settings settings(file, clock);
  EXPECT_FALSE(settings.setAsideFile());
  EXPECT_EQ(settings.storedValues().size(), 2u * kKeysEach);
  for (char writer : {'a', 'b'})
    for (int i = 0; i < kKeysEach; ++i)
      EXPECT_EQ(settings.text("defLang." + std::string(1, writer) + std::to_string(i)), "x");
}

}  // namespace
}  // namespace vesko
