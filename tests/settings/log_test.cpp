#include "settings/log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string>

#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

using namespace std::chrono_literals;

std::string readAll(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  if (text.empty()) return out;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1)
    out.push_back(text.substr(start, end - start));
  if (start < text.size()) out.push_back(text.substr(start));
  return out;
}

// Logs in a fresh folder with `debugLog` on or off; the clock stands at 14:32:05 UTC, shown in
// the time zone `utcOffset`.
struct LogFixture {
  explicit LogFixture(bool debugLog, std::chrono::seconds utcOffset = 0s) : clock(utcOffset) {
    if (debugLog) settings.overrideForRun("debugLog", true);
  }
  testing::TempDir dir;
  testing::FakeClock clock;
  Settings settings{dir.path() / "config" / "settings.json", clock};
  std::filesystem::path file = dir.path() / "state" / "debug.log";
};

TEST(LogTest, RecentFormatsEntriesSinceTheCutoff) {
  LogFixture f(false);
  Log log(f.file, f.settings, f.clock);
  log.log("survol : recherche sans réponse depuis 4 s → on repart");
  f.clock.advance(60s);
  const TimePoint cutoff = f.clock.now();
  log.log("sélection : rien lu (AX vide, ⌘C …");
  f.clock.advance(1500ms);
  log.log("deux\nlignes");  // one entry stays one line
  EXPECT_EQ(log.recent(cutoff),
            "14:33:05  sélection : rien lu (AX vide, ⌘C …\n"
            "14:33:06  deux lignes");
  EXPECT_EQ(lines(log.recent(TimePoint{})).size(), 3u);
  EXPECT_EQ(log.recent(f.clock.now() + 1s), "");
}

TEST(LogTest, The401stEntryPushesOutTheFirst) {
  LogFixture f(false);
  Log log(f.file, f.settings, f.clock);
  for (int i = 0; i < 401; ++i) log.log("m" + std::to_string(i));
  auto recorded = lines(log.recent(TimePoint{}));
  ASSERT_EQ(recorded.size(), 400u);
  EXPECT_EQ(recorded.front(), "14:32:05  m1");
  EXPECT_EQ(recorded.back(), "14:32:05  m400");
  for (int i = 401; i < 1500; ++i) log.log("m" + std::to_string(i));
  recorded = lines(log.recent(TimePoint{}));
  ASSERT_EQ(recorded.size(), 400u);
  EXPECT_EQ(recorded.front(), "14:32:05  m1100");
}

TEST(LogTest, FileLinesUseLocalTimeAndTwoSpaces) {
  LogFixture f(true, 2h);
  {
    Log log(f.file, f.settings, f.clock);
    log.log("IA : modèle « a » retiré → « b »");
    f.clock.advance(3s);
    log.log("thèmes : réponse IA illisible");
  }  // the log finishes its writes before it goes
  EXPECT_EQ(readAll(f.file),
            "16:32:05  IA : modèle « a » retiré → « b »\n"
            "16:32:08  thèmes : réponse IA illisible\n");
}

TEST(LogTest, FileOverTheLimitStartsAgainEmpty) {
  const std::string line = "14:32:05  suite\n";
  struct Row {
    std::size_t existing;
    std::size_t expected;
  };
  const Row rows[] = {
      {299'999, 299'999 + line.size()},
      {300'000, 300'000 + line.size()},  // exactly the limit is appended to
      {300'001, line.size()},            // one byte over: deleted, then the line alone
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.existing);
    LogFixture f(true);
    std::filesystem::create_directories(f.file.parent_path());
    std::ofstream(f.file, std::ios::binary) << std::string(row.existing, 'x');
    {
      Log log(f.file, f.settings, f.clock);
      log.log("suite");
    }
    EXPECT_EQ(std::filesystem::file_size(f.file), row.expected);
    EXPECT_TRUE(readAll(f.file).ends_with(line));
  }
}

TEST(LogTest, SwitchOffWritesNothingButRecentStillHasTheLines) {
  LogFixture f(false);
  Log log(f.file, f.settings, f.clock);
  log.log("éteint");
  EXPECT_EQ(log.recent(TimePoint{}), "14:32:05  éteint");
  log.flush();
  EXPECT_FALSE(std::filesystem::exists(f.file));

  // The switch is read when a line is logged: earlier lines are not written afterwards.
  f.settings.overrideForRun("debugLog", true);
  log.log("allumé");
  log.flush();
  EXPECT_EQ(readAll(f.file), "14:32:05  allumé\n");
  EXPECT_EQ(lines(log.recent(TimePoint{})).size(), 2u);
}

TEST(LogTest, FileErrorsAreSwallowed) {
  LogFixture f(true);
  // The state "folder" is a regular file: no folder can be made, no file opened.
  auto blocked = f.dir.write("state", "not a folder");
  Log log(blocked / "debug.log", f.settings, f.clock);
  log.log("rien sur disque");
  log.log("toujours en mémoire");
  EXPECT_EQ(lines(log.recent(TimePoint{})).size(), 2u);
  EXPECT_EQ(log.logFileURL(), blocked / "debug.log");
}

TEST(LogTest, MissingStateFolderIsCreated) {
  LogFixture f(true);
  Log log(f.file, f.settings, f.clock);
  log.log("premier");
  log.flush();
  EXPECT_EQ(readAll(f.file), "14:32:05  premier\n");
}

TEST(LogTest, RecentFileLinesReadBackFromTheEnd) {
  testing::TempDir dir;
  testing::FakeClock clock;
  clock.set(std::chrono::sys_days{std::chrono::year{2025} / 3 / 10} + 30s);  // 00:00:30
  auto file = dir.write("debug.log",
                        "23:40:00  trop vieux\n"
                        "pas une ligne du journal\n"
                        "23:59:20  encore trop vieux\n"
                        "23:59:50  hier soir\n"
                        "00:00:10  cette nuit\n");
  std::filesystem::last_write_time(file, std::chrono::file_clock::from_sys(clock.now()));
  EXPECT_EQ(recentFileLines(file, 60s, clock), "23:59:50  hier soir\n00:00:10  cette nuit");
  EXPECT_EQ(recentFileLines(file, 0s, clock), "");
  // A file untouched for longer than the window holds nothing recent, whatever its times say.
  std::filesystem::last_write_time(file, std::chrono::file_clock::from_sys(clock.now() - 2h));
  EXPECT_EQ(recentFileLines(file, 60s, clock), "");
  EXPECT_EQ(recentFileLines(dir.path() / "absent.log", 60s, clock), "");
}

}  // namespace
}  // namespace vesko
