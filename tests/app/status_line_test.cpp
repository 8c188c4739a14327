// The status item's texts: the Mac's ⌥X becomes this platform's Alt+X after translation, in every
// interface language, and each problem the item can show has a row in every table.

#include "app/status_line.h"

#include <gtest/gtest.h>

#include <map>

#include "app/hover_notices.h"
#include "dict/cedict.h"
#include "settings/hant_cache.h"
#include "settings/loc_table.h"
#include "support/fake_clock.h"
#include "support/temp_dir.h"

namespace vesko {
namespace {

TEST(StatusLineTest, NamesAltXInEveryInterfaceLanguage) {
  struct Row {
    const char* uiLang;
    bool on;
    const char* startsWith;
  };
  // clang-format off
  const Row rows[] = {
    {"fr", true,  "activée"},
    {"fr", false, "désactivée"},
    {"en", true,  "on"},
    {"en", false, "off"},
    {"pl", true,  ""},
    {"ru", false, ""},
    {"th", true,  ""},
    {"zh", true,  ""},
    {"zh-Hant", false, ""},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.uiLang) + (row.on ? " on" : " off"));
    testing::TempDir dir;
    testing::FakeClock clock;
    Settings settings(dir.path() / "settings.json", clock);
    settings.overrideForRun("uiLang", std::string(row.uiLang));
    CEDict dictionary;
    HantCache hant(dictionary);
    LocTables tables;
    const Loc loc(settings, tables, hant, {});
    const std::string line = statusLine(loc, row.on, "Alt+X");
    EXPECT_TRUE(line.starts_with(row.startsWith)) << line;
    EXPECT_EQ(line.find("⌥"), std::string::npos) << line;
    EXPECT_NE(line.find("Alt+X"), std::string::npos) << line;
    // Only the shortcut changed: the rest is the table's translation.
    std::string translated = loc.t(statusText(row.on));
    translated.replace(translated.find("⌥X"), std::string_view("⌥X").size(), "Alt+X");
    EXPECT_EQ(line, translated);
  }
}

TEST(StatusLineTest, EveryProblemHasARowInEveryTable) {
  for (auto problem : {DesktopProblem::noAccessibilityBus, DesktopProblem::waylandSession,
                       DesktopProblem::shortcutTaken}) {
    const ProblemText text = problemText(problem);
    SCOPED_TRACE(std::string(text.problem));
    EXPECT_FALSE(text.problem.empty());
    EXPECT_FALSE(text.remedy.empty());
    for (auto language : kTableLanguages) {
      LocTable table(builtInRows(language));
      EXPECT_TRUE(table.find(text.problem));
      EXPECT_TRUE(table.find(text.remedy));
    }
  }
}

TEST(StatusLineTest, RecognisesWaylandSessions) {
  struct Row {
    std::map<std::string, std::string> variables;
    bool wayland;
  };
  const Row rows[] = {
      {{}, false},
      {{{"DISPLAY", ":0"}, {"XDG_SESSION_TYPE", "x11"}}, false},
      {{{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":0"}}, true},
      {{{"XDG_SESSION_TYPE", "wayland"}}, true},
      {{{"XDG_SESSION_TYPE", "tty"}}, false},
  };
  for (const Row& row : rows) {
    std::string names;
    for (const auto& [name, value] : row.variables) names += name + "=" + value + " ";
    SCOPED_TRACE(names);
    const Environment environment = [&row](std::string_view name) -> std::optional<std::string> {
      auto found = row.variables.find(std::string(name));
      if (found == row.variables.end()) return std::nullopt;
      return found->second;
    };
    EXPECT_EQ(waylandSession(environment), row.wayland);
  }
}

}  // namespace
}  // namespace vesko
